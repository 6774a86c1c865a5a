#include "board/trapezoid.h"

#include <gtest/gtest.h>

namespace k7sim {
namespace {

TEST(Trapezoid, ALongMoveSpeedsUpCruisesAndSlowsDown) {
  // 50 mm/s at 500 mm/s^2: 0.1 s and 2.5 mm for each ramp, 95 mm at 50 mm/s between them.
  const Trapezoid t = Trapezoid::Make(100, 0, 50, 0, 500);
  EXPECT_DOUBLE_EQ(t.rampUpSeconds, 0.1);
  EXPECT_DOUBLE_EQ(t.cruiseSeconds, 1.9);
  EXPECT_DOUBLE_EQ(t.rampDownSeconds, 0.1);
  EXPECT_DOUBLE_EQ(t.Seconds(), 2.1);
}

TEST(Trapezoid, AShortMoveNeverReachesItsFeed) {
  // 1 mm to speed up to sqrt(2 * 500 * 1), and 1 mm to slow down.
  const Trapezoid t = Trapezoid::Make(2, 0, 50, 0, 500);
  EXPECT_NEAR(t.cruise, 31.6227766, 1e-6);
  EXPECT_NEAR(t.Seconds(), 2 * 0.0632455532, 1e-9);
  EXPECT_DOUBLE_EQ(t.cruiseSeconds, 0);
}

TEST(Trapezoid, EntryAndExitSpeedsSaveTheirRamps) {
  const Trapezoid t = Trapezoid::Make(10, 50, 50, 50, 500);
  EXPECT_DOUBLE_EQ(t.Seconds(), 0.2);
  const Trapezoid half = Trapezoid::Make(10, 50, 50, 0, 500);
  EXPECT_DOUBLE_EQ(half.Seconds(), 7.5 / 50 + 0.1);
}

TEST(Trapezoid, DistanceFollowsTheProfileAndStaysWithinTheMove) {
  const Trapezoid t = Trapezoid::Make(100, 0, 50, 0, 500);
  EXPECT_DOUBLE_EQ(t.DistanceAfter(-1), 0);
  EXPECT_DOUBLE_EQ(t.DistanceAfter(0.1), 2.5);
  EXPECT_DOUBLE_EQ(t.DistanceAfter(1.1), 52.5);
  EXPECT_DOUBLE_EQ(t.DistanceAfter(2.0), 97.5);
  EXPECT_DOUBLE_EQ(t.DistanceAfter(9), 100);
}

}  // namespace
}  // namespace k7sim
