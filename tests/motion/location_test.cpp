#include "motion/location.h"

#include <gtest/gtest.h>

namespace k7 {
namespace {

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

class PositionLineTest : public testing::Test {
 protected:
  PositionLineTest() {
    record_.stepsPerMmX = 100.0f;
    record_.stepsPerMmY = 200.0f;
    record_.stepsPerMmZ = 400.0f;
  }
  DeviceState record_;
  const std::int32_t x_ = 250, y_ = -250, z_ = 0;
};

TEST_F(PositionLineTest, NamesTheGivenAxesInTheOrderXYZ) {
  EXPECT_STREQ(PositionLine(record_, &x_, &y_, &z_).c_str(),
               "G92 X2.500000 Y-1.250000 Z0.000000\n");
  EXPECT_STREQ(PositionLine(record_, nullptr, &y_, nullptr).c_str(), "G92 Y-1.250000\n");
  EXPECT_STREQ(PositionLine(record_, nullptr, nullptr, &z_).c_str(), "G92 Z0.000000\n");
}

TEST_F(PositionLineTest, IsEmptyWithoutAxes) {
  EXPECT_TRUE(PositionLine(record_, nullptr, nullptr, nullptr).empty());
}

TEST_F(PositionLineTest, LeavesOutAnAxisWhosePositionCannotBeExpressed) {
  const std::int32_t far = INT32_MAX;
  record_.stepsPerMmX = 1e-12f;  // finite, but more than the number text can hold
  EXPECT_TRUE(PositionLine(record_, &far, nullptr, nullptr).empty());
  record_.stepsPerMmX = record_.stepsPerMmZ = 0.0f;
  EXPECT_STREQ(PositionLine(record_, &x_, &y_, &z_).c_str(), "G92 Y-1.250000\n");
  EXPECT_TRUE(PositionLine(record_, &x_, nullptr, &z_).empty());
}

TEST_F(PositionLineTest, HoldsTheLargestPositions) {
  const std::int32_t least = INT32_MIN;
  record_.stepsPerMmX = record_.stepsPerMmY = record_.stepsPerMmZ = 1.0f;
  EXPECT_STREQ(PositionLine(record_, &least, &least, &least).c_str(),
               "G92 X-2147483648.000000 Y-2147483648.000000 Z-2147483648.000000\n");
}

}  // namespace
}  // namespace k7
