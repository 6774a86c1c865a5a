// The last known position, kept so that a machine that was switched off resumes where it stood.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Writes the position to the settings file as the device object ends; the live axis that a round
// fixture has taken over goes under "R Axis". [host]
void SavePosition(const DeviceState& record) noexcept;

// Writes lastX and lastY under "X Axis" and "Y Axis", whatever the round mode. [host]
void WriteCurrentLocation(const DeviceState& record) noexcept;

}  // namespace k7
