// Positions as the host and the controller read them: thousandths of an inch, and the "G92" line.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "motion/line_text.h"

namespace k7 {

// trunc(steps / stepsPerInch * 1000 + 0.5) in single precision, saturating; 0 for 0 steps of an
// axis without a resolution. [any]
std::int32_t StepsToThousandths(std::int32_t steps, float stepsPerInch) noexcept;

// Steps as inches, as the settings file keeps homes; 0 for an axis without a resolution. [any]
float StepsToInches(std::int32_t steps, float stepsPerInch) noexcept;

// The "G92" line for up to three positions in steps (null: leave the axis), each in millimetres
// with 6 decimals by the steps per millimetre last sent. An axis whose position cannot be expressed
// (no steps per millimetre yet) is left out; with none left the line is empty. [any]
LineText PositionLine(const DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                      const std::int32_t* z) noexcept;

}  // namespace k7
