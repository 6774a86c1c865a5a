#include "motion/move_plan.h"

#include <cmath>

#include "device/bounded_copy.h"
#include "motion/units.h"

namespace k7 {

namespace {

// Takes one axis into the plan when the position that its text stands for differs from `last`.
void PlanAxis(MovePlan& plan, const char* letter, const AxisTarget& target,
              std::int32_t& last) noexcept {
  if (!target.expressible || target.steps == last) return;
  AppendText(plan.line, letter);
  AppendText(plan.line, target.text.c_str());
  last = target.steps;
  plan.changed = true;
}

}  // namespace

AxisTarget ExpressPosition(std::int32_t steps, float stepsPerMm) noexcept {
  const float millimetres = static_cast<float>(steps) / stepsPerMm;
  const bool expressible =
      std::isfinite(millimetres) && std::fabs(static_cast<double>(millimetres)) <= kLargestFixed;
  const NumberText text = FormatFixed(static_cast<double>(millimetres), 6);
  return {expressible, text,
          RoundToSteps(static_cast<float>(ParseFixed(text.c_str())) * stepsPerMm)};
}

MovePlan PlanMove(const DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                  const std::int32_t* z) noexcept {
  MovePlan plan;
  plan.lastX = record.lastX;
  plan.lastY = record.lastY;
  plan.lastZ = record.lastZ;
  AppendText(plan.line, "G0");
  if (x != nullptr) PlanAxis(plan, " X", ExpressPosition(*x, record.stepsPerMmX), plan.lastX);
  if (y != nullptr) PlanAxis(plan, " Y", ExpressPosition(*y, record.stepsPerMmY), plan.lastY);
  if (z != nullptr) {
    const AxisTarget target = ExpressPosition(*z, record.stepsPerMmZ);
    // KEEP: asked even when Z does not change. A jog looks for the surface and the automatic mode
    // has just probed it: neither is held up.
    if (target.expressible && record.jogActive == 0 && record.cutterMode != kCutterAutomatic &&
        target.steps > record.tableSurface) {
      const std::int32_t excessSteps = WrapSubtract(target.steps, record.tableSurface);
      plan.violatesSurface = true;
      plan.excessInches = FormatFixed(
          static_cast<double>(static_cast<float>(excessSteps) / StepsPerInchZ(record)), 3);
      return plan;
    }
    PlanAxis(plan, " Z", target, plan.lastZ);
  }
  AppendText(plan.line, "\n");
  return plan;
}

}  // namespace k7
