// Connecting and releasing over a loopback socket: the device as the host gets it.
#include "module/connection.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>

#include "base/bounded_copy.h"
#include "job/jog.h"
#include "support/controller_id.h"
#include "support/fake_controller.h"
#include "support/stand_in_jog.h"
#include "support/wait_until.h"

namespace k7 {
namespace {

using k7test::FakeController;
using k7test::FreshControllerId;
using k7test::SettingsFileOf;
using k7test::WaitUntil;

constexpr DWORD kSlackMs = 100;  // a line may arrive late

class Connection : public ::testing::Test {
 protected:
  Connection() {
    CopyText(entry_.id, id_.c_str());
    CopyText(entry_.address, L"127.0.0.1");
    entry_.linkType = kLinkTcp;
    controller_.BehaveWell(std::string{id_.begin(), id_.end()});
  }
  Smoothieboard* Connect() { return ConnectTo(entry_, controller_.Service().c_str()); }

  const std::wstring id_ = FreshControllerId();
  FakeController controller_{k7test::LinkEnds::Listens{}};
  ControllerEntry entry_;
};

TEST_F(Connection, SendsTheStartUpLinesInOrder) {
  Smoothieboard* const device = Connect();
  ASSERT_NE(device, nullptr);
  ASSERT_TRUE(controller_.WaitForLine("TableIsHomed\n"));
  EXPECT_EQ(controller_.Transcript(),
            "SmoothieIsConnected\n"
            "config-get sd controller_id\n"
            "M92 X157.48032\n"  // the settings' lines, before the motors go on
            "M92 Y157.48032\n"
            "M92 Z157.48032\n"
            "M800 X1 Y2\n"
            "G92 X0.000000 Y0.000000\n"
            "M17\n"
            "G21\n"
            "G90\n"
            "M400\n"
            "M203 X30480 Y30480 Z30480\n"  // 20 inches per second
            "TableIsHomed\n");
  ReleaseController(device);
}

TEST_F(Connection, WaitsHalfASecondForTheAnswerAndAsLongForTheHome) {
  Smoothieboard* const device = Connect();
  const DWORD end = GetTickCount();
  ASSERT_NE(device, nullptr);
  const DWORD answerMs = controller_.ReceivedAtMs("config-get sd controller_id\n") -
                         controller_.ReceivedAtMs("SmoothieIsConnected\n");
  EXPECT_GE(answerMs, 500u - kSlackMs);
  EXPECT_LT(answerMs, 500u + 2000u);
  const DWORD homeMs = end - controller_.ReceivedAtMs("TableIsHomed\n");
  EXPECT_GE(homeMs, 500u - kSlackMs);
  EXPECT_LT(homeMs, 500u + 2000u);
  ReleaseController(device);
}

TEST_F(Connection, GivesADeviceThatIsReadyForWork) {
  Smoothieboard* const device = Connect();
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->IsConnected(), 1);
  EXPECT_EQ(device->GetLinkType(), kLinkTcp);
  EXPECT_NE(device->GetLinkHandle(), nullptr);
  wchar_t text[64] = L"";
  EXPECT_EQ(device->GetPortName(text, 64), 0);
  EXPECT_STREQ(text, L"127.0.0.1");
  EXPECT_EQ(device->QueryControllerId(text, 64), 24);
  EXPECT_EQ(text, id_);
  EXPECT_EQ(device->GetPassCount(), 1u);                // the settings are loaded
  EXPECT_EQ(device->Record()->position.tableHomed, 1);  // its answer came within the call
  EXPECT_EQ(device->GetReaderAlive(), 1);
  ReleaseController(device);
}

TEST_F(Connection, ReleaseSwitchesTheMotorsOffAndClosesTheLinkAndKeepsThePosition) {
  Smoothieboard* const device = Connect();
  ASSERT_NE(device, nullptr);
  device->Record()->position.last.x = 321;
  device->Record()->position.last.y = 654;
  controller_.Clear();
  ReleaseController(device);
  ASSERT_TRUE(WaitUntil([&] { return controller_.IsClosed(); }));
  EXPECT_EQ(controller_.Transcript(), "M18\n");
  const std::wstring file = SettingsFileOf(id_);
  EXPECT_EQ(GetPrivateProfileIntW(L"Current Location", L"X Axis", 0, file.c_str()), 321u);
  EXPECT_EQ(GetPrivateProfileIntW(L"Current Location", L"Y Axis", 0, file.c_str()), 654u);
}

TEST_F(Connection, ReleaseAsksAJogToStopAndWaitsForIt) {
  Smoothieboard* const device = Connect();
  ASSERT_NE(device, nullptr);
  ASSERT_TRUE(k7test::StartStandInJog(*device->Record()));
  ReleaseController(device);
  EXPECT_EQ(GetPrivateProfileIntW(L"Current Location", L"X Axis", 0, SettingsFileOf(id_).c_str()),
            static_cast<UINT>(k7test::kLastXOfStandInJog));
}

TEST_F(Connection, IsNullAndClosedWhenTheControllerDoesNotAnswer) {
  controller_.Answer("SmoothieIsConnected\n", "");
  EXPECT_EQ(Connect(), nullptr);
  ASSERT_TRUE(WaitUntil([&] { return controller_.IsClosed(); }));
  EXPECT_EQ(controller_.Transcript(), "SmoothieIsConnected\n");
}

TEST_F(Connection, GoesOnWithAControllerThatHidesItsIdentity) {
  controller_.Answer("config-get sd controller_id\n", "");
  Smoothieboard* const device = Connect();
  ASSERT_NE(device, nullptr);
  EXPECT_TRUE(controller_.WaitForLine("M17\n"));
  EXPECT_EQ(device->GetPassCount(), 0u);  // no settings without an identity
  ReleaseController(device);
  DeleteFileW(SettingsFileOf(L"Monkey Magic").c_str());
}

TEST_F(Connection, IsNullWhenNobodyListens) {
  const std::wstring service = controller_.Service();
  controller_.HangUp();
  EXPECT_EQ(ConnectTo(entry_, service.c_str()), nullptr);
}

TEST_F(Connection, IsNullForAnAddressThatCannotBeResolved) {
  CopyText(entry_.address, L"256.1.1.1.1");
  EXPECT_EQ(Connect(), nullptr);
}

TEST_F(Connection, IsNullForAnUnknownKindOfLink) {
  for (const std::uint32_t linkType : {0u, 3u, 0xFFFFFFFFu}) {
    entry_.linkType = linkType;
    EXPECT_EQ(Connect(), nullptr);
  }
  EXPECT_FALSE(controller_.IsConnected());
}

TEST_F(Connection, IsNullForASerialPortThatDoesNotOpen) {
  entry_.linkType = kLinkSerial;
  CopyText(entry_.address, L"\\\\.\\COM999");
  EXPECT_EQ(Connect(), nullptr);
}

// The network port of a controller that entries are connected on.
TEST(ConnectionService, IsTwentyThree) {
  EXPECT_STREQ(kControllerService, L"23");
}

}  // namespace
}  // namespace k7
