// The proximity switch that is touched before anything should touch it.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Lifts the cutter to the top of Z and tells the user, in a box owned by ownerWindow, to open the
// device interface anew; returns when the box is closed. [host], [jog]
void LiftFromProximity(DeviceState& record) noexcept;

}  // namespace k7
