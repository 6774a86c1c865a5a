// Reading a controller's settings file into the record.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Reads the whole file; missing keys take their defaults. Sends the steps per millimetre, the axis
// mapping and the position to the controller: before that has answered, the axis mapping alone.
// Without a link nothing goes out. [host]
void LoadSettings(DeviceState& record) noexcept;

}  // namespace k7
