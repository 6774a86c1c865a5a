#include "job/travel.h"

#include <gtest/gtest.h>

#include <string>

#include "device/module_state.h"
#include "support/attached_device.h"

namespace k7 {
namespace {

class TravelToTest : public testing::Test {
 protected:
  TravelToTest() {
    controller_.BehaveWell();
    k7test::GiveDefaults(*device_);
    device_->tableHomeX = 400;
    device_->tableHomeY = 800;
    device_->cutterHome = 4000;
    device_->lastZ = 4250;
    device_->lastX = 100;
    device_->lastY = 100;
  }
  ~TravelToTest() override { hasSpindle = 0; }
  std::string Lines() {
    SendLine(*device_, "mark\n");
    EXPECT_TRUE(controller_.WaitForLine("mark\n"));
    const std::string all = controller_.Transcript();
    return all.substr(0, all.find("mark\n"));
  }

  k7test::FakeController controller_;
  k7test::AttachedDevice device_{controller_};
};

// The head goes up to the lift, then to the machine's top, then a job begins and the head travels.
TEST_F(TravelToTest, LiftsRaisesBeginsAJobAndTravels) {
  device_->cutterState = kCutterDown;
  device_->cutterUpSpeed = 2.0f;
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusSent);
  EXPECT_EQ(Lines(),
            "G0 F3048.000\nG0 Z22.225000\n"  // 4000 - 500 steps
            "G0 F1524.000\nG0 Z0.000000\n"
            "M106\nSendBlockMessagesOn\n"
            "G0 X30.480000 Y60.959999\n");  // KEEP: 4000 + 400 + 400, 8000 + 800 + 800
  EXPECT_EQ(device_->lastX, 4800);
  EXPECT_EQ(device_->lastY, 9600);
  EXPECT_EQ(device_->cutterState, kCutterUp);
}

TEST_F(TravelToTest, WithTheCutterUpOnlyRaises) {
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusSent);
  EXPECT_EQ(Lines().substr(0, 26), "G0 F1524.000\nG0 Z0.000000\n");
}

// MoveTo itself adds the home once; the travel adds it a first time, but not for the origin.
TEST_F(TravelToTest, ToTheOriginIgnoresTheTableHome) {
  EXPECT_EQ(TravelTo(*device_, 0, 0), kStatusSent);
  EXPECT_EQ(device_->lastX, 400);
  EXPECT_EQ(device_->lastY, 800);
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
    TravelTo(*device_, static_cast<std::uint32_t>(c.x), static_cast<std::uint32_t>(c.y));
    EXPECT_EQ(device_->lastX, c.lastX) << c.x << ", " << c.y;
    EXPECT_EQ(device_->lastY, c.lastY) << c.x << ", " << c.y;
  }
}

TEST_F(TravelToTest, AppliesTheFactorsBeforeTheHome) {
  device_->tableHomeX = 0;
  device_->tableHomeY = 0;
  device_->xAxisFactor = 2;
  device_->yAxisFactor = 3;
  TravelTo(*device_, 100, 100);
  EXPECT_EQ(device_->lastX, 100 * 2 * 2);  // KEEP: the move applies its factor once more
  EXPECT_EQ(device_->lastY, 100 * 3 * 3);
}

TEST_F(TravelToTest, MarksTheFirstFourTagsAsMoves) {
  device_->ackRing[4] = CommandTag::Lift;
  TravelTo(*device_, 4000, 8000);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(device_->ackRing[i], CommandTag::Move);
  EXPECT_EQ(device_->ackRing[4], CommandTag::Lift);
}

TEST_F(TravelToTest, CountsAndTagsTheLiftOfAHeldPlunge) {
  device_->plungeHold = 1;
  TravelTo(*device_, 4000, 8000);
  EXPECT_EQ(device_->zMoveCount, 1);
  EXPECT_EQ(device_->ackRing[0], CommandTag::Lift);
}

TEST_F(TravelToTest, WhileAPlungeIsHeldOnlyRaisesAndReturnsZero) {
  device_->plungeHold = 1;
  device_->cutterState = kCutterDown;
  device_->cutterUpSpeed = 2.0f;
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusNothing);
  EXPECT_EQ(Lines(), "G0 F3048.000\nG0 Z0.000000\n");
  EXPECT_EQ(device_->cutterState, kCutterUp);
  EXPECT_EQ(device_->plungeHold, 1);
}

TEST_F(TravelToTest, WhileAPlungeIsHeldAndZIsUpAlreadyChangesNothing) {
  device_->plungeHold = 1;
  device_->cutterState = kCutterDown;
  device_->lastZ = 0;
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusNothing);
  EXPECT_EQ(Lines(), "G0 F1524.000\n");
  EXPECT_EQ(device_->cutterState, kCutterDown);
  EXPECT_EQ(device_->zMoveCount, 0);
}

// A lift that changes nothing is no reason to stay: the head is raised and travels all the same.
TEST_F(TravelToTest, WithTheCutterAtTheLiftAlreadyTravelsAllTheSame) {
  device_->cutterState = kCutterDown;
  device_->lastZ = 3500;
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusSent);
  EXPECT_EQ(Lines(),
            "G0 F1524.000\nG0 Z0.000000\nM106\nSendBlockMessagesOn\nG0 X30.480000 Y60.959999\n");
}

TEST_F(TravelToTest, OnlyAHoldOfExactlyOneHolds) {
  device_->plungeHold = 2;
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusSent);
  EXPECT_EQ(device_->lastX, 4800);
}

TEST_F(TravelToTest, WithoutAConnectionSendsNothing) {
  device_->connected = 0;
  EXPECT_EQ(TravelTo(*device_, 4000, 8000), kStatusNothing);
  EXPECT_EQ(Lines(), "");
}

TEST_F(TravelToTest, RunsTheSpindleAtFullSpeedBeforeItLifts) {
  hasSpindle = 1;
  device_->spindlePresent = 1;
  device_->cutterState = kCutterDown;
  TravelTo(*device_, 4000, 8000);
  EXPECT_EQ(Lines().substr(0, 53), "M42\nM44 S252\nG0 F1524.000\nG0 Z22.225000\nG0 Z0.000000\n");
}

TEST_F(TravelToTest, RunsTheSpindleWhileAPlungeIsHeld) {
  hasSpindle = 1;
  device_->spindlePresent = 1;
  device_->plungeHold = 1;
  TravelTo(*device_, 4000, 8000);
  EXPECT_EQ(Lines(), "M42\nM44 S252\nG0 F1524.000\nG0 Z0.000000\n");
}

// The flag of the whole module decides, the spindle's own settings come after it.
TEST_F(TravelToTest, WithoutTheModulesSpindleFlagLeavesTheSpindleAlone) {
  device_->spindlePresent = 1;
  device_->cutterState = kCutterDown;
  TravelTo(*device_, 4000, 8000);
  EXPECT_EQ(Lines().find("M42"), std::string::npos);
}

}  // namespace
}  // namespace k7
