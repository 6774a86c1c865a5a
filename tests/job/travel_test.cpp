#include "job/travel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/module_state.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class TravelToTest : public testing::Test {
 protected:
  TravelToTest() {
    machine_->position.tableHome.x = 400;
    machine_->position.tableHome.y = 800;
    machine_.StandAt(100, 100, 4250, kCutterUp);
  }
  ~TravelToTest() override { hasSpindle = 0; }

  k7test::TestMachine machine_;
};

// The head goes up to the lift, then to the machine's top, then a job begins and the head travels.
TEST_F(TravelToTest, LiftsRaisesBeginsAJobAndTravels) {
  machine_->tools.cutterState = kCutterDown;
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusSent);
  EXPECT_EQ(machine_.Sent(),
            "G0 F381.000\nG0 Z22.225000\n"  // 4000 - 500 steps
            "G0 F1524.000\nG0 Z0.000000\n"
            "M106\nSendBlockMessagesOn\n"
            "G0 X30.480000 Y60.959999\n");  // KEEP: 4000 + 400 + 400, 8000 + 800 + 800
  EXPECT_EQ(machine_->position.last.x, 4800);
  EXPECT_EQ(machine_->position.last.y, 9600);
  EXPECT_EQ(machine_->tools.cutterState, kCutterUp);
}

TEST_F(TravelToTest, WithTheCutterUpOnlyRaises) {
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusSent);
  EXPECT_THAT(machine_.Sent(), StartsWith("G0 F1524.000\nG0 Z0.000000\nM106\n"));
}

// MoveTo itself adds the home once; the travel adds it a first time, but not for the origin.
TEST_F(TravelToTest, ToTheOriginIgnoresTheTableHome) {
  EXPECT_EQ(TravelTo(*machine_, 0, 0), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, 400);
  EXPECT_EQ(machine_->position.last.y, 800);
}

TEST_F(TravelToTest, ToOneStepAlongEitherAxisAddsBothHomes) {
  constexpr struct {
    std::int32_t x, y;          // asked for
    std::int32_t lastX, lastY;  // arrived at, after MoveTo's own homes of 400 and 800
  } kCases[] = {
      {0, 1, 400 + 400, 1 + 800 + 800},
      {1, 0, 1 + 400 + 400, 800 + 800},
      {-1, 1, -1 + 400 + 400, 1 + 800 + 800},
      {-1, 0, -1 + 400, 800},  // left of the home
      {0, -1, 400, -1 + 800},
  };
  for (const auto& c : kCases) {
    TravelTo(*machine_, static_cast<std::uint32_t>(c.x), static_cast<std::uint32_t>(c.y));
    EXPECT_EQ(machine_->position.last.x, c.lastX) << c.x << ", " << c.y;
    EXPECT_EQ(machine_->position.last.y, c.lastY) << c.x << ", " << c.y;
  }
}

TEST_F(TravelToTest, AppliesTheFactorsBeforeTheHome) {
  machine_->position.tableHome.x = 0;
  machine_->position.tableHome.y = 0;
  machine_->mechanics.xAxisFactor = 2;
  machine_->mechanics.yAxisFactor = 3;
  TravelTo(*machine_, 100, 100);
  EXPECT_EQ(machine_->position.last.x, 100 * 2 * 2);  // KEEP: the move applies its factor once more
  EXPECT_EQ(machine_->position.last.y, 100 * 3 * 3);
}

TEST_F(TravelToTest, MarksTheFirstFourTagsAsMoves) {
  machine_->job.tagRing.Alone().ackRing[4] = CommandTag::Lift;
  TravelTo(*machine_, 4000, 8000);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(machine_->job.tagRing.Alone().ackRing[i], CommandTag::Move);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRing[4], CommandTag::Lift);
}

// The lift before the job is a lift where the ring stands; only the first four are marked.
TEST_F(TravelToTest, TagsItsOwnLiftWhereTheRingStands) {
  machine_->job.tagRing.Alone().ackRingIndex = 10;
  machine_->tools.cutterState = kCutterDown;
  TravelTo(*machine_, 4000, 8000);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRing[10], CommandTag::Lift);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRing[11],
            CommandTag::None);  // raising Z to the top has no tag
}

TEST_F(TravelToTest, CountsAndTagsTheLiftOfAHeldPlunge) {
  machine_->job.plungeHold = 1;
  TravelTo(*machine_, 4000, 8000);
  EXPECT_EQ(machine_->job.zMoveCount, 1);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRing[0], CommandTag::Lift);
}

TEST_F(TravelToTest, WhileAPlungeIsHeldOnlyRaisesAndReturnsZero) {
  machine_->job.plungeHold = 1;
  machine_->tools.cutterState = kCutterDown;
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusNothing);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z0.000000\n");
  EXPECT_EQ(machine_->tools.cutterState, kCutterUp);
  EXPECT_EQ(machine_->job.plungeHold, 1);
}

TEST_F(TravelToTest, WhileAPlungeIsHeldAndZIsUpAlreadyChangesNothing) {
  machine_->job.plungeHold = 1;
  machine_->tools.cutterState = kCutterDown;
  machine_->position.last.z = 0;
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusNothing);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\n");
  EXPECT_EQ(machine_->tools.cutterState, kCutterDown);
  EXPECT_EQ(machine_->job.zMoveCount, 0);
}

// A lift that changes nothing is no reason to stay: the head is raised and travels all the same.
TEST_F(TravelToTest, WithTheCutterAtTheLiftAlreadyTravelsAllTheSame) {
  machine_->tools.cutterState = kCutterDown;
  machine_->position.last.z = 3500;
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusSent);
  EXPECT_EQ(machine_.Sent(),
            "G0 F381.000\nG0 F1524.000\nG0 Z0.000000\n"
            "M106\nSendBlockMessagesOn\nG0 X30.480000 Y60.959999\n");
}

TEST_F(TravelToTest, OnlyAHoldOfExactlyOneHolds) {
  machine_->job.plungeHold = 2;
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusSent);
  EXPECT_EQ(machine_->position.last.x, 4800);
}

TEST_F(TravelToTest, WithoutAConnectionSendsNothing) {
  machine_->link.connected = 0;
  EXPECT_EQ(TravelTo(*machine_, 4000, 8000), kStatusNothing);
  EXPECT_EQ(machine_.Sent(), "");
}

TEST_F(TravelToTest, RunsTheSpindleAtFullSpeedBeforeItLifts) {
  hasSpindle = 1;
  machine_->spindle.spindlePresent = 1;
  machine_->tools.cutterState = kCutterDown;
  TravelTo(*machine_, 4000, 8000);
  EXPECT_THAT(machine_.Sent(), StartsWith("M42\nM44 S252\nG0 F381.000\nG0 Z22.225000\n"));
}

TEST_F(TravelToTest, RunsTheSpindleAtFullSpeedBeforeItRaises) {
  hasSpindle = 1;
  machine_->spindle.spindlePresent = 1;
  TravelTo(*machine_, 4000, 8000);
  EXPECT_THAT(machine_.Sent(), StartsWith("M42\nM44 S252\nG0 F1524.000\nG0 Z0.000000\nM106\n"));
}

TEST_F(TravelToTest, RunsTheSpindleWhileAPlungeIsHeld) {
  hasSpindle = 1;
  machine_->spindle.spindlePresent = 1;
  machine_->job.plungeHold = 1;
  TravelTo(*machine_, 4000, 8000);
  EXPECT_EQ(machine_.Sent(), "M42\nM44 S252\nG0 F381.000\nG0 Z0.000000\n");
}

// The flag of the whole module decides, the spindle's own settings come after it.
TEST_F(TravelToTest, WithoutTheModulesSpindleFlagLeavesTheSpindleAlone) {
  machine_->spindle.spindlePresent = 1;
  machine_->tools.cutterState = kCutterDown;
  TravelTo(*machine_, 4000, 8000);
  EXPECT_THAT(machine_.Sent(), Not(HasSubstr("M42")));
}

}  // namespace
}  // namespace k7
