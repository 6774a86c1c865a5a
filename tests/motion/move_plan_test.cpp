#include "motion/move_plan.h"

#include <gtest/gtest.h>

#include <limits>

#include "motion/axes.h"

namespace k7 {
namespace {

// 4000 steps per inch on every axis, a surface at 8000 steps.
struct Machine : DeviceState {
  Machine() {
    mechanics.axis.z.motorSteps = 200;
    mechanics.axis.z.microSteps = 10;
    mechanics.axis.z.screwPitch = 0.5f;
    position.stepsPerMm.x = position.stepsPerMm.y = position.stepsPerMm.z = 4000.0f / 25.4f;
    position.tableSurface = 8000;
  }
};

MovePlan Plan(const Machine& machine, std::int32_t x, std::int32_t y, std::int32_t z) {
  return PlanMove(machine, {.x = x, .y = y, .z = z});
}

TEST(PlanMove, WritesTheAxesThatChangeInTheOrderXyz) {
  const Machine machine;
  const MovePlan plan = Plan(machine, 2000, 4000, 500);
  EXPECT_TRUE(plan.changed);
  EXPECT_STREQ(plan.line.c_str(), "G0 X12.700000 Y25.400000 Z3.175000\n");
  EXPECT_EQ(plan.lastX, 2000);
  EXPECT_EQ(plan.lastY, 4000);
  EXPECT_EQ(plan.lastZ, 500);
}

TEST(PlanMove, LeavesOutAnAxisThatDoesNotChange) {
  Machine machine;
  machine.position.last.x = 2000;
  machine.position.last.z = 500;
  EXPECT_STREQ(Plan(machine, 2000, 4000, 500).line.c_str(), "G0 Y25.400000\n");
  machine.position.last.y = 4000;
  EXPECT_FALSE(Plan(machine, 2000, 4000, 500).changed);
}

TEST(PlanMove, LeavesOutAnAxisThatIsNotGiven) {
  const Machine machine;
  const std::int32_t y = 4000;
  EXPECT_STREQ(PlanMove(machine, {.y = y}).line.c_str(), "G0 Y25.400000\n");
  const std::int32_t z = 4250;
  EXPECT_STREQ(PlanMove(machine, {.z = z}).line.c_str(), "G0 Z26.987499\n");
  EXPECT_FALSE(PlanMove(machine, {}).changed);
}

TEST(PlanMove, APositionWhoseTextStandsForTheLastPositionIsNoChange) {
  Machine machine;
  machine.position.stepsPerMm.x = 3000000.0f;  // 3 steps in the last decimal
  machine.position.last.x = 3;
  // 4 steps are 0.0000013 mm, written as 0.000000 like every fraction of one: position 0.
  const std::int32_t four = 4;
  EXPECT_STREQ(PlanMove(machine, {.x = four}).line.c_str(), "G0 X0.000000\n");
  machine.position.last.x = 0;
  EXPECT_FALSE(PlanMove(machine, {.x = four}).changed);
}

TEST(PlanMove, RecordsThePositionOfTheTextAndNotTheOneAskedFor) {
  Machine machine;
  machine.position.stepsPerMm.x = 10.0f;
  const std::int32_t x = 1;  // 0.1 mm: the text says 0.01 mm
  const MovePlan plan = PlanMove(machine, {.x = x});
  EXPECT_FALSE(plan.changed);  // 0.1 of a step rounds to where the axis is
  machine.position.last.x = 50;
  const MovePlan back = PlanMove(machine, {.x = x});
  EXPECT_STREQ(back.line.c_str(), "G0 X0.0100000\n");
  EXPECT_EQ(back.lastX, 0);
}

TEST(PlanMove, BelowZeroTheRecordedPositionRoundsTowardZero) {
  const Machine machine;
  const std::int32_t x = -1000;
  const MovePlan plan = PlanMove(machine, {.x = x});
  EXPECT_STREQ(plan.line.c_str(), "G0 X-6.350000\n");
  EXPECT_EQ(plan.lastX, -999);
}

TEST(PlanMove, DoesNotSendAPositionThatCannotBeExpressed) {
  Machine machine;
  machine.position.stepsPerMm.x = 0.0f;
  machine.position.stepsPerMm.z = std::numeric_limits<float>::quiet_NaN();
  EXPECT_STREQ(Plan(machine, 2000, 4000, 9000).line.c_str(), "G0 Y25.400000\n");
  machine.position.stepsPerMm.y = 1e-30f;  // more than the number text can hold
  const MovePlan plan = Plan(machine, 2000, 4000, 9000);
  EXPECT_FALSE(plan.changed);
  EXPECT_FALSE(plan.violatesSurface);
  EXPECT_EQ(plan.lastX, 0);
  EXPECT_EQ(plan.lastY, 0);
}

TEST(PlanMove, WithEndlessStepsPerMillimetreEveryPositionIsZero) {
  Machine machine;
  machine.position.stepsPerMm.x = std::numeric_limits<float>::infinity();
  const std::int32_t x = 2000;
  EXPECT_FALSE(PlanMove(machine, {.x = x}).changed);
}

TEST(PlanMove, HoldsTheEndsOfTheStepRange) {
  Machine machine;
  machine.position.stepsPerMm.x = machine.position.stepsPerMm.y = 1.0f;
  const std::int32_t low = INT32_MIN;
  const std::int32_t high = INT32_MAX;
  const MovePlan plan = PlanMove(machine, {.x = low, .y = high});
  EXPECT_STREQ(plan.line.c_str(), "G0 X-2147483648.000000 Y2147483648.000000\n");
  EXPECT_EQ(plan.lastX, INT32_MIN);
  EXPECT_EQ(plan.lastY, INT32_MAX);
}

TEST(PlanMove, RefusesAZBelowTheTableSurface) {
  const Machine machine;
  EXPECT_FALSE(Plan(machine, 0, 0, 8000).violatesSurface);
  const MovePlan plan = Plan(machine, 0, 0, 9000);
  EXPECT_TRUE(plan.violatesSurface);
  EXPECT_STREQ(plan.excessInches.c_str(), "0.250");
}

TEST(PlanMove, WritesTheExcessInTheNumberTextOfTheLines) {
  const Machine machine;
  EXPECT_STREQ(Plan(machine, 0, 0, 8400).excessInches.c_str(), "0.0100");  // a tenth of an inch
}

TEST(PlanMove, RefusesAlsoWhenZIsAlreadyThere) {
  Machine machine;
  machine.position.last.z = 9000;
  EXPECT_TRUE(Plan(machine, 0, 0, 9000).violatesSurface);
}

TEST(PlanMove, ARefusedMoveHasAlreadyTakenItsXAndY) {
  const Machine machine;
  const MovePlan plan = Plan(machine, 2000, 4000, 9000);
  EXPECT_TRUE(plan.violatesSurface);
  EXPECT_EQ(plan.lastX, 2000);
  EXPECT_EQ(plan.lastY, 4000);
  EXPECT_EQ(plan.lastZ, 0);
}

TEST(PlanMove, LetsAJogAndTheAutomaticModePassTheSurface) {
  Machine machine;
  machine.jog.jogActive = 1;
  EXPECT_FALSE(Plan(machine, 0, 0, 9000).violatesSurface);
  machine.jog.jogActive = 0;
  machine.tools.cutterMode = kCutterAutomatic;
  EXPECT_STREQ(Plan(machine, 0, 0, 9000).line.c_str(), "G0 Z57.149998\n");
  for (const std::uint32_t mode : {0u, 1u, 3u, 4u}) {
    machine.tools.cutterMode = mode;
    EXPECT_TRUE(Plan(machine, 0, 0, 9000).violatesSurface) << mode;
  }
}

TEST(PlanMove, TheExcessSurvivesTheEndsOfItsRange) {
  Machine machine;
  machine.position.tableSurface = INT32_MIN;
  machine.mechanics.axis.z.screwPitch = 0.0f;
  const MovePlan plan = Plan(machine, 0, 0, INT32_MAX);
  EXPECT_TRUE(plan.violatesSurface);
  EXPECT_STREQ(plan.excessInches.c_str(), "0.000");  // divided by an endless resolution
}

TEST(ExpressPosition, IsTheStepAskedForOnTheWholeTableOfAnOrdinaryMachine) {
  const Machine machine;
  for (std::int32_t steps = 0; steps <= 100000; ++steps) {
    const AxisTarget target = ExpressPosition(steps, machine.position.stepsPerMm.x);
    ASSERT_TRUE(target.expressible);
    ASSERT_EQ(target.steps, steps) << target.text.c_str();
  }
}

TEST(ExpressPosition, GoesWhereTheNumberTextSaysWhenThatIsOneZeroTooLong) {
  EXPECT_STREQ(ExpressPosition(100, 1000.0f).text.c_str(), "0.0100000");
  EXPECT_EQ(ExpressPosition(100, 1000.0f).steps, 10);
  EXPECT_EQ(ExpressPosition(101, 1000.0f).steps, 101);
}

class PositionLineTest : public testing::Test {
 protected:
  PositionLineTest() {
    record_.position.stepsPerMm.x = 100.0f;
    record_.position.stepsPerMm.y = 200.0f;
    record_.position.stepsPerMm.z = 400.0f;
  }
  DeviceState record_;
  const std::int32_t x_ = 250, y_ = -250, z_ = 0;
};

TEST_F(PositionLineTest, NamesTheGivenAxesInTheOrderXYZ) {
  EXPECT_STREQ(PositionLine(record_.position.stepsPerMm, {.x = x_, .y = y_, .z = z_}).c_str(),
               "G92 X2.500000 Y-1.250000 Z0.000000\n");
  EXPECT_STREQ(PositionLine(record_.position.stepsPerMm, {.y = y_}).c_str(), "G92 Y-1.250000\n");
  EXPECT_STREQ(PositionLine(record_.position.stepsPerMm, {.z = z_}).c_str(), "G92 Z0.000000\n");
}

TEST_F(PositionLineTest, IsEmptyWithoutAxes) {
  EXPECT_TRUE(PositionLine(record_.position.stepsPerMm, {}).empty());
}

TEST_F(PositionLineTest, LeavesOutAnAxisWhosePositionCannotBeExpressed) {
  const std::int32_t far = INT32_MAX;
  record_.position.stepsPerMm.x = 1e-12f;  // finite, but more than the number text can hold
  EXPECT_TRUE(PositionLine(record_.position.stepsPerMm, {.x = far}).empty());
  record_.position.stepsPerMm.x = record_.position.stepsPerMm.z = 0.0f;
  EXPECT_STREQ(PositionLine(record_.position.stepsPerMm, {.x = x_, .y = y_, .z = z_}).c_str(),
               "G92 Y-1.250000\n");
  EXPECT_TRUE(PositionLine(record_.position.stepsPerMm, {.x = x_, .z = z_}).empty());
}

TEST_F(PositionLineTest, HoldsTheLargestPositions) {
  const std::int32_t least = INT32_MIN;
  record_.position.stepsPerMm.x = record_.position.stepsPerMm.y = record_.position.stepsPerMm.z =
      1.0f;
  EXPECT_STREQ(
      PositionLine(record_.position.stepsPerMm, {.x = least, .y = least, .z = least}).c_str(),
      "G92 X-2147483648.000000 Y-2147483648.000000 Z-2147483648.000000\n");
}

}  // namespace
}  // namespace k7
