#include "job/jog_plan.h"

#include <iterator>

#include "base/arithmetic.h"
#include "motion/axes.h"
#include "motion/cutter_mode.h"

namespace k7 {

namespace {

struct DirectionRow {
  Axis axis;
  float sign;
};

// By jogDirection, a kJog number.
constexpr DirectionRow kDirections[] = {
    {Axis::Y, -1.0f}, {Axis::Y, 1.0f},  {Axis::X, 1.0f},
    {Axis::X, -1.0f}, {Axis::Z, -1.0f},  // up: Z grows downwards
    {Axis::Z, 1.0f},
};

std::int32_t HighestSteps(std::int32_t home, float stepsPerInch, std::int32_t size) noexcept {
  return WrapAdd(home, TruncateToInt32(stepsPerInch * static_cast<float>(size) / 1000.0f));
}

}  // namespace

JogPlan PlanJog(const DeviceState& record) noexcept {
  JogPlan plan;
  if (record.jog.jogDirection >= std::size(kDirections)) return plan;
  const DirectionRow& row = kDirections[record.jog.jogDirection];
  if (row.axis == Axis::Z && HasPneumaticHead(record.tools)) return plan;

  // An unknown speed mode counts as slow, the safer of the two.
  const bool fast = record.jog.jogSpeedMode == kJogFast;
  plan.possible = true;
  plan.axis = row.axis;
  plan.feedInchesPerSecond =
      static_cast<float>(fast ? record.jog.jogFast : record.jog.jogSlow) / 1000.0f;
  plan.maxOutstanding = fast ? 8 : 4;

  const float stepsPerInch = StepsPerInch(record.mechanics, row.axis);
  const Mechanics& mechanics = record.mechanics;
  const Positions& position = record.position;
  if (row.axis == Axis::X) {
    plan.limited = mechanics.roundAxisMode != kRoundReplacesX;
    plan.highestSteps = HighestSteps(position.tableHome.x, stepsPerInch, mechanics.tableWidth);
  } else if (row.axis == Axis::Y) {
    plan.limited = mechanics.roundAxisMode != kRoundReplacesY;
    plan.highestSteps = HighestSteps(position.tableHome.y, stepsPerInch, mechanics.tableHeight);
  }
  // KEEP: the step is truncated, not rounded, so that it is never longer than asked for.
  plan.stepSteps = TruncateToInt32(stepsPerInch * (row.sign * (fast ? 0.025f : 0.005f)));
  return plan;
}

bool JogMayReach(const JogPlan& plan, std::int32_t position) noexcept {
  return !plan.limited || (position >= 0 && position <= plan.highestSteps);
}

}  // namespace k7
