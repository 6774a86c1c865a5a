// Where the machine is: declaring, converting and reporting positions.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "motion/move_plan.h"

namespace k7 {

// Declares to the controller that the machine stands there ("G92"). Sent at once, not counted as in
// flight. Without a connection or any axis: nothing. [host]
void SetPosition(DeviceState& record, const AxisTargets& targets) noexcept;
// Slot 57: thousandths from the table home; each null allowed. [host]
void GetCurrentLocation(DeviceState& record, std::int32_t* x, std::int32_t* y,
                        std::int32_t* round) noexcept;
// Slot 58: thousandths for display; each null allowed. [host]
void GetDisplayLocation(DeviceState& record, std::int32_t* x, std::int32_t* y,
                        std::int32_t* third) noexcept;
// Slot 52: adds the home in host steps to *x, *y and sends msgExtra1. [host], [jog]
void ReportPosition(DeviceState& record, std::int32_t* x, std::int32_t* y) noexcept;
// Slot 53: sends msgExtra2. [host]
void ReportSurface(DeviceState& record) noexcept;

}  // namespace k7
