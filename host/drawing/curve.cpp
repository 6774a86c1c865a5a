// How many pieces a curve needs, and where they end.
#include "drawing/curve.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace k7host {
namespace {

int Pieces(double wanted, int atLeast) {
  if (!(wanted < kMostPieces)) return kMostPieces;
  return std::max(atLeast, static_cast<int>(std::ceil(wanted)));
}

}  // namespace

int ArcPieces(double radius, double sweepDegrees, double tolerance) {
  const double sweep = std::fabs(sweepDegrees);
  const int atLeast = Pieces(sweep / 90.0, 1);
  const double size = std::fabs(radius);
  if (!(size > tolerance)) return atLeast;
  // The middle of a chord lies radius * (1 - cos(half its angle)) beside the arc.
  const double chordDegrees = 2.0 * std::acos(1.0 - tolerance / size) * 180.0 / std::numbers::pi;
  return Pieces(sweep / chordDegrees, atLeast);
}

bool FlattenCubic(const std::array<PlotterPoint, 4>& curve, double tolerance,
                  const std::function<bool(const PlotterPoint&)>& point) {
  const auto& [a, b, c, d] = curve;
  // The second differences bound how far the curve bends away from a chord.
  const double bend = std::max(std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y),
                               std::hypot(b.x - 2 * c.x + d.x, b.y - 2 * c.y + d.y));
  const int pieces = Pieces(std::sqrt(0.75 * bend / tolerance), 1);
  for (int i = 1; i < pieces; ++i) {
    const double t = static_cast<double>(i) / pieces;
    const double u = 1.0 - t;
    const double wa = u * u * u;
    const double wb = 3 * u * u * t;
    const double wc = 3 * u * t * t;
    const double wd = t * t * t;
    if (!point({wa * a.x + wb * b.x + wc * c.x + wd * d.x,
                wa * a.y + wb * b.y + wc * c.y + wd * d.y})) {
      return false;
    }
  }
  return point(d);
}

}  // namespace k7host
