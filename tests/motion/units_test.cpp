#include "motion/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace k7 {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// The mechanics of a machine as it leaves the works: 4000 steps per inch on every axis.
struct Machine : DeviceState {
  Machine() {
    motorStepsX = motorStepsY = motorStepsZ = motorStepsRound = 200;
    microStepsX = microStepsY = microStepsZ = microStepsRound = 10;
    screwPitchX = screwPitchY = screwPitchZ = 0.5f;
    roundGearRatio = 20.0f;
    roundCircumference = 8.0f;
  }
};

TEST(TruncateToInt32, GoesTowardZero) {
  EXPECT_EQ(TruncateToInt32(3.99), 3);
  EXPECT_EQ(TruncateToInt32(-3.99), -3);
  EXPECT_EQ(TruncateToInt32(-0.5), 0);
}

TEST(TruncateToInt32, StopsAtTheEndsOfItsRangeAndTakesNotANumberAsZero) {
  EXPECT_EQ(TruncateToInt32(2147483646.9), 2147483646);
  EXPECT_EQ(TruncateToInt32(2147483647.0), INT32_MAX);
  EXPECT_EQ(TruncateToInt32(1e300), INT32_MAX);
  EXPECT_EQ(TruncateToInt32(kInfinity), INT32_MAX);
  EXPECT_EQ(TruncateToInt32(-2147483648.9), INT32_MIN);
  EXPECT_EQ(TruncateToInt32(-kInfinity), INT32_MIN);
  EXPECT_EQ(TruncateToInt32(kNan), 0);
}

TEST(RoundToSteps, IsTruncationOfTheValuePlusOneHalf) {
  EXPECT_EQ(RoundToSteps(2.4f), 2);
  EXPECT_EQ(RoundToSteps(2.5f), 3);
  // KEEP: below zero the same addition rounds toward zero.
  EXPECT_EQ(RoundToSteps(-2.0f), -1);
  EXPECT_EQ(RoundToSteps(-2.6f), -2);
}

TEST(StepArithmetic, WrapsAsTheMachineDoes) {
  EXPECT_EQ(WrapAdd(INT32_MAX, 1), INT32_MIN);
  EXPECT_EQ(WrapSubtract(INT32_MIN, 1), INT32_MAX);
  EXPECT_EQ(WrapMultiply(0x40000000, 2), INT32_MIN);
  EXPECT_EQ(WrapMultiply(-3, 7), -21);
}

TEST(StepArithmetic, DividesTowardZeroAndByZeroGivesZero) {
  EXPECT_EQ(DivideSteps(-7, 2), -3);
  EXPECT_EQ(DivideSteps(7, 0), 0);
  EXPECT_EQ(DivideSteps(INT32_MIN, -1), INT32_MAX);
  EXPECT_EQ(DivideSteps(5, -1), -5);
}

TEST(StepsPerInch, IsFourThousandWithTheDefaults) {
  const Machine machine;
  EXPECT_EQ(StepsPerInchX(machine), 4000.0f);
  EXPECT_EQ(StepsPerInchY(machine), 4000.0f);
  EXPECT_EQ(StepsPerInchZ(machine), 4000.0f);
}

TEST(StepsPerInch, TheRoundFixtureReplacesTheAxisOfItsModeAlone) {
  Machine machine;
  machine.roundAxisMode = kRoundReplacesX;
  EXPECT_EQ(StepsPerInchX(machine), 5000.0f);  // 10 x 200 x 20 / 8
  EXPECT_EQ(StepsPerInchY(machine), 4000.0f);
  EXPECT_EQ(StepsPerInchZ(machine), 4000.0f);
  EXPECT_EQ(LinearStepsPerInchX(machine), 4000.0f);

  machine.roundAxisMode = kRoundReplacesY;
  EXPECT_EQ(StepsPerInchX(machine), 4000.0f);
  EXPECT_EQ(StepsPerInchY(machine), 5000.0f);
  EXPECT_EQ(StepsPerInchZ(machine), 4000.0f);
  EXPECT_EQ(LinearStepsPerInchY(machine), 4000.0f);

  machine.roundAxisMode = 3;  // no such mode: as without the fixture
  EXPECT_EQ(StepsPerInchX(machine), 4000.0f);
  EXPECT_EQ(StepsPerInchY(machine), 4000.0f);
  EXPECT_EQ(RoundStepsPerInch(machine), 5000.0f);
}

TEST(StepsPerInch, OfAZeroPitchOrCircumferenceIsNotGuarded) {
  Machine machine;
  machine.screwPitchX = 0.0f;
  machine.roundCircumference = 0.0f;
  EXPECT_TRUE(std::isinf(StepsPerInchX(machine)));
  EXPECT_TRUE(std::isinf(RoundStepsPerInch(machine)));
  EXPECT_EQ(InchesToSteps(1.0f, StepsPerInchX(machine)), INT32_MAX);
  EXPECT_EQ(InchesToSteps(0.0f, StepsPerInchX(machine)), 0);
  EXPECT_EQ(TableWidthSteps(machine), 0u);  // width 0 x infinity
}

TEST(HostStepsPerInch, IsTheMachineFigureDividedByTheFactor) {
  Machine machine;
  machine.xAxisFactor = 2;
  machine.yAxisFactor = 5;
  EXPECT_EQ(HostStepsPerInchX(machine), 2000.0f);
  EXPECT_EQ(HostStepsPerInchY(machine), 800.0f);
}

TEST(HostStepsPerInch, OfAFactorOfZeroIsInfiniteAndTheTableSaturates) {
  Machine machine;
  machine.xAxisFactor = machine.yAxisFactor = 0;
  machine.tableWidth = machine.tableHeight = 16000;
  EXPECT_TRUE(std::isinf(HostStepsPerInchX(machine)));
  EXPECT_EQ(TableWidthSteps(machine), static_cast<std::uint32_t>(INT32_MAX));
  EXPECT_EQ(TableHeightSteps(machine), static_cast<std::uint32_t>(INT32_MAX));
}

TEST(TableSteps, AreHostStepsRoundedHalfUp) {
  Machine machine;
  machine.tableWidth = 25000;
  machine.tableHeight = 16001;
  machine.yAxisFactor = 8;  // 500 steps per inch: 8000.5
  EXPECT_EQ(TableWidthSteps(machine), 100000u);
  EXPECT_EQ(TableHeightSteps(machine), 8001u);
}

TEST(MachinePosition, IsHostStepsTimesTheFactorPlusTheTableHome) {
  Machine machine;
  machine.tableHomeX = 500;
  machine.tableHomeY = -40;
  EXPECT_EQ(MachineX(machine, 1000), 1500);
  EXPECT_EQ(MachineY(machine, 1000), 960);
  machine.xAxisFactor = 2;
  machine.yAxisFactor = 3;
  EXPECT_EQ(MachineX(machine, 1000), 2500);
  EXPECT_EQ(MachineY(machine, 1000), 2960);
}

TEST(MachinePosition, WrapsAtThirtyTwoBits) {
  Machine machine;
  machine.xAxisFactor = 2;
  machine.tableHomeX = 10;
  EXPECT_EQ(MachineX(machine, 0x80000001u), 12);
  EXPECT_EQ(MachineX(machine, 0xFFFFFFFFu), 8);
  machine.tableHomeY = 1;
  EXPECT_EQ(MachineY(machine, 0x7FFFFFFFu), INT32_MIN);
}

TEST(GoToPlace, OfZeroZeroIsMachineZeroAndElsewhereCountsFromTheTableHome) {
  Machine machine;
  machine.xAxisFactor = 2;
  machine.yAxisFactor = 3;
  machine.tableHomeX = 500;
  machine.tableHomeY = -40;
  constexpr struct {
    std::int32_t hostX, hostY, x, y;
  } kCases[] = {
      {0, 0, 0, 0},       {1, 0, 502, -40},   {0, 1, 500, -37}, {10, 10, 520, -10},
      {-10, -1, -20, -3}, {-10, 1, 480, -37},  // one axis above zero brings both homes
  };
  for (const auto& c : kCases) {
    const MachinePlace place = GoToPlace(machine, static_cast<std::uint32_t>(c.hostX),
                                         static_cast<std::uint32_t>(c.hostY));
    EXPECT_EQ(place.x, c.x) << c.hostX << ' ' << c.hostY;
    EXPECT_EQ(place.y, c.y) << c.hostX << ' ' << c.hostY;
  }
}

TEST(LiftZ, IsTheCutterHomeLessTheLift) {
  Machine machine;
  machine.cutterHome = 4000;
  machine.cutterLift = 0.125f;
  EXPECT_EQ(LiftZ(machine), 3500);
}

TEST(PlungeZ, IsTheCutterHomePlusThePassDepth) {
  Machine machine;
  machine.cutterHome = 4000;
  machine.passDepth = 0.0625f;
  machine.engraveDepth = 0.5f;
  for (const std::uint32_t mode : {0u, 1u, 2u, 3u}) {
    machine.cutterMode = mode;
    EXPECT_EQ(PlungeZ(machine), 4250) << mode;
  }
}

TEST(PlungeZ, OfThePneumaticHeadTakesTheEngraveDepth) {
  Machine machine;
  machine.cutterHome = 4000;
  machine.passDepth = 0.0625f;
  machine.engraveDepth = 0.5f;
  machine.cutterMode = kCutterAirZ;
  EXPECT_EQ(PlungeZ(machine), 6000);
}

TEST(PlungeZ, GoesAtLeastOneThousandthOfAnInchBelowTheSurface) {
  Machine machine;
  machine.cutterHome = 4000;
  for (const float depth : {0.0f, 0.0001f, 0.0005f, -1.0f}) {
    machine.passDepth = depth;
    EXPECT_EQ(PlungeZ(machine), 4004) << depth;
  }
  machine.passDepth = 0.002f;
  EXPECT_EQ(PlungeZ(machine), 4008);
}

TEST(ZPositions, WithoutAPitchSaturateAndWrapWithoutHarm) {
  Machine machine;
  machine.screwPitchZ = 0.0f;
  machine.cutterLift = machine.passDepth = 0.125f;
  machine.cutterHome = 10;
  EXPECT_EQ(LiftZ(machine), WrapSubtract(10, INT32_MAX));
  EXPECT_EQ(PlungeZ(machine), WrapAdd(10, INT32_MAX));
}

TEST(SpeedToFeed, TurnsInchesPerSecondIntoMillimetresPerMinute) {
  EXPECT_EQ(SpeedToFeed(1.0f), 1524.0f);
  EXPECT_EQ(SpeedToFeed(20.0f), 30480.0f);
  EXPECT_EQ(SpeedToFeed(0.5f), 762.0f);
}

}  // namespace
}  // namespace k7
