// Curves as the points of straight pieces that lie within a tolerance beside them.
#pragma once

#include <array>
#include <functional>

#include "drawing/drawing.h"

namespace k7host {

// Most straight pieces that one curve is given.
inline constexpr int kMostPieces = 2000;

// Straight pieces for an arc of `radius` over `sweepDegrees` (either sign): at least one for each
// 90 degrees, at most kMostPieces. Radius and tolerance in the same unit. [any]
int ArcPieces(double radius, double sweepDegrees, double tolerance);

// A cubic Bezier curve by its four points. Calls `point` for the end of each straight piece, the
// last being exactly the end of the curve; ends early when `point` answers false, and answers so.
// [any]
bool FlattenCubic(const std::array<PlotterPoint, 4>& curve, double tolerance,
                  const std::function<bool(const PlotterPoint&)>& point);

}  // namespace k7host
