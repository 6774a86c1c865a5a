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
    record_.mechanics.axis.x.motorSteps = record_.mechanics.axis.y.motorSteps = 200;
    record_.mechanics.axis.x.microSteps = record_.mechanics.axis.y.microSteps = 10;
    record_.mechanics.axis.x.screwPitch = record_.mechanics.axis.y.screwPitch = 0.5f;
    record_.tools.traverseSpeed = record_.tools.engraveSpeed = 1.0f;
  }
  std::uint32_t Of(const std::vector<std::uint32_t>& triples) const {
    return EstimateJobTime(record_.mechanics, record_.tools, triples.data(),
                           static_cast<std::uint32_t>(triples.size() / 3));
  }

  // Lifts and plunges would take many seconds.
  void GiveASlowCutter() {
    record_.mechanics.axis.z.motorSteps = 200;
    record_.mechanics.axis.z.microSteps = 10;
    record_.mechanics.axis.z.screwPitch = 0.5f;
    record_.tools.cutterLift = record_.tools.engraveDepth = record_.passes.passDepth = 1.0f;
    record_.tools.cutterUpSpeed = record_.tools.cutterDownSpeed = 0.1f;
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
  // 4000 steps less the margin of 7.874 + 0.5; two ramps of 101.6 steps, 0.0508 s each.
  EXPECT_NEAR(RunSeconds(4000.0f, 4000.0f, 1.0f), (3991.626 - 203.2) / 4000 + 0.1016, 1e-4);
  EXPECT_NEAR(RunSeconds(40000.0f, 4000.0f, 5.0f), (39991.626 - 5080.0) / 20000 + 0.508, 1e-4);
}

TEST(RunSeconds, OfAShortRunIsATriangle) {
  EXPECT_NEAR(RunSeconds(108.374f, 4000.0f, 1.0f), 2 * std::sqrt(100.0 / 78740.16), 1e-5);
  EXPECT_NEAR(RunSeconds(158.374f, 4000.0f, 1.0f), 2 * std::sqrt(150.0 / 78740.16), 1e-5);
}

TEST(RunSeconds, OfARunWithinTheMarginIsZero) {
  EXPECT_EQ(RunSeconds(8.0f, 4000.0f, 1.0f), 0.0f);
  EXPECT_EQ(RunSeconds(0.0f, 4000.0f, 1.0f), 0.0f);
  EXPECT_GT(RunSeconds(9.0f, 4000.0f, 1.0f), 0.0f);
}

TEST_F(TimeEstimate, OfNothingIsZero) {
  EXPECT_EQ(EstimateJobTime(record_.mechanics, record_.tools, nullptr, 5), 0u);
  EXPECT_EQ(Of({}), 0u);
}

TEST_F(TimeEstimate, NeedsTheSameResolutionOnBothAxes) {
  const std::vector<std::uint32_t> line = {10 * kInch, 0, 2};
  EXPECT_EQ(Of(line), 10u);
  record_.mechanics.axis.y.screwPitch = 0.5f * 1.0004f;  // less than half a part in a thousand
  EXPECT_EQ(Of(line), 10u);
  for (const float pitch : {0.5f * 1.002f, 0.5f / 1.002f}) {
    record_.mechanics.axis.y.screwPitch = pitch;
    EXPECT_EQ(Of(line), 0u);
  }
  record_.mechanics.axis.y.screwPitch = 0.5f;
  record_.mechanics.yAxisFactor = 2;
  EXPECT_EQ(Of(line), 0u);
  record_.mechanics.xAxisFactor = 2;
  EXPECT_EQ(Of(line), 20u);
  record_.mechanics.xAxisFactor = record_.mechanics.yAxisFactor = 0;
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
  record_.tools.traverseSpeed = 10.0f;
  EXPECT_EQ(Of({20 * kInch, 0, 1, 10 * kInch, 0, 2}), 13u);  // 2.5 and 10.05
  record_.tools.engraveSpeed = 0.5f;
  EXPECT_EQ(Of({20 * kInch, 0, 1, 10 * kInch, 0, 2}), 23u);
}

// A travel that nothing follows costs the engraving speed.
TEST_F(TimeEstimate, ARunLeftOpenCostsTheEngraveSpeed) {
  record_.tools.traverseSpeed = 10.0f;
  EXPECT_EQ(Of({20 * kInch, 0, 1}), 20u);
}

TEST_F(TimeEstimate, AStraightLineInPiecesIsOneRun) {
  record_.tools.engraveSpeed = 10.0f;  // a standstill costs half a second
  std::vector<std::uint32_t> pieces;
  for (std::uint32_t i = 1; i <= 20; ++i) pieces.insert(pieces.end(), {i * kInch, 0, 2});
  EXPECT_EQ(Of(pieces), Of({20 * kInch, 0, 2}));
  EXPECT_EQ(Of(pieces), 3u);
}

TEST_F(TimeEstimate, AReversalEndsARun) {
  record_.tools.engraveSpeed = 10.0f;
  std::vector<std::uint32_t> pieces;
  for (std::uint32_t i = 0; i < 10; ++i) {
    pieces.insert(pieces.end(), {20 * kInch, 0, 2, 0, 0, 2});
  }
  EXPECT_EQ(Of(pieces), 50u);  // 20 runs of 2.507 s
}

// Lifts and plunges end a run and cost nothing of their own, whatever the cutter's speeds.
TEST_F(TimeEstimate, IsTheSumOfTheRunsAlone) {
  GiveASlowCutter();
  std::vector<std::uint32_t> strokes;
  for (std::uint32_t i = 0; i < 40; ++i) {
    strokes.insert(strokes.end(), {(2 * i + 1) * kInch, 0, 1, (2 * i + 2) * kInch, 0, 2});
  }
  EXPECT_EQ(Of(strokes), 84u);  // 80 runs of 1.0487 s
}

TEST_F(TimeEstimate, ARightAngleEndsARun) {
  record_.tools.engraveSpeed = 10.0f;  // 20 inches in 2.508 s from standstill to standstill
  EXPECT_EQ(Of({20 * kInch, 0, 2, 20 * kInch, 20 * kInch, 2, 0, 20 * kInch, 2, 0, 0, 2}), 10u);
  EXPECT_EQ(Of({80 * kInch, 0, 2}), 9u);
}

// The cutter goes down and up in the middle of a straight way: two runs.
TEST_F(TimeEstimate, ACutWithoutLengthIsADotAndEndsARun) {
  GiveASlowCutter();
  record_.tools.traverseSpeed = 10.0f;
  std::vector<std::uint32_t> dots;
  for (std::uint32_t i = 1; i <= 10; ++i) {
    dots.insert(dots.end(), {i * 20 * kInch, 0, 1, i * 20 * kInch, 0, 2});
  }
  EXPECT_EQ(Of(dots), 25u);                                    // 10 runs of 2.508 s
  EXPECT_EQ(Of({200 * kInch, 0, 1, 200 * kInch, 0, 2}), 21u);  // one of 20.5 s
}

TEST_F(TimeEstimate, ATravelWithoutLengthIsNotMadeAndEndsNoRun) {
  record_.tools.engraveSpeed = 10.0f;
  std::vector<std::uint32_t> pieces;
  for (std::uint32_t i = 1; i <= 10; ++i) {
    pieces.insert(pieces.end(), {i * 20 * kInch, 0, 2, i * 20 * kInch, 0, 1});
  }
  EXPECT_EQ(Of(pieces), 21u);  // one run of 20.5 s
}

TEST_F(TimeEstimate, TakesHostPositionsLeftOfTheHomeAsNegative) {
  EXPECT_EQ(Of({static_cast<std::uint32_t>(-10 * 4000), 0, 2}), 10u);
}

TEST_F(TimeEstimate, SaturatesInsteadOfOverflowing) {
  record_.tools.engraveSpeed = 0.0f;
  EXPECT_EQ(Of({10 * kInch, 0, 2, 0, kInch, 2}), static_cast<std::uint32_t>(INT32_MAX));
  record_.tools.engraveSpeed = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Of({10 * kInch, 0, 2, 0, kInch, 2}), 2u);  // never reached: ramps alone
  record_.tools.engraveSpeed = -1.0f;
  EXPECT_EQ(Of({10 * kInch, 0, 2}), 0u);
  record_.tools.engraveSpeed = 1.0f;
  record_.mechanics.axis.x.screwPitch = record_.mechanics.axis.y.screwPitch = 0.0f;
  EXPECT_EQ(Of({10 * kInch, 0, 2}), 0u);
}

}  // namespace
}  // namespace k7
