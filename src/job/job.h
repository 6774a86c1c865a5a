// The begin and the end of a job.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Slot 4. [host], [jog]
bool BeginJob(DeviceState& record) noexcept;
// Slot 9. [host], [jog]
void EndJob(DeviceState& record) noexcept;

}  // namespace k7
