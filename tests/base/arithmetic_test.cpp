#include "base/arithmetic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace k7 {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

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

TEST(RoundHalfUp, GoesToTheLargerNumberAlsoBelowZero) {
  constexpr struct {
    float value;
    std::int32_t want;
  } kCases[] = {{0.0f, 0},           {2.4f, 2},
                {2.5f, 3},           {25000.5f, 25001},
                {-0.5f, 0},          {-1.3f, -1},
                {-1.5f, -1},         {-1.6f, -2},
                {-500.0f, -500},     {std::numeric_limits<float>::quiet_NaN(), 0},
                {1e30f, 2147483647}, {-1e30f, -2147483647 - 1}};
  for (const auto& c : kCases) EXPECT_EQ(RoundHalfUp(c.value), c.want) << c.value;
}

TEST(SpeedToFeed, TurnsInchesPerSecondIntoMillimetresPerMinute) {
  EXPECT_EQ(SpeedToFeed(1.0f), 1524.0f);
  EXPECT_EQ(SpeedToFeed(20.0f), 30480.0f);
  EXPECT_EQ(SpeedToFeed(0.5f), 762.0f);
}

}  // namespace
}  // namespace k7
