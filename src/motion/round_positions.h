// The bookkeeping of positions and homes as the round fixture takes an axis or gives it back. Three
// occasions, three rules, all of them in force on installed machines.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// The full change, of a machine that is being run: exchanges positions and homes for a change from
// the record's roundAxisMode to `mode`, which the record takes. A mode of neither axis exchanges
// nothing. Touches no file and sends nothing. [host]
void ExchangeRoundPositions(DeviceState& record, std::uint32_t mode) noexcept;

// The change by the settings dialog: moves the three axis positions alone, the fixture's to the
// axis that it replaces. The mode itself is left to the next settings load, so that KEEP: a second
// save before it swaps back. [host]
void SwapAxisPositions(Positions& position, std::uint32_t mode, std::uint32_t newMode) noexcept;

// What a settings file holds of positions and homes.
struct LoadedPositions {
  std::int32_t x = 0, y = 0, round = 0;      // machine steps
  PerTableAxis<float> tableHomeInches = {};  // from the switch of the axis
};

// The start from a settings file: with the fixture in the place of an axis (`mode`, a kRound
// number), that axis's own position and home are put aside, in steps of its screw. [host]
void TakeLoadedPositions(DeviceState& record, const LoadedPositions& loaded,
                         std::uint32_t mode) noexcept;

}  // namespace k7
