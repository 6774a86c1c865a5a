#include "job/time_estimate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace k7 {
namespace {

// 4000 steps per inch, 1 in/s.
class TimeEstimate : public testing::Test {
 protected:
  TimeEstimate() {
    record_.motorStepsX = record_.motorStepsY = record_.motorStepsZ = 200;
    record_.microStepsX = record_.microStepsY = record_.microStepsZ = 10;
    record_.screwPitchX = record_.screwPitchY = record_.screwPitchZ = 0.5f;
    record_.cutterLift = 0.125f;
    record_.engraveDepth = record_.passDepth = 0.0625f;
    record_.traverseSpeed = record_.engraveSpeed = 1.0f;
    record_.cutterUpSpeed = record_.cutterDownSpeed = 1.0f;
  }
  std::uint32_t Of(const std::vector<std::uint32_t>& triples) const {
    return EstimateJobTime(record_, triples.data(), static_cast<std::uint32_t>(triples.size() / 3));
  }

  DeviceState record_;
};

constexpr std::uint32_t kInch = 4000;

TEST(RunLength, TruncatesOneFactorOfTheFirstSquare) {
  EXPECT_EQ(RunLength(3.0f, 4.0f), 5.0f);
  EXPECT_EQ(RunLength(-3.0f, 4.0f), 5.0f);
  EXPECT_EQ(RunLength(2.5f, 0.0f), std::sqrt(5.0f));  // 2 * 2.5
  EXPECT_EQ(RunLength(0.0f, 2.5f), 2.5f);
}

TEST(RunSeconds, OfALongRunIsATrapezoid) {
  // 4000 steps less the margin of 7.874 + 0.5, two ramps of 101.6 steps, 2 * 0.0508 s of ramps.
  EXPECT_NEAR(RunSeconds(4000.0f, 4000.0f, 1.0f), (3991.626 - 203.2) / 4000 + 0.1016, 1e-4);
  EXPECT_NEAR(RunSeconds(40000.0f, 4000.0f, 5.0f), (39991.626 - 5080.0) / 20000 + 0.508, 1e-4);
}

TEST(RunSeconds, OfAShortRunIsATriangle) {
  EXPECT_NEAR(RunSeconds(108.374f, 4000.0f, 1.0f), 2 * std::sqrt(100.0 / 78740.16), 1e-5);
}

TEST(RunSeconds, OfARunWithinTheMarginIsZero) {
  EXPECT_EQ(RunSeconds(8.0f, 4000.0f, 1.0f), 0.0f);
  EXPECT_EQ(RunSeconds(0.0f, 4000.0f, 1.0f), 0.0f);
  EXPECT_GT(RunSeconds(9.0f, 4000.0f, 1.0f), 0.0f);
}

TEST_F(TimeEstimate, OfNothingIsZero) {
  EXPECT_EQ(EstimateJobTime(record_, nullptr, 5), 0u);
  EXPECT_EQ(Of({}), 0u);
}

TEST_F(TimeEstimate, NeedsTheSameResolutionOnBothAxes) {
  const std::vector<std::uint32_t> line = {10 * kInch, 0, 2};
  EXPECT_EQ(Of(line), 10u);
  record_.screwPitchY = 0.5f * 1.0004f;  // less than half a part in a thousand
  EXPECT_EQ(Of(line), 10u);
  record_.screwPitchY = 0.5f * 1.002f;
  EXPECT_EQ(Of(line), 0u);
  record_.screwPitchY = 0.5f;
  record_.yAxisFactor = 2;
  EXPECT_EQ(Of(line), 0u);
  record_.xAxisFactor = 2;
  EXPECT_EQ(Of(line), 20u);
  record_.xAxisFactor = record_.yAxisFactor = 0;
  EXPECT_EQ(Of(line), 0u);
}

TEST_F(TimeEstimate, PassesOverOtherKinds) {
  EXPECT_EQ(Of({10 * kInch, 0, 0, 5 * kInch, 0, 3}), 0u);
  EXPECT_EQ(Of({50 * kInch, 0, 3, 10 * kInch, 0, 2, 70 * kInch, 0, 0}), 10u);
}

TEST_F(TimeEstimate, StartsAtTheHostsOrigin) {
  EXPECT_EQ(Of({10 * kInch, 0, 2}), 10u);
  EXPECT_EQ(Of({0, 10 * kInch, 2, 0, 10 * kInch, 2}), 10u);
}

TEST_F(TimeEstimate, TravelsAtTheTraverseSpeedAndCutsAtTheEngraveSpeed) {
  record_.traverseSpeed = 10.0f;
  EXPECT_EQ(Of({20 * kInch, 0, 1, 10 * kInch, 0, 2}), 13u);  // 2.5 and 10.05
  record_.engraveSpeed = 0.5f;
  EXPECT_EQ(Of({20 * kInch, 0, 1, 10 * kInch, 0, 2}), 23u);
}

// A travel that nothing follows costs the engraving speed.
TEST_F(TimeEstimate, ARunLeftOpenCostsTheEngraveSpeed) {
  record_.traverseSpeed = 10.0f;
  EXPECT_EQ(Of({20 * kInch, 0, 1}), 20u);
}

TEST_F(TimeEstimate, AStraightLineInPiecesIsOneRun) {
  record_.engraveSpeed = 10.0f;  // a standstill costs half a second
  std::vector<std::uint32_t> pieces;
  for (std::uint32_t i = 1; i <= 20; ++i) pieces.insert(pieces.end(), {i * kInch, 0, 2});
  EXPECT_EQ(Of(pieces), Of({20 * kInch, 0, 2}));
  EXPECT_EQ(Of(pieces), 3u);
}

TEST_F(TimeEstimate, AReversalEndsARun) {
  record_.engraveSpeed = 10.0f;
  std::vector<std::uint32_t> pieces;
  for (std::uint32_t i = 0; i < 10; ++i) {
    pieces.insert(pieces.end(), {20 * kInch, 0, 2, 0, 0, 2});
  }
  EXPECT_EQ(Of(pieces), 50u);  // 20 runs of 2.507 s
}

TEST_F(TimeEstimate, CountsTheLiftAndThePlungeBetweenStrokes) {
  // 21 strokes of an inch, an inch apart: 42 runs of 1.05 s, 20 times 0.187 in up and down.
  std::vector<std::uint32_t> strokes;
  for (std::uint32_t i = 0; i < 21; ++i) {
    strokes.insert(strokes.end(), {(2 * i + 1) * kInch, 0, 1, (2 * i + 2) * kInch, 0, 2});
  }
  const std::uint32_t shallow = Of(strokes);
  EXPECT_NEAR(shallow, 44 + 20 * 0.39, 2);
  record_.passDepth = 1.0625f;
  EXPECT_EQ(Of(strokes), shallow + 40);  // an inch further down and up, 20 times
}

TEST_F(TimeEstimate, ACutWithoutLengthIsADot) {
  record_.passDepth = 1.0f;
  const std::vector<std::uint32_t> dots = {kInch, 0,         1, kInch, 0,         2, 2 * kInch, 0,
                                           1,     2 * kInch, 0, 2,     3 * kInch, 0, 1};
  const std::uint32_t travels = Of({kInch, 0, 1, 2 * kInch, 0, 1, 3 * kInch, 0, 1});
  EXPECT_NEAR(Of(dots), travels + 3 * 1.175, 1.0);  // two lifts and the plunge between
}

TEST_F(TimeEstimate, ATravelWithoutLengthIsNotMade) {
  record_.passDepth = 5.0f;
  EXPECT_EQ(Of({kInch, 0, 2, kInch, 0, 1, 2 * kInch, 0, 2}), 2u);
}

TEST_F(TimeEstimate, TakesHostPositionsLeftOfTheHomeAsNegative) {
  EXPECT_EQ(Of({static_cast<std::uint32_t>(-10 * 4000), 0, 2}), 10u);
}

TEST_F(TimeEstimate, SaturatesInsteadOfOverflowing) {
  record_.engraveSpeed = 0.0f;
  EXPECT_EQ(Of({10 * kInch, 0, 2, 0, kInch, 2}), static_cast<std::uint32_t>(INT32_MAX));
  record_.engraveSpeed = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Of({10 * kInch, 0, 2, 0, kInch, 2}), 2u);  // never reached: ramps alone
  record_.engraveSpeed = -1.0f;
  EXPECT_EQ(Of({10 * kInch, 0, 2}), 0u);
  record_.engraveSpeed = 1.0f;
  record_.screwPitchX = record_.screwPitchY = 0.0f;
  EXPECT_EQ(Of({10 * kInch, 0, 2}), 0u);
}

}  // namespace
}  // namespace k7
