// What becomes of positions and homes when the round fixture takes an axis or gives it back. There
// is one rule for each of three occasions; installed machines and their settings files depend on
// all three.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// On a running machine: exchanges positions and homes for a change from the mode that `mechanics`
// holds to `mode`, and stores `mode` there. A mode that replaces neither axis exchanges nothing.
// Touches no file and sends nothing. [host]
void ExchangeRoundPositions(Mechanics& mechanics, Positions& position, std::uint32_t mode) noexcept;

// On a change by the settings dialog: exchanges the position of the replaced axis with the parked
// one; homes stay. The mode itself changes with the next settings load. KEEP: a second save before
// that load exchanges the positions back. [host]
void SwapAxisPositions(Positions& position, std::uint32_t mode, std::uint32_t newMode) noexcept;

// What a settings file holds of positions and homes.
struct LoadedPositions {
  std::int32_t x = 0, y = 0, round = 0;      // machine steps
  PerTableAxis<float> tableHomeInches = {};  // from the switch of the axis
};

// On a settings load: takes the positions and homes of the file. While the fixture replaces an axis
// (`mode`, a kRound number), the position of that axis is parked and its home kept aside, both in
// steps of its screw. [host]
void TakeLoadedPositions(const Mechanics& mechanics, Positions& position,
                         const LoadedPositions& loaded, std::uint32_t mode) noexcept;

}  // namespace k7
