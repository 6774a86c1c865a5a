#include "motion/position.h"

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "link/link.h"
#include "link/notify.h"
#include "motion/axes.h"
#include "motion/round_fixture.h"

namespace k7 {

namespace {

void Give(std::int32_t* out, std::int32_t value) noexcept {
  if (out != nullptr) *out = value;
}

// Of X or Y, from the table home.
std::int32_t LiveThousandths(const Mechanics& mechanics, const Positions& position,
                             Axis axis) noexcept {
  return StepsToThousandths(WrapSubtract(position.last[axis], position.tableHome[axis]),
                            StepsPerInch(mechanics, axis));
}

// Of the axis that the round fixture drives. KEEP: the fixture has no table home.
std::int32_t RoundThousandths(const Mechanics& mechanics, const Positions& position,
                              Axis axis) noexcept {
  return StepsToThousandths(position.last[axis], StepsPerInch(mechanics, axis));
}

// Of a round fixture that is not active.
std::int32_t ParkedRoundThousandths(const Mechanics& mechanics,
                                    const Positions& position) noexcept {
  return StepsToThousandths(position.parkedPosition, RoundStepsPerInch(mechanics));
}

// Of the linear axis that an active fixture replaces.
std::int32_t ReplacedThousandths(const Positions& position, Axis axis) noexcept {
  return StepsToThousandths(WrapSubtract(position.saved[axis], position.tableHomeRound),
                            position.roundStepsPerInch);
}

}  // namespace

void DeclarePosition(LinkState& link, Positions& position, const AxisTargets& targets) noexcept {
  if (link.connected != 1) return;
  const LineText line = PositionLine(position.stepsPerMm, targets);
  // KEEP: the record takes the given steps. A move takes those that its text stands for.
  if (targets.x) position.last.x = *targets.x;
  if (targets.y) position.last.y = *targets.y;
  if (targets.z) position.last.z = *targets.z;
  if (!line.empty()) SendLine(link, line.c_str());
}

void GetPositionFromHome(DeviceState& record, std::int32_t* x, std::int32_t* y,
                         std::int32_t* round) noexcept {
  const std::uint32_t mode = record.mechanics.roundAxisMode;
  // A caller that asks for the fixture, too, gets X and Y of the linear axes beside it.
  const bool switchOff = round != nullptr && hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);
  Give(x, LiveThousandths(record.mechanics, record.position, Axis::X));
  Give(y, LiveThousandths(record.mechanics, record.position, Axis::Y));
  Give(round, ParkedRoundThousandths(record.mechanics, record.position));
  if (switchOff) SwitchRoundMode(record, mode);
}

void GetDisplayPosition(const Mechanics& mechanics, const Positions& position, std::int32_t* x,
                        std::int32_t* y, std::int32_t* third) noexcept {
  switch (mechanics.roundAxisMode) {
    case kRoundOff:
      Give(x, LiveThousandths(mechanics, position, Axis::X));
      Give(y, LiveThousandths(mechanics, position, Axis::Y));
      Give(third, ParkedRoundThousandths(mechanics, position));
      return;
    case kRoundReplacesX:
      Give(x, ReplacedThousandths(position, Axis::X));
      Give(y, LiveThousandths(mechanics, position, Axis::Y));
      Give(third, RoundThousandths(mechanics, position, Axis::X));
      return;
    case kRoundReplacesY:
      Give(x, LiveThousandths(mechanics, position, Axis::X));
      Give(y, ReplacedThousandths(position, Axis::Y));
      Give(third, RoundThousandths(mechanics, position, Axis::Y));
      return;
    default:
      return;
  }
}

void ReportPosition(const DeviceState& record, std::int32_t* x, std::int32_t* y) noexcept {
  if (!CanReport(record.notify, HostReport::Position)) return;
  const std::int32_t homeX = record.position.tableHome.x;
  const std::int32_t homeY = record.position.tableHome.y;
  // KEEP: the caller's own values get the table home added; only the window gets the position.
  if (x != nullptr) *x = WrapAdd(*x, DivideSteps(homeX, record.mechanics.xAxisFactor));
  if (y != nullptr) *y = WrapAdd(*y, DivideSteps(homeY, record.mechanics.yAxisFactor));
  SendReport(
      record.notify, HostReport::Position,
      DivideSteps(WrapSubtract(record.position.last.x, homeX), record.mechanics.xAxisFactor),
      DivideSteps(WrapSubtract(record.position.last.y, homeY), record.mechanics.yAxisFactor));
}

void ReportSurface(const NotifyState& notify, const Positions& position) noexcept {
  SendReport(notify, HostReport::Surface, position.tableSurface, position.last.z);
}

}  // namespace k7
