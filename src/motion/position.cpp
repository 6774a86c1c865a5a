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
std::int32_t LiveThousandths(const DeviceState& record, Axis axis) noexcept {
  const Positions& position = record.position;
  return StepsToThousandths(WrapSubtract(position.last[axis], position.tableHome[axis]),
                            StepsPerInch(record.mechanics, axis));
}

// Of an axis that the round fixture drives. KEEP: the fixture has no table home.
std::int32_t RoundThousandths(const DeviceState& record, Axis axis) noexcept {
  return StepsToThousandths(record.position.last[axis], StepsPerInch(record.mechanics, axis));
}

std::int32_t ParkedRoundThousandths(const DeviceState& record) noexcept {
  return StepsToThousandths(record.position.parkedPosition, RoundStepsPerInch(record.mechanics));
}

// Of the linear axis that the fixture has taken over.
std::int32_t ReplacedThousandths(const Positions& position, Axis axis) noexcept {
  return StepsToThousandths(WrapSubtract(position.saved[axis], position.tableHomeRound),
                            position.roundStepsPerInch);
}

}  // namespace

void SetPosition(DeviceState& record, const AxisTargets& targets) noexcept {
  if (record.link.connected != 1) return;
  const LineText line = PositionLine(record.position.stepsPerMm, targets);
  // KEEP: the given steps, not those that the text stands for, as a move would take them.
  if (targets.x) record.position.last.x = *targets.x;
  if (targets.y) record.position.last.y = *targets.y;
  if (targets.z) record.position.last.z = *targets.z;
  if (!line.empty()) SendLine(record.link, line.c_str());
}

void GetCurrentLocation(DeviceState& record, std::int32_t* x, std::int32_t* y,
                        std::int32_t* round) noexcept {
  const std::uint32_t mode = record.mechanics.roundAxisMode;
  // Both axes by their screws while the caller asks for the fixture beside them.
  const bool switchOff = round != nullptr && hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);
  Give(x, LiveThousandths(record, Axis::X));
  Give(y, LiveThousandths(record, Axis::Y));
  Give(round, ParkedRoundThousandths(record));
  if (switchOff) SwitchRoundMode(record, mode);
}

void GetDisplayLocation(DeviceState& record, std::int32_t* x, std::int32_t* y,
                        std::int32_t* third) noexcept {
  switch (record.mechanics.roundAxisMode) {
    case kRoundOff:
      Give(x, LiveThousandths(record, Axis::X));
      Give(y, LiveThousandths(record, Axis::Y));
      Give(third, ParkedRoundThousandths(record));
      return;
    case kRoundReplacesX:
      Give(x, ReplacedThousandths(record.position, Axis::X));
      Give(y, LiveThousandths(record, Axis::Y));
      Give(third, RoundThousandths(record, Axis::X));
      return;
    case kRoundReplacesY:
      Give(x, LiveThousandths(record, Axis::X));
      Give(y, ReplacedThousandths(record.position, Axis::Y));
      Give(third, RoundThousandths(record, Axis::Y));
      return;
    default:
      return;
  }
}

void ReportPosition(DeviceState& record, std::int32_t* x, std::int32_t* y) noexcept {
  if (!CanReport(record.notify, HostReport::Position)) return;
  const std::int32_t homeX = record.position.tableHome.x;
  const std::int32_t homeY = record.position.tableHome.y;
  // KEEP: the caller's own values are moved by the home; the window gets the position itself.
  if (x != nullptr) *x = WrapAdd(*x, DivideSteps(homeX, record.mechanics.xAxisFactor));
  if (y != nullptr) *y = WrapAdd(*y, DivideSteps(homeY, record.mechanics.yAxisFactor));
  SendReport(
      record.notify, HostReport::Position,
      DivideSteps(WrapSubtract(record.position.last.x, homeX), record.mechanics.xAxisFactor),
      DivideSteps(WrapSubtract(record.position.last.y, homeY), record.mechanics.yAxisFactor));
}

void ReportSurface(DeviceState& record) noexcept {
  SendReport(record.notify, HostReport::Surface, record.position.tableSurface,
             record.position.last.z);
}

}  // namespace k7
