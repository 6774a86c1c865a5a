// The round fixture that can take the place of the X or the Y axis.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// The full change: setting, position bookkeeping, "M92", "M800", "G92", two pauses of 500 ms.
// Nothing when `mode` is the present one. [host]
void SwitchRoundMode(DeviceState& record, std::uint32_t mode) noexcept;
// Sends the "M800" line for the present roundAxisMode. [host]
void SendAxisMapping(DeviceState& record) noexcept;

}  // namespace k7
