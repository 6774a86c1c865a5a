#include "motion/position.h"

#include "device/module_state.h"
#include "link/link.h"
#include "motion/host_messages.h"
#include "motion/location.h"
#include "motion/round_fixture.h"
#include "motion/units.h"

namespace k7 {

namespace {

void Give(std::int32_t* out, std::int32_t value) noexcept {
  if (out != nullptr) *out = value;
}

std::int32_t LiveThousandthsX(const DeviceState& record) noexcept {
  return StepsToThousandths(WrapSubtract(record.lastX, record.tableHomeX), StepsPerInchX(record));
}

std::int32_t LiveThousandthsY(const DeviceState& record) noexcept {
  return StepsToThousandths(WrapSubtract(record.lastY, record.tableHomeY), StepsPerInchY(record));
}

std::int32_t ParkedRoundThousandths(const DeviceState& record) noexcept {
  return StepsToThousandths(record.parkedPosition, RoundStepsPerInch(record));
}

// Of the linear axis that the fixture has taken over.
std::int32_t ReplacedThousandths(const DeviceState& record, std::int32_t savedPosition) noexcept {
  return StepsToThousandths(WrapSubtract(savedPosition, record.tableHomeRound),
                            record.roundStepsPerInch);
}

}  // namespace

void SetPosition(DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                 const std::int32_t* z) noexcept {
  if (record.connected != 1 || (x == nullptr && y == nullptr && z == nullptr)) return;
  const LineText line = PositionLine(record, x, y, z);
  // KEEP: the given steps, not those that the text stands for, as a move would take them.
  if (x != nullptr) record.lastX = *x;
  if (y != nullptr) record.lastY = *y;
  if (z != nullptr) record.lastZ = *z;
  if (!line.empty()) SendLine(record, line.c_str());
}

void GetCurrentLocation(DeviceState& record, std::int32_t* x, std::int32_t* y,
                        std::int32_t* round) noexcept {
  const std::uint32_t mode = record.roundAxisMode;
  // Both axes by their screws while the caller asks for the fixture beside them.
  const bool switchOff = round != nullptr && hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);
  Give(x, LiveThousandthsX(record));
  Give(y, LiveThousandthsY(record));
  Give(round, ParkedRoundThousandths(record));
  if (switchOff) SwitchRoundMode(record, mode);
}

void GetDisplayLocation(DeviceState& record, std::int32_t* x, std::int32_t* y,
                        std::int32_t* third) noexcept {
  switch (record.roundAxisMode) {
    case kRoundOff:
      Give(x, LiveThousandthsX(record));
      Give(y, LiveThousandthsY(record));
      Give(third, ParkedRoundThousandths(record));
      return;
    case kRoundReplacesX:
      Give(x, ReplacedThousandths(record, record.savedPositionX));
      Give(y, LiveThousandthsY(record));
      // KEEP: the fixture has no table home.
      Give(third, StepsToThousandths(record.lastX, StepsPerInchX(record)));
      return;
    case kRoundReplacesY:
      Give(x, LiveThousandthsX(record));
      Give(y, ReplacedThousandths(record, record.savedPositionY));
      Give(third, StepsToThousandths(record.lastY, StepsPerInchY(record)));
      return;
    default:
      return;
  }
}

void ReportPosition(DeviceState& record, std::int32_t* x, std::int32_t* y) noexcept {
  if (!CanReport(record, HostReport::Position)) return;
  const std::int32_t homeX = record.tableHomeX;
  const std::int32_t homeY = record.tableHomeY;
  // KEEP: the caller's own values are moved by the home; the window gets the position itself.
  if (x != nullptr) *x = WrapAdd(*x, DivideSteps(homeX, record.xAxisFactor));
  if (y != nullptr) *y = WrapAdd(*y, DivideSteps(homeY, record.yAxisFactor));
  SendReport(record, HostReport::Position,
             DivideSteps(WrapSubtract(record.lastX, homeX), record.xAxisFactor),
             DivideSteps(WrapSubtract(record.lastY, homeY), record.yAxisFactor));
}

void ReportSurface(DeviceState& record) noexcept {
  SendReport(record, HostReport::Surface, record.tableSurface, record.lastZ);
}

}  // namespace k7
