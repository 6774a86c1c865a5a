// Telling the controller the steps per millimetre of an axis.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Keeps the value in the field of the axis (by its first letter; another letter keeps none) and
// sends "M92 " + axis + value with 5 decimals. Without a connection: nothing. [host]
void SetAxisStepsPerMm(DeviceState& record, const char* axis, float stepsPerMm) noexcept;

}  // namespace k7
