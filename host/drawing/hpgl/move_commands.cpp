// Pens, pages and straight lines.
#include <cmath>
#include <string>

#include "drawing/hpgl/commands.h"
#include "drawing/hpgl/encoded.h"

namespace k7host {
namespace {

bool Initialise(HpglPlotter& plotter) {
  if (!plotter.text.ReadNumbers()) return false;
  if (!plotter.text.Numbers().empty())
    return plotter.text.Fail(plotter.text.Numbers()[0].at, "IN takes no number");
  plotter.pen.Select(1);
  plotter.axes = {};
  plotter.relative = false;
  plotter.letters = {};
  return plotter.pen.Go({});
}

// DF: as IN, but pen, place and P1 and P2 stay.
bool Default(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(0, "DF")) return false;
  plotter.axes.ClearWindow();
  plotter.relative = false;
  plotter.letters = {};
  return true;
}

bool SelectPen(HpglPlotter& plotter) {
  if (!plotter.text.ReadNumbers()) return false;
  const auto& numbers = plotter.text.Numbers();
  if (numbers.size() > 1) return plotter.text.Fail(numbers[1].at, "SP takes one pen number");
  const double pen = numbers.empty() ? 0.0 : numbers[0].value;
  if (pen < 0.0 || pen > kMaxPen || pen != std::floor(pen)) {
    return plotter.text.Fail(
        numbers[0].at, "pen number is not a whole number from 0 to " + std::to_string(kMaxPen));
  }
  plotter.pen.Select(static_cast<int>(pen));
  return true;
}

// Moves through the pairs that follow, drawing while the pen is down.
bool Moves(HpglPlotter& plotter) {
  if (!plotter.text.ReadNumbers()) return false;
  const auto& numbers = plotter.text.Numbers();
  if (numbers.size() % 2 != 0)
    return plotter.text.Fail(numbers.back().at, "X coordinate without a Y");
  for (std::size_t i = 0; i < numbers.size(); i += 2) {
    if (!plotter.Go(plotter.User(numbers[i].value, numbers[i + 1].value, plotter.relative),
                    numbers[i].at))
      return false;
  }
  return true;
}

bool Absolute(HpglPlotter& plotter) {
  plotter.relative = false;
  return Moves(plotter);
}
bool Relative(HpglPlotter& plotter) {
  plotter.relative = true;
  return Moves(plotter);
}
bool PenUp(HpglPlotter& plotter) {
  plotter.pen.Lift();
  return Moves(plotter);
}
bool PenDown(HpglPlotter& plotter) {
  if (!plotter.MayDraw()) return false;
  plotter.pen.Lower();
  return Moves(plotter);
}

bool Encoded(HpglPlotter& plotter) {
  const std::size_t start = plotter.text.At();
  HpglEncoded encoded(plotter.text);
  HpglEncoded::Step step;
  while (encoded.Next(step)) {
    if (step.pen) {
      plotter.pen.Select(*step.pen);
      continue;
    }
    if (step.penUp) {
      plotter.pen.Lift();
    } else {
      if (!plotter.MayDraw()) return false;
      plotter.pen.Lower();
    }
    if (!plotter.Go(plotter.User(step.x, step.y, !step.absolute), step.at)) return false;
    if (plotter.pen.IsFull()) return plotter.text.Fail(start, "the drawing has too many points");
  }
  return !plotter.text.Error();
}

// The next page would be drawn over this one.
bool EndPage(HpglPlotter& plotter) {
  plotter.text.SkipParameters();
  plotter.Notice(plotter.text.From(plotter.command).substr(0, 2), kHpglPage);
  plotter.pen.Lift();
  plotter.pageEnded = plotter.pageEnded || plotter.pen.HasDrawn();
  return true;
}

constexpr HpglCommand kCommands[] = {
    {"PU", &PenUp},   {"PD", &PenDown},   {"PA", &Absolute},   {"PR", &Relative},
    {"PE", &Encoded}, {"SP", &SelectPen}, {"IN", &Initialise}, {"DF", &Default},
    {"PG", &EndPage}, {"EC", &EndPage},   {"AF", &EndPage},    {"AH", &EndPage},
};

}  // namespace

std::span<const HpglCommand> HpglMoveCommands() {
  return kCommands;
}

}  // namespace k7host
