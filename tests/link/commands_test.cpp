#include "link/commands.h"

#include <gtest/gtest.h>

#include <limits>

namespace k7 {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(FeedLine, IsTheLetterAndTheNumberWithoutABlank) {
  EXPECT_STREQ(FeedLine(FeedText(1.0f).c_str()).c_str(), "G0 F1524.000\n");
  EXPECT_STREQ(FeedLine(FeedText(0.5f).c_str()).c_str(), "G0 F762.000\n");
  EXPECT_STREQ(FeedLine(FeedText(10.0f).c_str()).c_str(), "G0 F15240.000\n");
}

TEST(FeedText, OfANumberThatIsNotFiniteIsZero) {
  EXPECT_STREQ(FeedText(kInfinity).c_str(), "0.000");
}

TEST(MaxSpeedsLine, HoldsWholeMillimetresPerMinute) {
  EXPECT_STREQ(MaxSpeedsLine(20.0f, 20.0f, 20.0f).c_str(), "M203 X30480 Y30480 Z30480\n");
  EXPECT_STREQ(MaxSpeedsLine(1.0f, 0.0f, 0.001f).c_str(), "M203 X1524 Y0 Z2\n");
}

TEST(MaxSpeedsLine, PutsTheSignBeforeTheRoundedMagnitude) {
  EXPECT_STREQ(MaxSpeedsLine(-1.0f, -0.001f, -0.0001f).c_str(), "M203 X-1524 Y-2 Z-0\n");
}

TEST(MaxSpeedsLine, StopsAtTheEndOfTheRange) {
  EXPECT_STREQ(
      MaxSpeedsLine(kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN()).c_str(),
      "M203 X2147483647 Y-2147483647 Z0\n");
}

TEST(StepsPerMmLine, HasNoBlankBetweenLetterAndNumber) {
  EXPECT_STREQ(StepsPerMmLine("X", 4000.0f / 25.4f).c_str(), "M92 X157.48032\n");
  EXPECT_STREQ(StepsPerMmLine("Y", 4000.0f / 25.4f).c_str(), "M92 Y157.48032\n");
  EXPECT_STREQ(StepsPerMmLine("Z", 4000.0f / 25.4f).c_str(), "M92 Z157.48032\n");
}

TEST(StepsPerMmLine, OfAZeroPitchIsZero) {
  EXPECT_STREQ(StepsPerMmLine("X", kInfinity).c_str(), "M92 X0.00000\n");
}

}  // namespace
}  // namespace k7
