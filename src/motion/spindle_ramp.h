// Changing the speed of the running spindle while a key is held.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 63: starts a ramp up (0) or down (1) on a thread of its own; true when started. Refused when
// no spindle is fitted, when it is off or already at the end of that direction, while a job is open
// and while another ramp runs. The ramp ends when the key is released or the end of the range is
// reached. It then keeps the reached speed as the chosen one, in the record and in the settings
// file, and sends `message` with (reached rpm, 0) to `window` (null: no message). [host]
bool StartSpindleRamp(DeviceState& record, std::int32_t direction, WindowHandle window,
                      std::uint32_t message, std::uint32_t key) noexcept;

}  // namespace k7
