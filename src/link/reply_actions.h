// What the driver does at each reply of the controller.
#pragma once

#include <string_view>

#include "device/device_state.h"

namespace k7 {

// Carries out what one line of the controller means for the record and the host; a line without
// meaning does nothing. `line` holds no zero byte. [reader]
void HandleLine(DeviceState& record, std::string_view line) noexcept;

}  // namespace k7
