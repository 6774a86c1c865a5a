// The round fixture that can take the place of the X or the Y axis.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// The full change: setting, position bookkeeping, "M92", "M800", "G92", two pauses of 500 ms.
// Nothing when `mode` is the present one. [host]
void SwitchRoundMode(DeviceState& record, std::uint32_t mode) noexcept;
// Sends the "M800" line for the present roundAxisMode, with or without an answer of the controller
// so far; an unknown mode leaves the controller's mapping as it is. [host]
void SendAxisMapping(DeviceState& record) noexcept;

}  // namespace k7
