// The rules of pen.h.
#include "drawing/pen.h"

#include <cmath>
#include <utility>

namespace k7host {

void Pen::Lower() {
  if (down_ || number_ == 0) return;
  down_ = true;
  resumed_ = false;
  stroke_ = {number_, {here_}};
  ++points_;
}

void Pen::Lift() {
  if (down_ && !(resumed_ && stroke_.points.size() == 1)) strokes_.push_back(std::move(stroke_));
  down_ = false;
}

void Pen::Select(int number) {
  Lift();
  number_ = number;
}

bool Pen::Go(const PlotterPoint& to) {
  // Written so that a NaN is refused.
  if (!(std::fabs(to.x) <= kMaxPlotterUnits && std::fabs(to.y) <= kMaxPlotterUnits)) return false;
  if (down_ && IsFull()) return false;
  here_ = to;
  if (!down_) return true;
  stroke_.points.push_back(to);
  ++points_;
  return true;
}

void Pen::Suspend() {
  suspended_ = down_;
  Lift();
}

void Pen::Resume() {
  Lift();
  if (!suspended_) return;
  Lower();
  resumed_ = true;
}

std::vector<Stroke> Pen::Take() {
  Lift();
  return std::move(strokes_);
}

}  // namespace k7host
