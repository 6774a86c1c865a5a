#include "job/tool_offsets.h"

#include <gtest/gtest.h>

#include "support/test_machine.h"

namespace k7 {
namespace {

class MoveToolTest : public testing::Test {
 protected:
  MoveToolTest() { machine_.OpenJob(); }

  k7test::TestMachine machine_;
};

TEST_F(MoveToolTest, TheBeadToolArrivesWhereTheCutterWouldHave) {
  machine_->tools.beadToolOffsetX = 1250;
  machine_->tools.beadToolOffsetY = 500;
  EXPECT_EQ(MoveBeadToolTo(*machine_, 9000, 6000), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, 4000);  // 5000 and 2000 steps less
  EXPECT_EQ(machine_->position.last.y, 4000);
  EXPECT_EQ(machine_.Sent(), "G0 F1524.000\nG0 X25.400000 Y25.400000\n");
}

// KEEP: minus 4000 steps become minus 3999.
TEST_F(MoveToolTest, ANegativeOffsetIsRoundedTowardZero) {
  machine_->tools.beadToolOffsetX = -1000;
  machine_->tools.beadToolOffsetY = -1;
  EXPECT_EQ(MoveBeadToolTo(*machine_, 4000, 4000), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, 7999);
  EXPECT_EQ(machine_->position.last.y, 4003);
}

TEST_F(MoveToolTest, TheDiodeUsesItsOwnOffset) {
  machine_->tools.beadToolOffsetX = 9999;
  machine_->tools.diodeOffsetX = -1000;
  machine_->tools.diodeOffsetY = 250;
  EXPECT_EQ(MoveDiodeTo(*machine_, 4000, 5000), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, 7999);
  EXPECT_EQ(machine_->position.last.y, 4000);
}

TEST_F(MoveToolTest, AnOffsetOfHalfAStepIsRoundedUp) {
  machine_->mechanics.axis.x.motorSteps = machine_->mechanics.axis.y.motorSteps = 50;
  machine_->mechanics.axis.x.microSteps = machine_->mechanics.axis.y.microSteps =
      5;  // 500 steps per inch: 1.5 and -1.5 steps
  machine_->tools.beadToolOffsetX = 3;
  machine_->tools.beadToolOffsetY = -3;
  EXPECT_EQ(MoveBeadToolTo(*machine_, 100, 100), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, 98);
  EXPECT_EQ(machine_->position.last.y, 101);
}

// Host steps are what the host draws in: the factor divides them.
TEST_F(MoveToolTest, TheOffsetIsInHostSteps) {
  machine_->mechanics.xAxisFactor = 2;
  machine_->tools.beadToolOffsetX = 1000;
  EXPECT_EQ(MoveBeadToolTo(*machine_, 4000, 0), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, (4000 - 2000) * 2);
}

TEST_F(MoveToolTest, OutsideAJobNothingMoves) {
  machine_->job.jobOpen.Alone() = 0;
  EXPECT_EQ(MoveBeadToolTo(*machine_, 4000, 0), kStatusNothing);
  EXPECT_EQ(MoveDiodeTo(*machine_, 4000, 0), kStatusNothing);
  EXPECT_EQ(machine_.Sent(), "");
}

}  // namespace
}  // namespace k7
