#include "motion/jog_plan.h"

#include <iterator>

#include "motion/units.h"

namespace k7 {

namespace {

struct DirectionRow {
  JogAxis axis;
  float sign;
};

// By jogDirection, a kJog number.
constexpr DirectionRow kDirections[] = {
    {JogAxis::Y, -1.0f}, {JogAxis::Y, 1.0f},  {JogAxis::X, 1.0f},
    {JogAxis::X, -1.0f}, {JogAxis::Z, -1.0f},  // up: Z grows downwards
    {JogAxis::Z, 1.0f},
};

std::int32_t HighestSteps(std::int32_t home, float stepsPerInch, std::int32_t size) noexcept {
  return WrapAdd(home, TruncateToInt32(stepsPerInch * static_cast<float>(size) / 1000.0f));
}

}  // namespace

JogPlan PlanJog(const DeviceState& record) noexcept {
  JogPlan plan;
  if (record.jogDirection >= std::size(kDirections)) return plan;
  const DirectionRow& row = kDirections[record.jogDirection];
  if (row.axis == JogAxis::Z && record.cutterMode == kCutterAirZ) return plan;

  // Any speed mode but fast is slow: the careful reading.
  const bool fast = record.jogSpeedMode == kJogFast;
  plan.possible = true;
  plan.axis = row.axis;
  plan.feedInchesPerSecond = static_cast<float>(fast ? record.jogFast : record.jogSlow) / 1000.0f;
  plan.maxOutstanding = fast ? 8 : 4;

  float stepsPerInch = 0.0f;
  switch (row.axis) {
    case JogAxis::X:
      stepsPerInch = StepsPerInchX(record);
      plan.limited = record.roundAxisMode != kRoundReplacesX;
      plan.highestSteps = HighestSteps(record.tableHomeX, stepsPerInch, record.tableWidth);
      break;
    case JogAxis::Y:
      stepsPerInch = StepsPerInchY(record);
      plan.limited = record.roundAxisMode != kRoundReplacesY;
      plan.highestSteps = HighestSteps(record.tableHomeY, stepsPerInch, record.tableHeight);
      break;
    case JogAxis::Z:
      stepsPerInch = StepsPerInchZ(record);
      break;
  }
  // KEEP: truncated, not rounded: a jog step is never longer than asked for.
  plan.stepSteps = TruncateToInt32(stepsPerInch * (row.sign * (fast ? 0.025f : 0.005f)));
  return plan;
}

bool JogMayReach(const JogPlan& plan, std::int32_t position) noexcept {
  return !plan.limited || (position >= 0 && position <= plan.highestSteps);
}

}  // namespace k7
