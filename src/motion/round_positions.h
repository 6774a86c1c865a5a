// The bookkeeping of positions and homes as the round fixture takes an axis or gives it back.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Exchanges the positions for a change from the record's roundAxisMode to `mode`, which the record
// takes. A mode of neither axis exchanges nothing. Touches no file and sends nothing. [host]
void ExchangeRoundPositions(DeviceState& record, std::uint32_t mode) noexcept;

}  // namespace k7
