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

// KEEP: the table home of the axis stays in force beside the copy that is kept of it.
void TakeOver(const Mechanics& mechanics, Positions& position, Axis axis) noexcept {
  position.saved[axis] = position.last[axis];
  position.roundStepsPerInch = LinearStepsPerInch(mechanics, axis);
  SwapWithParked(position, axis);
  position.tableHomeRound = position.tableHome[axis];
}

void GiveBack(Positions& position, Axis axis) noexcept {
  position.saved[axis] = position.parkedPosition;
  SwapWithParked(position, axis);
  position.tableHome[axis] = position.tableHomeRound;
}

// KEEP: the positions of X and Y are exchanged while the parked one and the kept home stay. A
// fixture that goes from one axis to the other and then off leaves X and Y exchanged.
void MoveAcross(const Mechanics& mechanics, Positions& position, Axis from, Axis to) noexcept {
  position.saved[from] = position.parkedPosition;
  position.roundStepsPerInch = LinearStepsPerInch(mechanics, to);
  position.last.y = position.last.x.Exchange(position.last.y);
}

}  // namespace

void ExchangeRoundPositions(Mechanics& mechanics, Positions& position,
                            std::uint32_t mode) noexcept {
  const std::uint32_t before = mechanics.roundAxisMode;
  if (before == mode) return;
  if (before == kRoundOff && ReplacesAnAxis(mode)) {
    TakeOver(mechanics, position, AxisReplacedIn(mode));
  } else if (ReplacesAnAxis(before) && mode == kRoundOff) {
    GiveBack(position, AxisReplacedIn(before));
  } else if (ReplacesAnAxis(before) && ReplacesAnAxis(mode)) {
    MoveAcross(mechanics, position, AxisReplacedIn(before), AxisReplacedIn(mode));
  }
  mechanics.roundAxisMode = mode;
}

void SwapAxisPositions(Positions& position, std::uint32_t mode, std::uint32_t newMode) noexcept {
  if (mode == newMode) return;
  if (ReplacesAnAxis(mode)) SwapWithParked(position, AxisReplacedIn(mode));
  if (ReplacesAnAxis(newMode)) SwapWithParked(position, AxisReplacedIn(newMode));
}

void TakeLoadedPositions(const Mechanics& mechanics, Positions& position,
                         const LoadedPositions& loaded, std::uint32_t mode) noexcept {
  position.saved = {loaded.x, loaded.y};
  const auto homeBy = [&](float stepsPerInch, Axis axis) {
    return InchesToSteps(loaded.tableHomeInches[axis], stepsPerInch);
  };
  for (const Axis axis : {Axis::X, Axis::Y}) {
    position.tableHome[axis] = homeBy(StepsPerInch(mechanics, axis), axis);
  }
  // KEEP: an unknown mode leaves the position of the record as it is.
  if (mode != kRoundOff && !ReplacesAnAxis(mode)) return;
  position.last.x = loaded.x;
  position.last.y = loaded.y;
  if (mode == kRoundOff) return;

  const Axis axis = AxisReplacedIn(mode);
  const float stepsPerInch = LinearStepsPerInch(mechanics, axis);
  position.parkedPosition = position.saved[axis];
  position.last[axis] = loaded.round;
  position.tableHomeRound = homeBy(stepsPerInch, axis);
  position.tableHome[axis] = 0;
  position.roundStepsPerInch = stepsPerInch;
}

}  // namespace k7
