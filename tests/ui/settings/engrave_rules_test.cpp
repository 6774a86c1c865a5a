#include "ui/settings/engrave_rules.h"

#include <gtest/gtest.h>

#include <limits>

namespace k7 {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

int CountEntries(float finest) {
  int count = 0;
  while (HasResolutionEntry(finest, count)) ++count;
  return count;
}

TEST(ResolutionEntries, DivideTheFinestWhileAboveOneHundredNinetyNine) {
  EXPECT_EQ(CountEntries(1000.0f), 5);
  EXPECT_EQ(ResolutionOfEntry(1000.0f, 0), 1000.0f);
  EXPECT_EQ(ResolutionOfEntry(1000.0f, 4), 200.0f);
  EXPECT_EQ(CountEntries(398.0f), 1) << "199 itself is not above 199";
  EXPECT_EQ(CountEntries(400.0f), 2);
  EXPECT_EQ(CountEntries(4000.0f), 20);
}

TEST(ResolutionEntries, AlwaysHoldTheFirst) {
  for (const float finest : {0.0f, -5.0f, 10.0f, kInfinity, -kInfinity, kNan}) {
    EXPECT_EQ(CountEntries(finest), 1) << finest;
  }
}

TEST(ResolutionEntries, EndAfterTenThousand) {
  EXPECT_EQ(CountEntries(1e30f), 10000);
}

TEST(SpindleRpmLimit, IsMotorSpeedTimesGearRatioRoundedHalfUp) {
  EXPECT_EQ(SpindleRpmLimit(4000, 3.25f), 13000);
  EXPECT_EQ(SpindleRpmLimit(3, 0.5f), 2);
  EXPECT_EQ(SpindleRpmLimit(0, 3.25f), 0);
  EXPECT_EQ(SpindleRpmLimit(2000000000, 1e9f), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(SpindleRpmLimit(4000, kNan), 0);
}

TEST(ShownSpindleRpm, StaysBetweenOneAndTheLimit) {
  EXPECT_EQ(ShownSpindleRpm(20000, 13000), 13000);
  EXPECT_EQ(ShownSpindleRpm(0, 13000), 1);
  EXPECT_EQ(ShownSpindleRpm(-4, 13000), 1);
  EXPECT_EQ(ShownSpindleRpm(9000, 13000), 9000);
  EXPECT_EQ(ShownSpindleRpm(9000, 0), 1);
}

}  // namespace
}  // namespace k7
