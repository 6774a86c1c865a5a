#include "motion/round_positions.h"

#include "motion/axes.h"

namespace k7 {

namespace {

bool ReplacesAnAxis(std::uint32_t mode) noexcept {
  return mode == kRoundReplacesX || mode == kRoundReplacesY;
}

Axis AxisReplacedIn(std::uint32_t mode) noexcept {
  return mode == kRoundReplacesX ? Axis::X : Axis::Y;
}

void SwapWithParked(Positions& position, Axis axis) noexcept {
  position.parkedPosition = position.last[axis].Exchange(position.parkedPosition);
}

// KEEP: the table home stays in force beside its kept copy.
void TakeOver(DeviceState& record, Axis axis) noexcept {
  Positions& position = record.position;
  position.saved[axis] = position.last[axis];
  position.roundStepsPerInch = LinearStepsPerInch(record.mechanics, axis);
  SwapWithParked(position, axis);
  position.tableHomeRound = position.tableHome[axis];
}

void GiveBack(Positions& position, Axis axis) noexcept {
  position.saved[axis] = position.parkedPosition;
  SwapWithParked(position, axis);
  position.tableHome[axis] = position.tableHomeRound;
}

// KEEP: the two live positions change places while the parked one and the kept home stay, so that
// a way round over both axes brings back the linear positions of X and Y exchanged.
void MoveAcross(DeviceState& record, Axis from, Axis to) noexcept {
  Positions& position = record.position;
  position.saved[from] = position.parkedPosition;
  position.roundStepsPerInch = LinearStepsPerInch(record.mechanics, to);
  position.last.y = position.last.x.Exchange(position.last.y);
}

}  // namespace

void ExchangeRoundPositions(DeviceState& record, std::uint32_t mode) noexcept {
  const std::uint32_t before = record.mechanics.roundAxisMode;
  if (before == mode) return;
  if (before == kRoundOff && ReplacesAnAxis(mode)) {
    TakeOver(record, AxisReplacedIn(mode));
  } else if (ReplacesAnAxis(before) && mode == kRoundOff) {
    GiveBack(record.position, AxisReplacedIn(before));
  } else if (ReplacesAnAxis(before) && ReplacesAnAxis(mode)) {
    MoveAcross(record, AxisReplacedIn(before), AxisReplacedIn(mode));
  }
  record.mechanics.roundAxisMode = mode;
}

void SwapAxisPositions(Positions& position, std::uint32_t mode, std::uint32_t newMode) noexcept {
  if (mode == newMode) return;
  if (ReplacesAnAxis(mode)) SwapWithParked(position, AxisReplacedIn(mode));
  if (ReplacesAnAxis(newMode)) SwapWithParked(position, AxisReplacedIn(newMode));
}

void TakeLoadedPositions(DeviceState& record, const LoadedPositions& loaded,
                         std::uint32_t mode) noexcept {
  Positions& position = record.position;
  position.saved = {loaded.x, loaded.y};
  const auto homeBy = [&](float stepsPerInch, Axis axis) {
    return InchesToSteps(loaded.tableHomeInches[axis], stepsPerInch);
  };
  for (const Axis axis : {Axis::X, Axis::Y}) {
    position.tableHome[axis] = homeBy(StepsPerInch(record.mechanics, axis), axis);
  }
  // KEEP: with an unknown mode the live position stays as it is.
  if (mode != kRoundOff && !ReplacesAnAxis(mode)) return;
  position.last.x = loaded.x;
  position.last.y = loaded.y;
  if (mode == kRoundOff) return;

  const Axis axis = AxisReplacedIn(mode);
  const float stepsPerInch = LinearStepsPerInch(record.mechanics, axis);
  position.parkedPosition = position.saved[axis];
  position.last[axis] = loaded.round;
  position.tableHomeRound = homeBy(stepsPerInch, axis);
  position.tableHome[axis] = 0;
  position.roundStepsPerInch = stepsPerInch;
}

}  // namespace k7
