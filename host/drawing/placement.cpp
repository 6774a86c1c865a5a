// Moves the points of a drawing.
#include "drawing/placement.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace k7host {
namespace {

constexpr struct {
  std::string_view name;
  Origin origin;
  double xShare;  // of the extent
  double yShare;
} kOrigins[] = {
    {"file", Origin::File, 0.0, 0.0},
    {"lower-left", Origin::LowerLeft, 0.0, 0.0},
    {"lower-right", Origin::LowerRight, 1.0, 0.0},
    {"upper-left", Origin::UpperLeft, 0.0, 1.0},
    {"upper-right", Origin::UpperRight, 1.0, 1.0},
    {"center", Origin::Center, 0.5, 0.5},
};

template <class Change>
void ForEach(std::vector<Stroke>& strokes, const Change& change) {
  for (Stroke& stroke : strokes) {
    for (PlotterPoint& point : stroke.points) change(point);
  }
}

// Quarter turns are exact.
PlotterPoint Direction(double degrees) {
  const double turn = std::fmod(degrees, 360.0);
  if (std::fmod(turn, 90.0) == 0.0) {
    const int quarters = (static_cast<int>(turn / 90.0) + 4) % 4;
    constexpr PlotterPoint kQuarters[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    return kQuarters[quarters];
  }
  const double angle = turn * std::numbers::pi / 180.0;
  return {std::cos(angle), std::sin(angle)};
}

}  // namespace

std::optional<Origin> OriginNamed(std::string_view name) {
  for (const auto& row : kOrigins) {
    if (row.name == name) return row.origin;
  }
  return std::nullopt;
}

void Place(std::vector<Stroke>& strokes, const Placement& placement) {
  if (strokes.empty()) return;
  if (placement.scale != 1.0 || placement.rotateDegrees != 0.0) {
    const PlotterPoint turn = Direction(placement.rotateDegrees);
    ForEach(strokes, [&](PlotterPoint& p) {
      const double x = p.x * placement.scale;
      const double y = p.y * placement.scale;
      p = {x * turn.x - y * turn.y, x * turn.y + y * turn.x};
    });
  }
  double x = placement.offsetXInches * kPlotterUnitsPerInch;
  double y = placement.offsetYInches * kPlotterUnitsPerInch;
  if (placement.origin != Origin::File) {
    PlotterPoint low = strokes[0].points[0];
    PlotterPoint high = low;
    ForEach(strokes, [&](const PlotterPoint& p) {
      low = {std::min(low.x, p.x), std::min(low.y, p.y)};
      high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    });
    for (const auto& row : kOrigins) {
      if (row.origin != placement.origin) continue;
      x -= low.x + (high.x - low.x) * row.xShare;
      y -= low.y + (high.y - low.y) * row.yShare;
    }
  }
  if (x == 0.0 && y == 0.0) return;
  ForEach(strokes, [&](PlotterPoint& p) { p = {p.x + x, p.y + y}; });
}

}  // namespace k7host
