#include "drawing/curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace k7host {
namespace {

TEST(Curve, AnArcHasAsManyPiecesAsItsToleranceWants) {
  EXPECT_EQ(ArcPieces(1.0, 90.0, 2.0), 1);
  EXPECT_EQ(ArcPieces(1.0, -360.0, 2.0), 4);
  EXPECT_EQ(ArcPieces(0.0, 360.0, 0.1), 4);
  for (const double radius : {0.01, 1.0, 50.0}) {
    const int pieces = ArcPieces(radius, 360.0, 0.001);
    const auto sagitta = [&](int n) { return radius * (1 - std::cos(3.14159265358979 / n)); };
    EXPECT_LE(sagitta(pieces), 0.001 * 1.0001) << radius;
    if (pieces > 4) {
      EXPECT_GT(sagitta(pieces - 1), 0.001) << radius;
    }
  }
  EXPECT_EQ(ArcPieces(1e300, 360.0, 1e-300), kMostPieces);
  EXPECT_EQ(ArcPieces(NAN, 360.0, 0.001), 4);
}

TEST(Curve, ACubicStaysWithinItsTolerance) {
  const std::array<PlotterPoint, 4> curve = {{{0, 0}, {0, 1000}, {1000, 1000}, {1000, 0}}};
  std::vector<PlotterPoint> points{{0, 0}};
  EXPECT_TRUE(FlattenCubic(curve, 1.0, [&](const PlotterPoint& p) {
    points.push_back(p);
    return true;
  }));
  EXPECT_EQ(points.back().x, 1000.0);
  EXPECT_EQ(points.back().y, 0.0);
  EXPECT_LT(points.size(), 60u);
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    // The curve at the middle of the piece against the middle of its chord.
    const double t = (static_cast<double>(i) + 0.5) / static_cast<double>(points.size() - 1);
    const double x = 1000 * (3 * (1 - t) * t * t + t * t * t);
    const double y = 3000 * ((1 - t) * (1 - t) * t + (1 - t) * t * t);
    EXPECT_LE(std::hypot((points[i].x + points[i + 1].x) / 2 - x,
                         (points[i].y + points[i + 1].y) / 2 - y),
              1.0);
  }
}

TEST(Curve, AStraightCubicIsOnePieceAndACallerMayStop) {
  const std::array<PlotterPoint, 4> line = {{{0, 0}, {1, 1}, {2, 2}, {3, 3}}};
  int calls = 0;
  EXPECT_FALSE(FlattenCubic(line, 0.1, [&](const PlotterPoint&) { return ++calls, false; }));
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace k7host
