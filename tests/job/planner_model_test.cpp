#include "job/planner_model.h"

#include <gtest/gtest.h>

#include <limits>

namespace k7::planner {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(CornerSpeed, FallsFromNoLimitStraightOnToAStandstillStraightBack) {
  EXPECT_EQ(CornerSpeed(1.0f), kInfinity);
  EXPECT_NEAR(CornerSpeed(0.99f), 3.9296f, 0.01f);
  EXPECT_NEAR(CornerSpeed(0.0f), 0.30586f, 1e-4f);
  EXPECT_NEAR(CornerSpeed(-0.99f), 0.0543f, 1e-3f);
  EXPECT_EQ(CornerSpeed(-1.0f), 0.0f);
}

// Two directions of float vectors can have a cosine a little beyond 1.
TEST(CornerSpeed, TakesACosineBeyondOneForStraight) {
  EXPECT_EQ(CornerSpeed(1.0000002f), kInfinity);
  EXPECT_EQ(CornerSpeed(-1.0000002f), 0.0f);
}

TEST(Reachable, IsTheSpeedAfterAcceleratingAllTheWay) {
  EXPECT_NEAR(Reachable(0.0f, 1.0f), 6.2746f, 1e-3f);
  EXPECT_NEAR(Reachable(8.0f, 1.0f), 10.1670f, 1e-3f);
  EXPECT_EQ(Reachable(3.0f, 0.0f), 3.0f);
}

TEST(PieceSeconds, IsTwoRampsAndACruise) {
  EXPECT_NEAR(PieceSeconds(1.0f, 0.0f, 1.0f, 0.0f), 1.0508f, 1e-4f);
  EXPECT_NEAR(PieceSeconds(1.0f, 1.0f, 1.0f, 1.0f), 1.0f, 1e-6f);
  EXPECT_NEAR(PieceSeconds(1.0f, 0.0f, 1.0f, 1.0f), 1.0254f, 1e-4f);
}

TEST(PieceSeconds, OfAShortPieceNeverReachesTheTop) {
  EXPECT_NEAR(PieceSeconds(0.01f, 0.0f, 10.0f, 0.0f), 0.045078f, 1e-5f);
}

TEST(PieceSeconds, WithoutATopSpeedIsZero) {
  EXPECT_EQ(PieceSeconds(1.0f, 0.0f, 0.0f, 0.0f), 0.0f);
  EXPECT_EQ(PieceSeconds(1.0f, 0.0f, -1.0f, 0.0f), 0.0f);
  EXPECT_EQ(PieceSeconds(1.0f, 0.0f, std::numeric_limits<float>::quiet_NaN(), 0.0f), 0.0f);
}

}  // namespace
}  // namespace k7::planner
