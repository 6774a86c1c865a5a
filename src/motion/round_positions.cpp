#include "motion/round_positions.h"

#include "motion/units.h"

namespace k7 {

namespace {

// The fields of one linear axis that a change touches.
struct LinearAxis {
  Polled<std::int32_t>& last;
  Polled<std::int32_t>& tableHome;
  std::int32_t& saved;
  float stepsPerInch;  // by its screw
};

LinearAxis AxisReplacedIn(DeviceState& record, std::uint32_t mode) noexcept {
  if (mode == kRoundReplacesX) {
    return {record.lastX, record.tableHomeX, record.savedPositionX, LinearStepsPerInchX(record)};
  }
  return {record.lastY, record.tableHomeY, record.savedPositionY, LinearStepsPerInchY(record)};
}

bool ReplacesAnAxis(std::uint32_t mode) noexcept {
  return mode == kRoundReplacesX || mode == kRoundReplacesY;
}

void SwapWithParked(DeviceState& record, Polled<std::int32_t>& live) noexcept {
  const std::int32_t parked = record.parkedPosition;
  record.parkedPosition = live;
  live = parked;
}

// KEEP: the table home stays in force beside its kept copy.
void TakeOver(DeviceState& record, const LinearAxis& axis) noexcept {
  axis.saved = axis.last;
  record.roundStepsPerInch = axis.stepsPerInch;
  SwapWithParked(record, axis.last);
  record.tableHomeRound = axis.tableHome;
}

void GiveBack(DeviceState& record, const LinearAxis& axis) noexcept {
  axis.saved = record.parkedPosition;
  SwapWithParked(record, axis.last);
  axis.tableHome = record.tableHomeRound;
}

// KEEP: the two live positions change places while the parked one and the kept home stay, so that
// a way round over both axes brings back the linear positions of X and Y exchanged.
void MoveAcross(DeviceState& record, const LinearAxis& from, const LinearAxis& to) noexcept {
  from.saved = record.parkedPosition;
  record.roundStepsPerInch = to.stepsPerInch;
  const std::int32_t x = record.lastX;
  record.lastX = record.lastY.Get();
  record.lastY = x;
}

}  // namespace

void ExchangeRoundPositions(DeviceState& record, std::uint32_t mode) noexcept {
  const std::uint32_t before = record.roundAxisMode;
  if (before == mode) return;
  if (before == kRoundOff && ReplacesAnAxis(mode)) {
    TakeOver(record, AxisReplacedIn(record, mode));
  } else if (ReplacesAnAxis(before) && mode == kRoundOff) {
    GiveBack(record, AxisReplacedIn(record, before));
  } else if (ReplacesAnAxis(before) && ReplacesAnAxis(mode)) {
    MoveAcross(record, AxisReplacedIn(record, before), AxisReplacedIn(record, mode));
  }
  record.roundAxisMode = mode;
}

}  // namespace k7
