// The machine's position: declaring it to the controller, converting it and reporting it to the
// host. The record holds it in machine steps from the switches.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "motion/move_plan.h"

namespace k7 {

// Declares to the controller that the machine's position is `targets` ("G92"), and takes it over.
// The line is sent at once and not counted as in flight. Without a connection or any axis: nothing.
// [host]
void DeclarePosition(LinkState& link, Positions& position, const AxisTargets& targets) noexcept;
// Slot 57: the position in thousandths from the table home; each pointer may be null. With `round`
// a fixture is switched off meanwhile, so that X and Y are those of the linear axes. [host]
void GetPositionFromHome(DeviceState& record, std::int32_t* x, std::int32_t* y,
                         std::int32_t* round) noexcept;
// Slot 58: the position for display in thousandths; each pointer may be null. The axis that an
// active fixture replaces shows where it was parked. [host]
void GetDisplayPosition(const Mechanics& mechanics, const Positions& position, std::int32_t* x,
                        std::int32_t* y, std::int32_t* third) noexcept;
// Slot 52: sends the position in host steps from the table home to the host (msgExtra1), and adds
// the table home in host steps to *x and *y. [host], [jog]
void ReportPosition(const DeviceState& record, std::int32_t* x, std::int32_t* y) noexcept;
// Slot 53: sends the table surface and the present Z to the host (msgExtra2). [host]
void ReportSurface(const NotifyState& notify, const Positions& position) noexcept;

}  // namespace k7
