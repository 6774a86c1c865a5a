#include "motion/spindle_level.h"

#include <gtest/gtest.h>

#include "link/commands.h"

namespace k7 {
namespace {

TEST(SpindleLevel, IsNeverAbove252) {
  constexpr struct {
    std::int32_t rpm, maxRpm, want;
  } kCases[] = {
      {13000, 13000, 252},  // KEEP: full speed is 252, not 255
      {6500, 13000, 126},  {1, 13000, 0},  {4000, 13000, 78},   {1, 1, 252},
      {14000, 13000, 252},  // above the maximum
      {1, 0, 252},          // no maximum
      {0, 0, 0},           {-5, 13000, 0}, {INT32_MAX, 1, 252}, {INT32_MIN, 1, 0},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(SpindleLevel(c.rpm, c.maxRpm), c.want) << c.rpm << " of " << c.maxRpm;
  }
}

TEST(RampLevel, SpreadsTheRangeOver252Levels) {
  EXPECT_EQ(RampLevel(13000, 13000), 252);
  EXPECT_EQ(RampLevel(6500, 13000), 126);
  EXPECT_EQ(RampLevel(1, 13000), 0);
  EXPECT_EQ(RampLevel(26, 13000), 1);
  EXPECT_EQ(RampLevel(25, 13000), 0);
  EXPECT_EQ(RampLevel(20000, 13000), 252);
  EXPECT_EQ(RampLevel(500, 0), 0);
}

TEST(SpindleLevelLine, HoldsTheWholeNumber) {
  EXPECT_STREQ(SpindleLevelLine(252).c_str(), "M44 S252\n");
  EXPECT_STREQ(SpindleLevelLine(0).c_str(), "M44 S0\n");
}

TEST(RampSpeed, CoversTheRangeInTheRampTime) {
  const RampPlan up{.startRpm = 1000, .maxRpm = 10000, .fullRangeMs = 10000.0f, .down = false};
  EXPECT_EQ(RampSpeed(up, 0), 1000);
  EXPECT_EQ(RampSpeed(up, 1), 1001);
  EXPECT_EQ(RampSpeed(up, 5000), 6000);
  EXPECT_EQ(RampSpeed(up, 9000), 10000);
  EXPECT_EQ(RampSpeed(up, 4000000000u), 10000);
  const RampPlan down{.startRpm = 1000, .maxRpm = 10000, .fullRangeMs = 10000.0f, .down = true};
  EXPECT_EQ(RampSpeed(down, 0), 1000);
  EXPECT_EQ(RampSpeed(down, 400), 600);
  EXPECT_EQ(RampSpeed(down, 999), 1);
  EXPECT_EQ(RampSpeed(down, 1000), 1);  // never off: that is another command
  EXPECT_EQ(RampSpeed(down, 4000000000u), 1);
}

TEST(RampSpeed, IsAtItsEndAtOnceWithoutATimeOrARange) {
  for (const float ms : {0.0f, -1.0f, __builtin_nanf("")}) {
    EXPECT_EQ(RampSpeed({.startRpm = 5, .maxRpm = 100, .fullRangeMs = ms, .down = false}, 0), 100);
    EXPECT_EQ(RampSpeed({.startRpm = 5, .maxRpm = 100, .fullRangeMs = ms, .down = true}, 0), 1);
  }
  EXPECT_EQ(RampSpeed({.startRpm = 5, .maxRpm = 0, .fullRangeMs = 1.0f, .down = true}, 7), 1);
}

TEST(RampEndsAt, TheFullLevelOrNone) {
  const RampPlan up{.down = false};
  const RampPlan down{.down = true};
  EXPECT_TRUE(RampEndsAt(up, 252));
  EXPECT_FALSE(RampEndsAt(up, 251));
  EXPECT_FALSE(RampEndsAt(up, 0));
  EXPECT_TRUE(RampEndsAt(down, 0));
  EXPECT_FALSE(RampEndsAt(down, 252));
}

}  // namespace
}  // namespace k7
