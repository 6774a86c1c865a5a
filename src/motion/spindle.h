// The spindle: off, on, full speed, inhibit.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 61: switches the spindle by a kSpindle number. Waits 750 ms when the speed changes. [host]
void SetSpindle(DeviceState& record, std::uint32_t command) noexcept;

// Slot 64: rpm last commanded, 0 = off; 0 without a spindle. [any]
std::uint32_t CommandedRpm(const SpindleState& spindle) noexcept;

}  // namespace k7
