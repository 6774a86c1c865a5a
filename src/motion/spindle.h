// The spindle: off, on, full speed, inhibit.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 61: a kSpindle number. Pauses 750 ms when the speed changes. [host]
void SetSpindle(DeviceState& record, std::uint32_t command) noexcept;

}  // namespace k7
