#include "motion/axes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/arithmetic.h"

namespace k7 {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// The mechanics of a machine as it leaves the works: 4000 steps per inch on every axis.
struct Machine : DeviceState {
  Machine() {
    mechanics.axis.x.motorSteps = mechanics.axis.y.motorSteps = mechanics.axis.z.motorSteps =
        mechanics.motorStepsRound = 200;
    mechanics.axis.x.microSteps = mechanics.axis.y.microSteps = mechanics.axis.z.microSteps =
        mechanics.microStepsRound = 10;
    mechanics.axis.x.screwPitch = mechanics.axis.y.screwPitch = mechanics.axis.z.screwPitch = 0.5f;
    mechanics.roundGearRatio = 20.0f;
    mechanics.roundCircumference = 8.0f;
  }
};

TEST(StepsPerInch, IsFourThousandWithTheDefaults) {
  const Machine machine;
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::X), 4000.0f);
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Y), 4000.0f);
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Z), 4000.0f);
}

TEST(StepsPerInch, TheRoundFixtureReplacesTheAxisOfItsModeAlone) {
  Machine machine;
  machine.mechanics.roundAxisMode = kRoundReplacesX;
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::X), 5000.0f);  // 10 x 200 x 20 / 8
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Y), 4000.0f);
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Z), 4000.0f);
  EXPECT_EQ(LinearStepsPerInch(machine.mechanics, Axis::X), 4000.0f);

  machine.mechanics.roundAxisMode = kRoundReplacesY;
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::X), 4000.0f);
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Y), 5000.0f);
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Z), 4000.0f);
  EXPECT_EQ(LinearStepsPerInch(machine.mechanics, Axis::Y), 4000.0f);

  machine.mechanics.roundAxisMode = 3;  // no such mode: as without the fixture
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::X), 4000.0f);
  EXPECT_EQ(StepsPerInch(machine.mechanics, Axis::Y), 4000.0f);
  EXPECT_EQ(RoundStepsPerInch(machine.mechanics), 5000.0f);
}

TEST(StepsPerInch, OfAZeroPitchOrCircumferenceIsNotGuarded) {
  Machine machine;
  machine.mechanics.axis.x.screwPitch = 0.0f;
  machine.mechanics.roundCircumference = 0.0f;
  EXPECT_TRUE(std::isinf(StepsPerInch(machine.mechanics, Axis::X)));
  EXPECT_TRUE(std::isinf(RoundStepsPerInch(machine.mechanics)));
  EXPECT_EQ(InchesToSteps(1.0f, StepsPerInch(machine.mechanics, Axis::X)), INT32_MAX);
  EXPECT_EQ(InchesToSteps(0.0f, StepsPerInch(machine.mechanics, Axis::X)), 0);
  EXPECT_EQ(TableWidthSteps(machine.mechanics), 0u);  // width 0 x infinity
}

TEST(HostStepsPerInch, IsTheMachineFigureDividedByTheFactor) {
  Machine machine;
  machine.mechanics.xAxisFactor = 2;
  machine.mechanics.yAxisFactor = 5;
  EXPECT_EQ(HostStepsPerInch(machine.mechanics, Axis::X), 2000.0f);
  EXPECT_EQ(HostStepsPerInch(machine.mechanics, Axis::Y), 800.0f);
}

TEST(HostStepsPerInch, OfAFactorOfZeroIsInfiniteAndTheTableSaturates) {
  Machine machine;
  machine.mechanics.xAxisFactor = machine.mechanics.yAxisFactor = 0;
  machine.mechanics.tableWidth = machine.mechanics.tableHeight = 16000;
  EXPECT_TRUE(std::isinf(HostStepsPerInch(machine.mechanics, Axis::X)));
  EXPECT_EQ(TableWidthSteps(machine.mechanics), static_cast<std::uint32_t>(INT32_MAX));
  EXPECT_EQ(TableHeightSteps(machine.mechanics), static_cast<std::uint32_t>(INT32_MAX));
}

TEST(TableSteps, AreHostStepsRoundedHalfUp) {
  Machine machine;
  machine.mechanics.tableWidth = 25000;
  machine.mechanics.tableHeight = 16001;
  machine.mechanics.yAxisFactor = 8;  // 500 steps per inch: 8000.5
  EXPECT_EQ(TableWidthSteps(machine.mechanics), 100000u);
  EXPECT_EQ(TableHeightSteps(machine.mechanics), 8001u);
}

TEST(MachinePlaceOf, IsHostStepsTimesTheFactorPlusTheTableHome) {
  Machine machine;
  machine.position.tableHome.x = 500;
  machine.position.tableHome.y = -40;
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 1000, 0).x, 1500);
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 0, 1000).y, 960);
  machine.mechanics.xAxisFactor = 2;
  machine.mechanics.yAxisFactor = 3;
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 1000, 0).x, 2500);
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 0, 1000).y, 2960);
}

TEST(MachinePlaceOf, WrapsAtThirtyTwoBits) {
  Machine machine;
  machine.mechanics.xAxisFactor = 2;
  machine.position.tableHome.x = 10;
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 0x80000001u, 0).x, 12);
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 0xFFFFFFFFu, 0).x, 8);
  machine.position.tableHome.y = 1;
  EXPECT_EQ(MachinePlaceOf(machine.mechanics, machine.position, 0, 0x7FFFFFFFu).y, INT32_MIN);
}

TEST(GoToPlace, OfZeroZeroIsMachineZeroAndElsewhereCountsFromTheTableHome) {
  Machine machine;
  machine.mechanics.xAxisFactor = 2;
  machine.mechanics.yAxisFactor = 3;
  machine.position.tableHome.x = 500;
  machine.position.tableHome.y = -40;
  constexpr struct {
    std::int32_t hostX, hostY, x, y;
  } kCases[] = {
      {0, 0, 0, 0},       {1, 0, 502, -40},   {0, 1, 500, -37}, {10, 10, 520, -10},
      {-10, -1, -20, -3}, {-10, 1, 480, -37},  // one axis above zero brings both homes
  };
  for (const auto& c : kCases) {
    const MachinePlace place =
        GoToPlace(machine.mechanics, machine.position, static_cast<std::uint32_t>(c.hostX),
                  static_cast<std::uint32_t>(c.hostY));
    EXPECT_EQ(place.x, c.x) << c.hostX << ' ' << c.hostY;
    EXPECT_EQ(place.y, c.y) << c.hostX << ' ' << c.hostY;
  }
}

TEST(LiftZ, IsTheCutterHomeLessTheLift) {
  Machine machine;
  machine.position.cutterHome = 4000;
  machine.tools.cutterLift = 0.125f;
  EXPECT_EQ(LiftZ(machine), 3500);
}

TEST(PlungeZ, IsTheCutterHomePlusThePassDepth) {
  Machine machine;
  machine.position.cutterHome = 4000;
  machine.passes.passDepth = 0.0625f;
  machine.tools.engraveDepth = 0.5f;
  for (const std::uint32_t mode : {0u, 1u, 2u, 3u}) {
    machine.tools.cutterMode = mode;
    EXPECT_EQ(PlungeZ(machine), 4250) << mode;
  }
}

TEST(PlungeZ, OfThePneumaticHeadTakesTheEngraveDepth) {
  Machine machine;
  machine.position.cutterHome = 4000;
  machine.passes.passDepth = 0.0625f;
  machine.tools.engraveDepth = 0.5f;
  machine.tools.cutterMode = kCutterAirZ;
  EXPECT_EQ(PlungeZ(machine), 6000);
}

TEST(PlungeZ, GoesAtLeastOneThousandthOfAnInchBelowTheSurface) {
  Machine machine;
  machine.position.cutterHome = 4000;
  for (const float depth : {0.0f, 0.0001f, 0.0005f, -1.0f}) {
    machine.passes.passDepth = depth;
    EXPECT_EQ(PlungeZ(machine), 4004) << depth;
  }
  machine.passes.passDepth = 0.002f;
  EXPECT_EQ(PlungeZ(machine), 4008);
}

TEST(ZPositions, WithoutAPitchSaturateAndWrapWithoutHarm) {
  Machine machine;
  machine.mechanics.axis.z.screwPitch = 0.0f;
  machine.tools.cutterLift = machine.passes.passDepth = 0.125f;
  machine.position.cutterHome = 10;
  EXPECT_EQ(LiftZ(machine), WrapSubtract(10, INT32_MAX));
  EXPECT_EQ(PlungeZ(machine), WrapAdd(10, INT32_MAX));
}

TEST(StepsToThousandths, RoundsHalfUpByTruncation) {
  EXPECT_EQ(StepsToThousandths(0, 4000.0f), 0);
  EXPECT_EQ(StepsToThousandths(4000, 4000.0f), 1000);
  EXPECT_EQ(StepsToThousandths(2, 4000.0f), 1);  // half a thousandth
  EXPECT_EQ(StepsToThousandths(1, 4000.0f), 0);
  // KEEP: the half is added to negative values too, and the sum truncated toward zero.
  EXPECT_EQ(StepsToThousandths(-4000, 4000.0f), -999);
  EXPECT_EQ(StepsToThousandths(-2, 4000.0f), 0);
}

TEST(StepsToThousandths, SaturatesWithoutAResolution) {
  EXPECT_EQ(StepsToThousandths(0, 0.0f), 0);
  EXPECT_EQ(StepsToThousandths(1, 0.0f), INT32_MAX);
  EXPECT_EQ(StepsToThousandths(-1, 0.0f), INT32_MIN);
}

TEST(StepsToInches, IsZeroWithoutAResolution) {
  EXPECT_EQ(StepsToInches(500, 4000.0f), 0.125f);
  EXPECT_EQ(StepsToInches(500, 0.0f), 0.0f);
  EXPECT_EQ(StepsToInches(0, 0.0f), 0.0f);
}

}  // namespace
}  // namespace k7
