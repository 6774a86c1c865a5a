// Every operation reaches the function that does its work, with its arguments in their places:
// link, units, strokes, positions, settings, identity.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "module/reach_fixture.h"

namespace k7 {
namespace {

using k7test::HostMessage;
using k7test::kSurface;
using k7test::Reach;
using k7test::SettingsFileOf;

TEST_F(Reach, TheLink) {
  wchar_t port[16];
  EXPECT_EQ(device_.GetPortName(port, 16), 0);
  EXPECT_STREQ(port, L"fake");
  EXPECT_EQ(device_.GetLinkHandle(), controller_.DriverEnd());
  EXPECT_EQ(device_.GetLinkType(), kLinkSerial);
  EXPECT_EQ(device_.GetReaderAlive(), 1);
  device_.SendLine("M5\n");
  EXPECT_TRUE(Sent("M5\n"));
  EXPECT_EQ(device_.CheckAlive(), 1);
  EXPECT_TRUE(Sent("SmoothieIsConnected\n"));
  device_.AttachLink(nullptr, kLinkTcp, L"ignored");
  EXPECT_EQ(device_.GetLinkHandle(), nullptr);
  EXPECT_EQ(device_.GetReaderAlive(), 0);
  EXPECT_EQ(device_.GetLinkType(), kLinkTcp);  // the given type, as every detach sets it
  EXPECT_EQ(device_.GetPortName(port, 16), 0);
  EXPECT_STREQ(port, L"");
}

TEST_F(Reach, TheUnits) {
  record_.mechanics.xAxisFactor = 2;
  record_.mechanics.yAxisFactor = 4;
  record_.mechanics.axis.z.screwPitch = 0.25f;
  EXPECT_EQ(device_.GetXStepsPerUnit(), 2000.0f);
  EXPECT_EQ(device_.GetYStepsPerUnit(), 1000.0f);
  EXPECT_EQ(device_.GetZStepsPerInch(), 8000.0f);
  EXPECT_EQ(device_.GetTableWidthSteps(), 50000u);
  EXPECT_EQ(device_.GetTableHeightSteps(), 16000u);
}

TEST_F(Reach, TheStrokesOfAJob) {
  EXPECT_TRUE(device_.BeginJob());
  EXPECT_TRUE(Sent("SendBlockMessagesOn\n"));
  EXPECT_EQ(device_.MoveTo(4000, 8000), kStatusSent);
  EXPECT_EQ(record_.position.last.x, 4000);
  EXPECT_EQ(record_.position.last.y, 8000);
  EXPECT_EQ(device_.LowerCutter(), kStatusSent);
  EXPECT_EQ(record_.tools.cutterState, kCutterDown);
  EXPECT_EQ(device_.EngraveTo(4100, 8200), kStatusSent);
  EXPECT_EQ(record_.position.last.x, 4100);
  EXPECT_EQ(record_.position.last.y, 8200);
  EXPECT_EQ(device_.MoveTo(0, 4), kStatusSent);
  EXPECT_EQ(record_.tools.cutterState, kCutterUp);
  EXPECT_EQ(device_.LowerCutterContinue(), kStatusSent);
  EXPECT_EQ(record_.tools.cutterState, kCutterDown);
  device_.EndJob();
  EXPECT_TRUE(Sent("SendBlockMessagesOff\n"));
  EXPECT_TRUE(Sent("M107\n"));
}

TEST_F(Reach, ThePositions) {
  record_.position.last.x = 4000;
  record_.position.last.y = 8000;
  std::int32_t x = 0, y = 0, third = 7;
  device_.GetMachinePosition(&x, &y, nullptr);
  EXPECT_EQ(x, 1000);
  EXPECT_EQ(y, 2000);
  x = y = 0;
  device_.GetTableHome(&x, &y, &third);
  EXPECT_EQ(x, 1000);
  EXPECT_EQ(y, 2000);
  EXPECT_EQ(third, 0);
  record_.position.tableHome.x = 100;
  record_.position.tableHome.y = 200;
  x = 1;
  y = 2;
  device_.GetCurrentPosition(&x, &y);
  EXPECT_EQ(x, 101);
  EXPECT_EQ(y, 202);
  record_.position.last.z = 55;
  device_.HomeCutter();
  EXPECT_EQ(window_.Seen().back(), (HostMessage{kSurface, 8000, 55}));
}

TEST_F(Reach, TheSettings) {
  wchar_t path[512] = L"";
  EXPECT_EQ(device_.GetSettingsFilePath(path, 512), 0u);
  EXPECT_STREQ(path, SettingsFileOf(id_).c_str());
  WritePrivateProfileStringW(L"Settings", L"FriendlyName", L"Reached", path);
  device_.LoadSettings();
  EXPECT_STREQ(record_.link.friendlyName, L"Reached");
  device_.SetCameraId(L"camera");
  wchar_t camera[8] = L"";
  EXPECT_EQ(device_.GetCameraId(camera, 8), 6);
  EXPECT_STREQ(camera, L"camera");
  wchar_t library[512] = L"";
  EXPECT_EQ(device_.GetMaterialLibraryFolder(path, 512), 1u);
  EXPECT_EQ(device_.GetMaterialLibraryFolder(library, 512), 0u);  // made by the first
  EXPECT_STREQ(library, path);
  EXPECT_EQ(device_.GetTempHomeLibraryFolder(library, 512), 1u);
  EXPECT_STRNE(library, path);
}

TEST_F(Reach, TheIdentity) {
  device_.ResetControllerId();
  wchar_t id[24] = L"";
  EXPECT_EQ(device_.QueryControllerId(id, 24), 24);
  EXPECT_STREQ(id, L"TESTCONTROLLER01");
  EXPECT_TRUE(Sent("config-get sd controller_id\n"));
}

}  // namespace
}  // namespace k7
