#include "core/scaling.h"

#include "core/machine_check.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace k7host {
namespace {

TEST(Scaling, PlotterUnitsBecomeStepsRoundedHalfUp) {
  constexpr struct {
    double units;
    double stepsPerInch;
    std::int64_t want;
  } kCases[] = {
      {0, 4000, 0},         {1016, 4000, 4000}, {-1016, 4000, -4000},      {1, 4000, 4},  // 3.937
      {2, 4000, 8},                                                                       // 7.874
      {3, 4000, 12},                                                                      // 11.811
      {127, 4000, 500},     {127, 4, 1},                                    // exactly one half
      {-127, 4, 0},                                                         // minus one half, up
      {381, 4, 2},                                                          // 1.5
      {126, 4, 0},          {25400, 200, 5000}, {8388607, 4000, 33026012},  // ...011.811
      {1016, 2000.5, 2001},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(StepsFromPlotterUnits(c.units, c.stepsPerInch), c.want) << c.units;
  }
}

TEST(Scaling, InchesBecomeSteps) {
  EXPECT_EQ(StepsFromInches(1.0, 4000), 4000);
  EXPECT_EQ(StepsFromInches(0.000125, 4000), 1);  // half a step
  EXPECT_EQ(StepsFromInches(0.0001249, 4000), 0);
  EXPECT_EQ(StepsFromInches(12.3456, 4000), 49382);
}

TEST(Scaling, WhatIsNoNumberOfStepsSaturates) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(StepsFromInches(std::numeric_limits<double>::quiet_NaN(), 4000), 0);
  EXPECT_EQ(StepsFromInches(kInfinity, 4000), 9007199254740992);
  EXPECT_EQ(StepsFromPlotterUnits(-1.0, kInfinity), -9007199254740992);
}

TEST(Scaling, InchesAreShownWithThreeDecimals) {
  EXPECT_EQ(InchesText(12.5), "12.500");
  EXPECT_EQ(InchesText(0.0625), "0.063");
  EXPECT_EQ(InchesText(-0.0625), "-0.063");
  EXPECT_EQ(InchesText(-0.0001), "0.000");
  EXPECT_EQ(InchesText(0.9996), "1.000");
  EXPECT_EQ(InchesFromThousandths(-5), "-0.005");
  EXPECT_EQ(InchesFromThousandths(25000), "25.000");
  EXPECT_EQ(InchesFromThousandths(INT64_MIN), "-9223372036854775.808");
  EXPECT_EQ(InchesFromSteps(1000, 4000), "0.250");
  EXPECT_EQ(InchesFromSteps(-1, 4000), "0.000");
  EXPECT_EQ(InchesFromSteps(-2, 4000), "-0.001");  // half a thousandth, away from zero
  EXPECT_EQ(InchesFromSteps(1000, 0), "0.000");
}

TEST(Scaling, DurationsAreShownInHoursMinutesAndSeconds) {
  EXPECT_EQ(DurationText(0), "0:00:00");
  EXPECT_EQ(DurationText(59), "0:00:59");
  EXPECT_EQ(DurationText(3661), "1:01:01");
  EXPECT_EQ(DurationText(360000), "100:00:00");
}

TEST(TableProblem, NamesAxisSectionAndKeys) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(TableProblem({4000, 4000, 100000, 64000}), "");
  for (const double bad : {0.0, -1.0, kNone, kInfinity, 1e9}) {
    EXPECT_EQ(TableProblem({bad, 4000, 100000, 64000}).substr(0, 46),
              "no resolution on X: in section [Axis X] \"Motor");
    EXPECT_EQ(TableProblem({4000, bad, 100000, 64000}).substr(0, 39),
              "no resolution on Y: in section [Axis Y]");
  }
  EXPECT_EQ(
      TableProblem({4000, 4000, 0, 64000}),
      "no table: in section [Table Size] \"Width\" must be above 0, in thousandths of an inch");
  EXPECT_NE(TableProblem({4000, 4000, 5, 0xFFFFFFFF}).find("\"Height\""), std::string::npos);
}

TEST(SaneText, NeverPrintsWhatNoMachineHas) {
  EXPECT_EQ(SaneText(4000.0), "4000.000");
  EXPECT_EQ(SaneText(std::numeric_limits<double>::infinity()), "unknown");
  EXPECT_EQ(SaneText(std::numeric_limits<double>::quiet_NaN()), "unknown");
  EXPECT_EQ(SaneText(1e12), "unknown");
}

}  // namespace
}  // namespace k7host
