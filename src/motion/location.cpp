#include "motion/location.h"

#include <cmath>

#include "device/bounded_copy.h"
#include "motion/move_plan.h"
#include "motion/units.h"

namespace k7 {

std::int32_t StepsToThousandths(std::int32_t steps, float stepsPerInch) noexcept {
  return RoundToSteps(static_cast<float>(steps) / stepsPerInch * 1000.0f);
}

float StepsToInches(std::int32_t steps, float stepsPerInch) noexcept {
  const float inches = static_cast<float>(steps) / stepsPerInch;
  return std::isfinite(inches) ? inches : 0.0f;
}

LineText PositionLine(const DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                      const std::int32_t* z) noexcept {
  const struct {
    const std::int32_t* steps;
    const char* word;
    float stepsPerMm;
  } axes[] = {
      {x, " X", record.stepsPerMmX},
      {y, " Y", record.stepsPerMmY},
      {z, " Z", record.stepsPerMmZ},
  };
  LineText line;
  for (const auto& axis : axes) {
    if (axis.steps == nullptr) continue;
    const AxisTarget target = ExpressPosition(*axis.steps, axis.stepsPerMm);
    if (!target.expressible) continue;
    if (line.empty()) CopyText(line.text, "G92");
    AppendText(line.text, axis.word);
    AppendText(line.text, target.text.c_str());
  }
  if (!line.empty()) AppendText(line.text, "\n");
  return line;
}

}  // namespace k7
