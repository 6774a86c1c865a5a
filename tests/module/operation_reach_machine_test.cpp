// Every operation reaches the function that does its work, with its arguments in their places:
// travelling, tools, passes, homing, spindle, jog.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "module/reach_fixture.h"

namespace k7 {
namespace {

using ReachMachine = k7test::Reach;
using k7test::HostMessage;
using k7test::SettingsFileOf;

TEST_F(ReachMachine, TravellingAndGoingTo) {
  EXPECT_EQ(device_.TravelTo(400, 800), kStatusSent);
  EXPECT_EQ(record_.position.last.x, 400);
  EXPECT_EQ(record_.position.last.y, 800);
  device_.EndJob();
  device_.GoToAsJob(100, 200, 0);
  EXPECT_EQ(record_.position.last.x, 100);
  EXPECT_EQ(record_.position.last.y, 200);
  device_.SyncCurrentLocation(300, 500, 1);
  EXPECT_EQ(record_.position.last.x, 300);
  EXPECT_EQ(record_.position.last.y, 500);
  const std::wstring file = SettingsFileOf(id_);
  EXPECT_EQ(GetPrivateProfileIntW(L"Current Location", L"X Axis", 0, file.c_str()), 300u);
  EXPECT_EQ(GetPrivateProfileIntW(L"Current Location", L"Y Axis", 0, file.c_str()), 500u);
}

TEST_F(ReachMachine, TheToolsBesideTheCutter) {
  record_.tools.beadInsertTool = record_.tools.diodePointer = 1;
  record_.tools.beadToolOffsetX = record_.tools.diodeOffsetY = 250;
  ASSERT_TRUE(device_.BeginJob());
  EXPECT_EQ(device_.MoveBeadToolTo(8000, 6000), kStatusSent);
  EXPECT_NE(record_.position.last.x, 8000);  // shifted by the offset of X alone
  EXPECT_EQ(record_.position.last.y, 6000);
  EXPECT_EQ(device_.MoveDiodeTo(9000, 7000), kStatusSent);
  EXPECT_EQ(record_.position.last.x, 9000);
  EXPECT_NE(record_.position.last.y, 7000);
  device_.EndJob();
}

TEST_F(ReachMachine, ThePasses) {
  ASSERT_TRUE(device_.BeginJob());
  wchar_t status[32] = L"";
  EXPECT_EQ(device_.StartPass(1, 40, 80, status, 32), 0u);
  EXPECT_EQ(device_.GetCurrentPass(), 1u);
  EXPECT_EQ(std::wstring{status}.substr(0, 6), L"Pass 1");
  device_.EndJob();
}

TEST_F(ReachMachine, TheSwitchesAndHoming) {
  record_.mechanics.axis.x.limitSwitch = record_.mechanics.axis.y.limitSwitch =
      record_.mechanics.axis.z.limitSwitch = record_.mechanics.proxSwitch = 1;
  controller_.Answer("M119\n", "min_x:1 min_y:0 min_z:0 pins: Probe: 1\r\n");
  controller_.Answer("G28 X0\n", "X_Limit 0\r\n");
  controller_.Answer("G28 Y0\n", "Y_Limit 0\r\n");
  controller_.Answer("G28 Z0\n", "Z_Limit 0\r\n");
  std::uint8_t x = 9, y = 9, z = 9, prox = 9;
  device_.ReadSwitches(&x, &y, &z, &prox);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(z, 0);
  EXPECT_EQ(prox, 1);
  EXPECT_EQ(device_.HomeTable(), 0u);
  EXPECT_TRUE(Sent("SetTableHomed\n"));
}

TEST_F(ReachMachine, TheCutterHomeTheMotorsAndTheHold) {
  record_.position.last.z = 5000;
  EXPECT_TRUE(device_.FindCutterHome());
  EXPECT_EQ(record_.position.cutterHome, 5000);
  device_.EnableMotors(1);
  EXPECT_TRUE(Sent("M17\n"));
  device_.EnableMotors(0);
  EXPECT_TRUE(Sent("M18\n"));
  controller_.Say("QX\r\nBX\r\nEX\r\n");  // the lift, or the hold would wait for it
  device_.SetPlungeHold(1);
  EXPECT_EQ(record_.job.plungeHold, 1);
}

TEST_F(ReachMachine, TheSpindle) {
  record_.spindle.spindlePresent = 1;
  device_.SetSpindle(kSpindleFull);
  EXPECT_TRUE(Sent("M42\n"));
  EXPECT_EQ(device_.GetSpindleValue(), 13000u);
  EXPECT_FALSE(device_.StartSpindleRamp(0, window_.Handle(), WM_APP + 20, 0));  // at its end
  EXPECT_TRUE(device_.StartSpindleRamp(1, window_.Handle(), WM_APP + 20, 0));
  ASSERT_TRUE(window_.WaitFor(WM_APP + 20));
  EXPECT_EQ(window_.Seen().back(), (HostMessage{WM_APP + 20, device_.GetSpindleValue(), 0}));
}

TEST_F(ReachMachine, TheJog) {
  device_.StartJog(kJogXPlus, kJogSlow, 0, WM_APP + 10);
  ASSERT_TRUE(window_.WaitFor(WM_APP + 10));
  EXPECT_EQ(window_.Seen().back(), (HostMessage{WM_APP + 10, 0, 0}));
  EXPECT_GT(record_.position.last.x, 0);
  EXPECT_EQ(record_.position.last.y, 0);
}

}  // namespace
}  // namespace k7
