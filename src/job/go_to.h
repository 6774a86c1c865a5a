// Sending the head to a place outside a drawing.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 50: lifts the cutter (with plungeHold 1 to the top of Z), travels to a host position (see
// GoToPlace) and writes "Current Location"; waits for the lift of a pneumatic head. The flag has no
// effect. Without a connection: nothing. [host]
void GoTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
          std::uint8_t flag) noexcept;
// Slot 51: the same as a job of its own of which the host is told nothing, the spindle at full
// speed; roundFlag 1 has the round fixture switched off meanwhile. A refused job goes nowhere.
// [host]
void GoToAsJob(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
               std::uint8_t roundFlag) noexcept;

}  // namespace k7
