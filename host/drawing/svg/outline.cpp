// Flattening of the curves of SVG.
#include "drawing/svg/outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing/curve.h"
#include "drawing/svg/scanner.h"

namespace k7host {
namespace {

constexpr double kUnitsPerPixel = kPlotterUnitsPerInch / kPixelsPerInch;

// A Bezier curve over so wide an angle lies within 4 millionths of the radius beside the circle.
constexpr double kWidestPiece = std::numbers::pi / 4.0;

PlotterPoint Mix(const PlotterPoint& a, const PlotterPoint& b, double share) {
  return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

double Angle(double ux, double uy, double vx, double vy) {
  return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
}

}  // namespace

bool SvgOutline::Go(const PlotterPoint& pixels) {
  return pen_.Go({pixels.x * kUnitsPerPixel, (page_.heightPixels - pixels.y) * kUnitsPerPixel});
}

void SvgOutline::Move(const PlotterPoint& to) {
  pen_.Lift();
  start_ = here_ = to;
}

void SvgOutline::Lower() {
  if (pen_.IsDown()) return;
  if (!Go(matrix_.Map(here_))) throw SvgFault{at_, "position out of range"};
  pen_.Lower();
}

void SvgOutline::Line(const PlotterPoint& to) {
  Lower();
  if (!Go(matrix_.Map(to))) {
    throw SvgFault{at_,
                   pen_.IsFull() ? "the drawing has too many points" : "position out of range"};
  }
  here_ = to;
}

void SvgOutline::Cubic(const PlotterPoint& b, const PlotterPoint& c, const PlotterPoint& to) {
  Lower();
  const auto go = [this](const PlotterPoint& point) { return Go(point); };
  if (!FlattenCubic({matrix_.Map(here_), matrix_.Map(b), matrix_.Map(c), matrix_.Map(to)},
                    page_.tolerancePixels, go)) {
    throw SvgFault{at_,
                   pen_.IsFull() ? "the drawing has too many points" : "position out of range"};
  }
  here_ = to;
}

void SvgOutline::Quadratic(const PlotterPoint& b, const PlotterPoint& to) {
  Cubic(Mix(here_, b, 2.0 / 3.0), Mix(to, b, 2.0 / 3.0), to);
}

// From end points to center: the usual conversion, with radii that are too small made to reach.
void SvgOutline::Arc(double rx, double ry, double rotationDegrees, bool large, bool sweep,
                     const PlotterPoint& to) {
  rx = std::fabs(rx);
  ry = std::fabs(ry);
  if (here_.x == to.x && here_.y == to.y) return Lower();
  if (rx == 0.0 || ry == 0.0) return Line(to);
  const double turn = rotationDegrees * std::numbers::pi / 180.0;
  const double cosine = std::cos(turn);
  const double sine = std::sin(turn);
  const double hx = (here_.x - to.x) / 2.0;
  const double hy = (here_.y - to.y) / 2.0;
  const double x = cosine * hx + sine * hy;
  const double y = -sine * hx + cosine * hy;
  const double reach = (x / rx) * (x / rx) + (y / ry) * (y / ry);
  if (reach > 1.0) {
    rx *= std::sqrt(reach);
    ry *= std::sqrt(reach);
  }
  const double rest = reach > 0.0 ? std::max(0.0, 1.0 / reach - 1.0) : 0.0;
  const double root = (large == sweep ? -1.0 : 1.0) * std::sqrt(rest);
  const double cx = root * rx * y / ry;
  const double cy = -root * ry * x / rx;
  const PlotterPoint center{cosine * cx - sine * cy + (here_.x + to.x) / 2.0,
                            sine * cx + cosine * cy + (here_.y + to.y) / 2.0};
  const double ux = (x - cx) / rx;
  const double uy = (y - cy) / ry;
  const double first = std::atan2(uy, ux);
  double angle = Angle(ux, uy, (-x - cx) / rx, (-y - cy) / ry);
  if (sweep && angle < 0.0) angle += 2.0 * std::numbers::pi;
  if (!sweep && angle > 0.0) angle -= 2.0 * std::numbers::pi;
  if (!std::isfinite(angle)) throw SvgFault{at_, "position out of range"};
  const int pieces = std::max(1, static_cast<int>(std::ceil(std::fabs(angle) / kWidestPiece)));
  const double step = angle / pieces;
  const double handle = 4.0 / 3.0 * std::tan(step / 4.0);
  const auto on = [&](double px, double py) {
    return PlotterPoint{center.x + cosine * rx * px - sine * ry * py,
                        center.y + sine * rx * px + cosine * ry * py};
  };
  for (int i = 0; i < pieces; ++i) {
    const double a = first + step * i;
    const double b = a + step;
    const PlotterPoint end = i + 1 == pieces ? to : on(std::cos(b), std::sin(b));
    Cubic(on(std::cos(a) - handle * std::sin(a), std::sin(a) + handle * std::cos(a)),
          on(std::cos(b) + handle * std::sin(b), std::sin(b) - handle * std::cos(b)), end);
  }
}

void SvgOutline::Close() {
  Lower();
  if (here_.x != start_.x || here_.y != start_.y) Line(start_);
  pen_.Lift();
  here_ = start_;
}

}  // namespace k7host
