// Scaling and rotation of hpgl_axes.h.
#include "drawing/hpgl/axes.h"

#include <algorithm>
#include <cmath>

namespace k7host {

void HpglAxes::SetPoints(const PlotterPoint& p1, const PlotterPoint& p2) {
  p1_ = p1;
  p2_ = p2;
  // The window stays and lies over the new points.
  if (window_ && !Measure(*window_)) window_.reset();
}

bool HpglAxes::MoveFirstPoint(const PlotterPoint& p1) {
  if (!p2_) return false;
  SetPoints(p1, {p2_->x + p1.x - p1_.x, p2_->y + p1.y - p1_.y});
  return true;
}

bool HpglAxes::SetWindow(const UserWindow& window) {
  if (!Measure(window)) return false;
  window_ = window;
  return true;
}

// Multiplied before divided, so that whole numbers stay whole.
bool HpglAxes::Measure(const UserWindow& window) {
  Line x;
  Line y;
  if (window.factors) {
    x = {window.xMin, p1_.x, window.xMax, 1.0};
    y = {window.yMin, p1_.y, window.yMax, 1.0};
  } else {
    if (!p2_) return false;
    x = {window.xMin, p1_.x, p2_->x - p1_.x, window.xMax - window.xMin};
    y = {window.yMin, p1_.y, p2_->y - p1_.y, window.yMax - window.yMin};
  }
  if (x.times == 0.0 || y.times == 0.0 || x.per == 0.0 || y.per == 0.0) return false;
  if (window.isotropic && !window.factors) {
    const double scale = std::min(std::fabs(x.times / x.per), std::fabs(y.times / y.per));
    const auto shrink = [scale](Line& line, double percent) {
      const double used = std::copysign(std::fabs(line.per) * scale, line.times);
      line.to += (line.times - used) * percent / 100.0;
      line.times = used;
    };
    shrink(x, window.leftPercent);
    shrink(y, window.bottomPercent);
  }
  x_ = x;
  y_ = y;
  return true;
}

void HpglAxes::SetRotation(int degrees) {
  quarters_ = degrees / 90 % 4;
}

PlotterPoint HpglAxes::Turn(const PlotterPoint& v) const {
  switch (quarters_) {
    case 1:
      return {-v.y, v.x};
    case 2:
      return {-v.x, -v.y};
    case 3:
      return {v.y, -v.x};
    default:
      return v;
  }
}

PlotterPoint HpglAxes::ToTable(const PlotterPoint& user) const {
  return Turn(window_ ? PlotterPoint{x_.Map(user.x), y_.Map(user.y)} : user);
}

PlotterPoint HpglAxes::FromTable(const PlotterPoint& table) const {
  PlotterPoint p = table;
  for (int i = quarters_; i % 4 != 0; ++i) p = {-p.y, p.x};
  return window_ ? PlotterPoint{x_.Back(p.x), y_.Back(p.y)} : p;
}

double HpglAxes::UnitSize() const {
  if (!window_) return 1.0;
  return std::max(std::fabs(x_.times / x_.per), std::fabs(y_.times / y_.per));
}

}  // namespace k7host
