// Changing the speed of the running spindle while a key is held.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 63: starts the ramp on a thread of its own; true when started. [host]
bool StartSpindleRamp(DeviceState& record, std::int32_t direction, WindowHandle window,
                      std::uint32_t message, std::uint32_t key) noexcept;

}  // namespace k7
