// Sending the head to a place outside a drawing.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 50: lift, traverse, write "Current Location". [host]
void GoTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
          std::uint8_t flag) noexcept;
// Slot 51: the same as a quiet job of its own. [host]
void GoToAsJob(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
               std::uint8_t roundFlag) noexcept;

}  // namespace k7
