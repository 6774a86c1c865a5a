#include "motion/move_plan.h"

#include <cmath>

#include "base/arithmetic.h"
#include "base/parse_number.h"
#include "motion/axes.h"

namespace k7 {

namespace {

// Takes one axis into the line when the position that its text stands for differs from `last`.
void PlanAxis(AxisLine& line, Axis axis, const AxisTarget& target, std::int32_t& last) noexcept {
  if (!target.expressible || target.steps == last) return;
  line.Add(axis, target.text);
  last = target.steps;
}

// KEEP: also a target whose Z does not change is refused. A jog and the automatic mode never are:
// the user jogs to find the surface, and the automatic mode has just probed it.
bool ViolatesSurface(const DeviceState& record, const AxisTarget& z) noexcept {
  return z.expressible && record.jog.jogActive == 0 &&
         record.tools.cutterMode != kCutterAutomatic && z.steps > record.position.tableSurface;
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

MovePlan PlanMove(const DeviceState& record, const AxisTargets& targets) noexcept {
  const Positions& position = record.position;
  MovePlan plan;
  plan.lastX = position.last.x;
  plan.lastY = position.last.y;
  plan.lastZ = position.last.z;
  AxisLine line{kMoveCommand};
  if (targets.x) {
    PlanAxis(line, Axis::X, ExpressPosition(*targets.x, position.stepsPerMm.x), plan.lastX);
  }
  if (targets.y) {
    PlanAxis(line, Axis::Y, ExpressPosition(*targets.y, position.stepsPerMm.y), plan.lastY);
  }
  if (targets.z) {
    const AxisTarget target = ExpressPosition(*targets.z, position.stepsPerMm.z);
    if (ViolatesSurface(record, target)) {
      const std::int32_t excessSteps = WrapSubtract(target.steps, position.tableSurface);
      plan.violatesSurface = true;
      plan.excessInches = FormatFixed(static_cast<double>(static_cast<float>(excessSteps) /
                                                          StepsPerInch(record.mechanics, Axis::Z)),
                                      3);
      return plan;
    }
    PlanAxis(line, Axis::Z, target, plan.lastZ);
  }
  plan.changed = line.HasWords();
  plan.line = line.Finished();
  return plan;
}

LineText PositionLine(const PerAxis<float>& stepsPerMm, const AxisTargets& targets) noexcept {
  AxisLine line{kPositionCommand};
  const auto add = [&](Axis axis, const std::optional<std::int32_t>& steps) {
    if (!steps) return;
    const AxisTarget target = ExpressPosition(*steps, stepsPerMm[axis]);
    if (target.expressible) line.Add(axis, target.text);
  };
  add(Axis::X, targets.x);
  add(Axis::Y, targets.y);
  add(Axis::Z, targets.z);
  return line.Finished();
}

}  // namespace k7
