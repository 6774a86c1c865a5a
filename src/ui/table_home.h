// Settling where the table home is.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 70. [host]
std::uint64_t EnsureTableHome(DeviceState& record, WindowHandle parent) noexcept;
// Asks whether to set the table home and does so; always true. [host]
bool PromptTableHome(DeviceState& record, WindowHandle parent) noexcept;

}  // namespace k7
