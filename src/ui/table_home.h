// Settling where the table home is.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 70: nothing once the controller is homed; a machine with all switches homes itself (result
// 0); otherwise the set table home dialog on `parent`, and its result. [host]
std::uint64_t EnsureTableHome(DeviceState& record, WindowHandle parent) noexcept;

// Asks on `parent` whether to set the table home, and does so: by the dialog alone, or, with all
// switches, by the dialog, homing, and the dialog again. Always true; nothing without a connection
// or in a job. [host]
bool PromptTableHome(DeviceState& record, WindowHandle parent) noexcept;

}  // namespace k7
