// Sending the head to a place outside a drawing.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 50: lifts the cutter (with plungeHold 1 to the top of Z), travels to a point in host steps
// (see GoToPlace) and keeps the position in the settings file; waits for the lift of a pneumatic
// head. Without a connection: nothing. [host]
void GoTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
// Slot 51: the same as a job of its own with the spindle at full speed. The host is not told of its
// moves. With `roundFlag` 1 the round fixture is switched off meanwhile. When the job cannot begin
// the head stays where it is. [host]
void GoToAsJob(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
               std::uint8_t roundFlag) noexcept;

}  // namespace k7
