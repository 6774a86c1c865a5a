// The device object: its two words, its life, and what its getters and setters keep.
#include "module/smoothieboard.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>

#include "device/module_state.h"

namespace k7 {
namespace {

// A device with a record of its own and no link; the settings file that its end writes is that of
// sixteen zeros unless a test gives it another identity.
class DeviceTest : public ::testing::Test {
 protected:
  ~DeviceTest() override { hasRoundAttachment = 0; }

  Smoothieboard device_{std::make_unique<DeviceState>()};
  DeviceState& record_ = *device_.Record();
};

using SmoothieboardTest = DeviceTest;

TEST_F(SmoothieboardTest, IsTheTableAndTheRecordAndNothingElse) {
  static_assert(sizeof(Smoothieboard) == 2 * sizeof(void*));
  void* words[2];
  std::memcpy(words, static_cast<void*>(&device_), sizeof words);
  EXPECT_NE(words[0], nullptr);
  EXPECT_EQ(words[1], static_cast<void*>(&record_));
  EXPECT_EQ(static_cast<void*>(static_cast<IEngraver*>(&device_)), static_cast<void*>(&device_));
}

TEST_F(SmoothieboardTest, AnswersItsDefaultsWhenFresh) {
  EXPECT_EQ(device_.GetInterfaceVersion(), 998u);
  EXPECT_EQ(device_.GetScissors(), -10.0f);
  EXPECT_EQ(device_.GetPassCount(), 0u);
  wchar_t name[64];
  EXPECT_EQ(device_.GetFriendlyName(name, 64), 0);
  EXPECT_STREQ(name, L"K7 System Controller");
  EXPECT_TRUE(record_.link.controllerId.Is(L"0000000000000000"));
  EXPECT_EQ(device_.GetRecordReserved(), 0u);
  EXPECT_EQ(device_.GetHostFlag(), 0);
  EXPECT_EQ(device_.IsConnected(), 0);
  EXPECT_EQ(device_.GetLinkHandle(), nullptr);
  EXPECT_EQ(device_.GetLinkType(), kLinkNone);
  EXPECT_EQ(record_.tools.cutterState, 2u);
  EXPECT_EQ(record_.tools.cutterLift, 0.001f);
  EXPECT_EQ(record_.jog.jogDirection, 2u);
  EXPECT_EQ(record_.jog.jogSpeedMode, 1u);
  EXPECT_EQ(record_.spindle.rampDirection, 2u);
  EXPECT_EQ(record_.mechanics.xAxisFactor, 1);
  EXPECT_EQ(record_.mechanics.yAxisFactor, 1);
  for (const CommandTag tag : record_.job.tagRing.Alone().ackRing) EXPECT_EQ(tag, CommandTag::None);
}

TEST_F(SmoothieboardTest, KeepsWhatItsSettersAreGiven) {
  device_.SetHostFlag(200);
  EXPECT_EQ(device_.GetHostFlag(), 200);
  device_.SetColorTableIndex(17);
  EXPECT_EQ(device_.GetColorTableIndex(), 17u);
  device_.SetGridMode(kRunBrailleBeadInsert);
  EXPECT_EQ(device_.GetGridMode(), kRunBrailleBeadInsert);
  device_.SetReaderAlive(1);
  EXPECT_EQ(device_.GetReaderAlive(), 1);
  device_.SetReaderAlive(0);
  EXPECT_EQ(device_.GetReaderAlive(), 0);
}

TEST_F(SmoothieboardTest, ReadsTheRecordThroughItsGetters) {
  record_.host.reservedWord = 0x123456789ABCDEFull;
  record_.mechanics.tableWidth = 25000;
  record_.mechanics.tableHeight = 16000;
  record_.host.scissors = 1.5f;
  record_.host.engraveByColor = 3;
  record_.tools.beadInsertTool = 4;
  record_.tools.beadToolOffsetX = -5;
  record_.tools.beadToolOffsetY = 6;
  record_.tools.diodePointer = 7;
  record_.tools.diodeOffsetX = -8;
  record_.tools.diodeOffsetY = 9;
  record_.passes.passCount = 10;
  record_.passes.currentPass = 11;
  record_.link.connected = 1;
  record_.link.linkType = kLinkTcp;
  record_.host.interfaceVersion = 12;
  EXPECT_EQ(device_.GetRecordReserved(), 0x123456789ABCDEFull);
  EXPECT_EQ(device_.GetTableWidth(), 25000u);
  EXPECT_EQ(device_.GetTableHeight(), 16000u);
  EXPECT_EQ(device_.GetScissors(), 1.5f);
  EXPECT_EQ(device_.GetEngraveByColor(), 3);
  EXPECT_EQ(device_.HasBeadInsertTool(), 4u);
  EXPECT_EQ(device_.GetBeadToolOffsetX(), -5);
  EXPECT_EQ(device_.GetBeadToolOffsetY(), 6);
  EXPECT_EQ(device_.IsDiodePointerFitted(), 7u);
  EXPECT_EQ(device_.GetDiodeOffsetX(), -8);
  EXPECT_EQ(device_.GetDiodeOffsetY(), 9);
  EXPECT_EQ(device_.GetPassCount(), 10u);
  EXPECT_EQ(device_.GetCurrentPass(), 11u);
  EXPECT_EQ(device_.IsConnected(), 1);
  EXPECT_EQ(device_.GetLinkType(), kLinkTcp);
  EXPECT_EQ(device_.GetInterfaceVersion(), 12u);
}

TEST_F(SmoothieboardTest, TellsTheSpindleSpeedOnlyWithASpindle) {
  record_.spindle.spindleValue = 9000;
  EXPECT_EQ(device_.HasSpindle(), 0);
  EXPECT_EQ(device_.GetSpindleValue(), 0u);
  record_.spindle.spindlePresent = 1;
  EXPECT_EQ(device_.HasSpindle(), 1);
  EXPECT_EQ(device_.GetSpindleValue(), 9000u);
  record_.spindle.spindlePresent = 2;  // only the value 1 counts
  EXPECT_EQ(device_.GetSpindleValue(), 0u);
}

TEST_F(SmoothieboardTest, IsAirZInCutterModeFourAlone) {
  for (std::uint32_t mode = 0; mode < 6; ++mode) {
    record_.tools.cutterMode = mode;
    EXPECT_EQ(device_.IsAirZ(), mode == 4 ? 1 : 0);
  }
}

TEST_F(SmoothieboardTest, KeepsTheRoundModeOnlyWithAnAttachment) {
  hasRoundAttachment = 0;
  device_.SetRoundMode(2);
  EXPECT_EQ(record_.mechanics.roundAxisMode, 0u);
  EXPECT_EQ(device_.GetRoundMode(), 0u);

  hasRoundAttachment = 1;
  device_.SetRoundMode(2);
  EXPECT_EQ(record_.mechanics.roundAxisMode, 2u);
  EXPECT_EQ(device_.GetRoundMode(), 2u);

  // KEEP: the question "is it active" does not look at the attachment, "which axis" does.
  hasRoundAttachment = 0;
  EXPECT_EQ(device_.GetRoundMode(), 0u);
  EXPECT_EQ(device_.IsRoundModeActive(), 1);
  record_.mechanics.roundAxisMode = 0;
  EXPECT_EQ(device_.IsRoundModeActive(), 0);
}

TEST_F(SmoothieboardTest, StoresTheWindowAndItsSixMessages) {
  int window = 0;
  device_.SetNotifyWindow(&window, 1, 2, 3, 4, 5, 6);
  EXPECT_EQ(record_.notify.ownerWindow, static_cast<void*>(&window));
  EXPECT_EQ(record_.notify.msgQueued, 1u);
  EXPECT_EQ(record_.notify.msgStarted, 2u);
  EXPECT_EQ(record_.notify.msgFinished, 3u);
  EXPECT_EQ(record_.notify.msgExtra1, 4u);
  EXPECT_EQ(record_.notify.msgExtra2, 5u);
  EXPECT_EQ(record_.notify.msgExtra3, 6u);
}

TEST_F(SmoothieboardTest, StoresTheCallbackAndThreeMessagesAndLeavesTheWindow) {
  int window = 0;
  device_.SetNotifyWindow(&window, 1, 2, 3, 4, 5, 6);
  const NotifyCallback callback = [](std::uint32_t, std::uint64_t) {};
  device_.SetNotifyCallback(callback, 0xFFFFFFFF00000001ull, 11, 12, 13);
  EXPECT_EQ(record_.notify.notifyCallback, callback);
  EXPECT_EQ(record_.notify.notifyContext, 0xFFFFFFFF00000001ull);
  EXPECT_EQ(record_.notify.msgQueued, 11u);
  EXPECT_EQ(record_.notify.msgStarted, 12u);
  EXPECT_EQ(record_.notify.msgFinished, 13u);
  EXPECT_EQ(record_.notify.ownerWindow, static_cast<void*>(&window));
  EXPECT_EQ(record_.notify.msgExtra1, 4u);
}

TEST_F(SmoothieboardTest, StoresTheConnectNotification) {
  int window = 0;
  device_.SetConnectNotify(&window, 77);
  EXPECT_EQ(record_.notify.connectNotifyWindow, static_cast<void*>(&window));
  EXPECT_EQ(record_.notify.connectNotifyMessage, 77u);
}

TEST_F(SmoothieboardTest, CutsTheFriendlyNameToSixtyThreeCharacters) {
  device_.SetFriendlyName(std::wstring(100, L'n').c_str());
  wchar_t name[100] = L"";
  EXPECT_EQ(device_.GetFriendlyName(name, 100), 0);
  EXPECT_EQ(std::wstring{name}, std::wstring(63, L'n'));
  device_.SetFriendlyName(nullptr);  // ignored
  EXPECT_EQ(device_.GetFriendlyName(name, 4), 0);
  EXPECT_STREQ(name, L"nnn");  // cut to the buffer, and still 0
  EXPECT_EQ(device_.GetFriendlyName(nullptr, 4), 0);
  EXPECT_EQ(device_.GetFriendlyName(name, 0), 0);
  EXPECT_STREQ(name, L"nnn");
}

TEST_F(SmoothieboardTest, KeepsATextForTheHost) {
  wchar_t text[100] = L"?";
  EXPECT_EQ(device_.GetHostText(text, 100), 0);
  EXPECT_STREQ(text, L"");
  device_.SetHostText(std::wstring(100, L't').c_str());
  device_.SetHostText(nullptr);  // ignored
  EXPECT_EQ(device_.GetHostText(text, 100), 0);
  EXPECT_EQ(std::wstring{text}, std::wstring(63, L't'));
  EXPECT_EQ(device_.GetHostText(text, 3), 0);
  EXPECT_STREQ(text, L"tt");
}

TEST_F(SmoothieboardTest, ReturnsTheSizeWhenATextCannotBeCopied) {
  wchar_t text[4] = L"abc";
  for (const std::int32_t size : {0, -1, -2147483647 - 1}) {
    EXPECT_EQ(device_.GetHostText(text, size), size);
    EXPECT_EQ(device_.GetPortName(text, size), size);
  }
  EXPECT_EQ(device_.GetHostText(nullptr, 5), 5);
  EXPECT_EQ(device_.GetPortName(nullptr, 5), 5);
  EXPECT_STREQ(text, L"abc");
  EXPECT_EQ(device_.GetPortName(text, 4), 0);
  EXPECT_STREQ(text, L"");
}

}  // namespace
}  // namespace k7
