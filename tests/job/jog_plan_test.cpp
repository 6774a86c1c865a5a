#include "job/jog_plan.h"

#include <gtest/gtest.h>

namespace k7 {
namespace {

class PlanJogTest : public testing::Test {
 protected:
  PlanJogTest() {
    record_.mechanics.axis.x.motorSteps = record_.mechanics.axis.y.motorSteps =
        record_.mechanics.axis.z.motorSteps = record_.mechanics.motorStepsRound = 200;
    record_.mechanics.axis.x.microSteps = record_.mechanics.axis.y.microSteps =
        record_.mechanics.axis.z.microSteps = record_.mechanics.microStepsRound = 10;
    record_.mechanics.axis.x.screwPitch = record_.mechanics.axis.y.screwPitch =
        0.5f;                                     // 4000 steps per inch
    record_.mechanics.axis.z.screwPitch = 0.25f;  // 8000 steps per inch
    record_.mechanics.roundGearRatio = 20.0f;
    record_.mechanics.roundCircumference = 10.0f;  // 4000 steps per inch
    record_.mechanics.tableWidth = 25000;
    record_.mechanics.tableHeight = 16000;
    record_.jog.jogFast = 5000;
    record_.jog.jogSlow = 250;
  }
  JogPlan Plan(std::uint32_t direction, std::uint32_t speedMode) {
    record_.jog.jogDirection = direction;
    record_.jog.jogSpeedMode = speedMode;
    return PlanJog(record_);
  }
  DeviceState record_;
};

TEST_F(PlanJogTest, KnowsSixDirectionsAndTwoSpeeds) {
  constexpr struct {
    std::uint32_t direction, speedMode;
    Axis axis;
    std::int32_t step;
    float feed;
    std::int32_t outstanding;
  } kCases[] = {
      {0, 0, Axis::Y, -100, 5.0f, 8}, {0, 1, Axis::Y, -20, 0.25f, 4},
      {1, 0, Axis::Y, 100, 5.0f, 8},  {1, 1, Axis::Y, 20, 0.25f, 4},
      {2, 0, Axis::X, 100, 5.0f, 8},  {2, 1, Axis::X, 20, 0.25f, 4},
      {3, 0, Axis::X, -100, 5.0f, 8}, {3, 1, Axis::X, -20, 0.25f, 4},
      {4, 0, Axis::Z, -200, 5.0f, 8}, {4, 1, Axis::Z, -40, 0.25f, 4},  // up
      {5, 0, Axis::Z, 200, 5.0f, 8},  {5, 1, Axis::Z, 40, 0.25f, 4},   // down
  };
  for (const auto& c : kCases) {
    const JogPlan plan = Plan(c.direction, c.speedMode);
    EXPECT_TRUE(plan.possible);
    EXPECT_EQ(plan.axis, c.axis) << c.direction;
    EXPECT_EQ(plan.stepSteps, c.step) << c.direction << ' ' << c.speedMode;
    EXPECT_EQ(plan.feedInchesPerSecond, c.feed);
    EXPECT_EQ(plan.maxOutstanding, c.outstanding);
    EXPECT_EQ(plan.limited, c.axis != Axis::Z);
  }
}

TEST_F(PlanJogTest, AnUnknownDirectionIsNotPossible) {
  EXPECT_FALSE(Plan(6, 0).possible);
  EXPECT_FALSE(Plan(UINT32_MAX, 0).possible);
}

TEST_F(PlanJogTest, AnUnknownSpeedIsSlow) {
  EXPECT_EQ(Plan(2, 7).stepSteps, 20);
}

TEST_F(PlanJogTest, AnAirZHeadIsNotJoggedAlongZ) {
  record_.tools.cutterMode = kCutterAirZ;
  EXPECT_FALSE(Plan(4, 0).possible);
  EXPECT_FALSE(Plan(5, 1).possible);
  EXPECT_TRUE(Plan(0, 0).possible);
}

TEST_F(PlanJogTest, AStepIsTruncatedNotRounded) {
  record_.mechanics.axis.x.screwPitch =
      2000.0f / 4039.0f;  // 4039 steps per inch: 100.975 and 20.195
  EXPECT_EQ(Plan(2, 0).stepSteps, 100);
  EXPECT_EQ(Plan(3, 0).stepSteps, -100);
}

TEST_F(PlanJogTest, TheTableFromZeroToHomePlusSizeIsTheLimit) {
  record_.position.tableHome.x = 300;
  record_.position.tableHome.y = -300;
  const JogPlan x = Plan(2, 0);
  EXPECT_EQ(x.highestSteps, 300 + 100000);
  EXPECT_TRUE(JogMayReach(x, 0));
  EXPECT_FALSE(JogMayReach(x, -1));
  EXPECT_TRUE(JogMayReach(x, 100300));
  EXPECT_FALSE(JogMayReach(x, 100301));
  EXPECT_EQ(Plan(0, 0).highestSteps, -300 + 64000);
}

TEST_F(PlanJogTest, TheLimitIsTruncated) {
  record_.mechanics.tableWidth = 1;
  record_.mechanics.axis.x.screwPitch = 2000.0f / 1999.0f;  // 1.999 steps
  EXPECT_EQ(Plan(2, 0).highestSteps, 1);
}

TEST_F(PlanJogTest, AnAxisThatTheRoundFixtureReplacesHasNoLimit) {
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  EXPECT_FALSE(Plan(2, 0).limited);
  EXPECT_TRUE(Plan(1, 0).limited);
  EXPECT_TRUE(JogMayReach(Plan(2, 0), -1000000));
  record_.mechanics.roundAxisMode = kRoundReplacesY;
  EXPECT_TRUE(Plan(2, 0).limited);
  EXPECT_FALSE(Plan(1, 0).limited);
}

TEST_F(PlanJogTest, ZHasNoLimit) {
  EXPECT_TRUE(JogMayReach(Plan(4, 0), -5));
  EXPECT_TRUE(JogMayReach(Plan(5, 0), INT32_MAX));
}

TEST_F(PlanJogTest, SaturatesWithoutAPitch) {
  record_.mechanics.axis.x.screwPitch = 0.0f;
  EXPECT_EQ(Plan(2, 0).stepSteps, INT32_MAX);
  EXPECT_EQ(Plan(3, 0).stepSteps, INT32_MIN);
}

}  // namespace
}  // namespace k7
