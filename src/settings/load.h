// Reading a controller's settings file into the record.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Reads the whole file and, with a connection, sends the steps per millimetre, the axis mapping and
// the position to the controller. Missing keys take their defaults. [host]
void LoadSettings(DeviceState& record) noexcept;

}  // namespace k7
