#include "motion/jog_plan.h"

#include <gtest/gtest.h>

namespace k7 {
namespace {

class PlanJogTest : public testing::Test {
 protected:
  PlanJogTest() {
    record_.motorStepsX = record_.motorStepsY = record_.motorStepsZ = record_.motorStepsRound = 200;
    record_.microStepsX = record_.microStepsY = record_.microStepsZ = record_.microStepsRound = 10;
    record_.screwPitchX = record_.screwPitchY = 0.5f;  // 4000 steps per inch
    record_.screwPitchZ = 0.25f;                       // 8000 steps per inch
    record_.roundGearRatio = 20.0f;
    record_.roundCircumference = 10.0f;  // 4000 steps per inch
    record_.tableWidth = 25000;
    record_.tableHeight = 16000;
    record_.jogFast = 5000;
    record_.jogSlow = 250;
  }
  JogPlan Plan(std::uint32_t direction, std::uint32_t speedMode) {
    record_.jogDirection = direction;
    record_.jogSpeedMode = speedMode;
    return PlanJog(record_);
  }
  DeviceState record_;
};

TEST_F(PlanJogTest, KnowsSixDirectionsAndTwoSpeeds) {
  constexpr struct {
    std::uint32_t direction, speedMode;
    JogAxis axis;
    std::int32_t step;
    float feed;
    std::int32_t outstanding;
  } kCases[] = {
      {0, 0, JogAxis::Y, -100, 5.0f, 8}, {0, 1, JogAxis::Y, -20, 0.25f, 4},
      {1, 0, JogAxis::Y, 100, 5.0f, 8},  {1, 1, JogAxis::Y, 20, 0.25f, 4},
      {2, 0, JogAxis::X, 100, 5.0f, 8},  {2, 1, JogAxis::X, 20, 0.25f, 4},
      {3, 0, JogAxis::X, -100, 5.0f, 8}, {3, 1, JogAxis::X, -20, 0.25f, 4},
      {4, 0, JogAxis::Z, -200, 5.0f, 8}, {4, 1, JogAxis::Z, -40, 0.25f, 4},  // up
      {5, 0, JogAxis::Z, 200, 5.0f, 8},  {5, 1, JogAxis::Z, 40, 0.25f, 4},   // down
  };
  for (const auto& c : kCases) {
    const JogPlan plan = Plan(c.direction, c.speedMode);
    EXPECT_TRUE(plan.possible);
    EXPECT_EQ(plan.axis, c.axis) << c.direction;
    EXPECT_EQ(plan.stepSteps, c.step) << c.direction << ' ' << c.speedMode;
    EXPECT_EQ(plan.feedInchesPerSecond, c.feed);
    EXPECT_EQ(plan.maxOutstanding, c.outstanding);
    EXPECT_EQ(plan.limited, c.axis != JogAxis::Z);
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
  record_.cutterMode = kCutterAirZ;
  EXPECT_FALSE(Plan(4, 0).possible);
  EXPECT_FALSE(Plan(5, 1).possible);
  EXPECT_TRUE(Plan(0, 0).possible);
}

TEST_F(PlanJogTest, AStepIsTruncatedNotRounded) {
  record_.screwPitchX = 2000.0f / 4039.0f;  // 4039 steps per inch: 100.975 and 20.195
  EXPECT_EQ(Plan(2, 0).stepSteps, 100);
  EXPECT_EQ(Plan(3, 0).stepSteps, -100);
}

TEST_F(PlanJogTest, TheTableFromZeroToHomePlusSizeIsTheLimit) {
  record_.tableHomeX = 300;
  record_.tableHomeY = -300;
  const JogPlan x = Plan(2, 0);
  EXPECT_EQ(x.highestSteps, 300 + 100000);
  EXPECT_TRUE(JogMayReach(x, 0));
  EXPECT_FALSE(JogMayReach(x, -1));
  EXPECT_TRUE(JogMayReach(x, 100300));
  EXPECT_FALSE(JogMayReach(x, 100301));
  EXPECT_EQ(Plan(0, 0).highestSteps, -300 + 64000);
}

TEST_F(PlanJogTest, TheLimitIsTruncated) {
  record_.tableWidth = 1;
  record_.screwPitchX = 2000.0f / 1999.0f;  // 1.999 steps
  EXPECT_EQ(Plan(2, 0).highestSteps, 1);
}

TEST_F(PlanJogTest, AnAxisThatTheRoundFixtureReplacesHasNoLimit) {
  record_.roundAxisMode = kRoundReplacesX;
  EXPECT_FALSE(Plan(2, 0).limited);
  EXPECT_TRUE(Plan(1, 0).limited);
  EXPECT_TRUE(JogMayReach(Plan(2, 0), -1000000));
  record_.roundAxisMode = kRoundReplacesY;
  EXPECT_TRUE(Plan(2, 0).limited);
  EXPECT_FALSE(Plan(1, 0).limited);
}

TEST_F(PlanJogTest, ZHasNoLimit) {
  EXPECT_TRUE(JogMayReach(Plan(4, 0), -5));
  EXPECT_TRUE(JogMayReach(Plan(5, 0), INT32_MAX));
}

TEST_F(PlanJogTest, SaturatesWithoutAPitch) {
  record_.screwPitchX = 0.0f;
  EXPECT_EQ(Plan(2, 0).stepSteps, INT32_MAX);
  EXPECT_EQ(Plan(3, 0).stepSteps, INT32_MIN);
}

}  // namespace
}  // namespace k7
