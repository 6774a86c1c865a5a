// Motor power.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 47: "M17\n" for 1, "M18\n" otherwise. Without a connection or a link: nothing. [host]
void SetMotors(DeviceState& record, std::uint8_t on) noexcept;

}  // namespace k7
