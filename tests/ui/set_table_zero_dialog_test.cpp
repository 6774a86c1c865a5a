#include "ui/set_table_zero_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/sub_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using Entries = std::vector<std::wstring>;

const Entries kTwo{L"Max Table Depth", L"Current Z Location"};
const Entries kThree{L"Max Table Depth", L"Current Z Location", L"Do Z Probe"};

class SetTableZeroDialog : public SubDialogTest {
 protected:
  static void FitSwitches() {
    dialogState.mode = 1;
    dialogState.xLimitSwitch = dialogState.yLimitSwitch = 1;
    dialogState.zLimitSwitch = dialogState.zProxSwitch = 1;
  }
  std::wstring Written() { return Stored(L"Axis Z", L"Table Zero Mode"); }
};

TEST_F(SetTableZeroDialog, ShowsTheBufferAndTheStoredMode) {
  WriteFloat(L"Axis Z", L"Table Buffer", 0.125f);
  WriteInt(L"Axis Z", L"Zero Table Mode", 1);
  OpenOn(&ShowSetTableZeroDialog);
  EXPECT_EQ(Text(IDC_TZ_BUFFER), L"0.125");
  EXPECT_EQ(EntriesOf(dialog_, IDC_TZ_MODE), kTwo);
  EXPECT_EQ(SelectionOf(dialog_, IDC_TZ_MODE), 1);
  EXPECT_FALSE(Shown(IDC_TZ_DO_PROBE));
}

TEST_F(SetTableZeroDialog, WithoutSwitchesAStoredProbeSelectsTheFirstMode) {
  WriteInt(L"Axis Z", L"Zero Table Mode", 2);
  dialogState.mode = 1;
  OpenOn(&ShowSetTableZeroDialog);
  EXPECT_EQ(EntriesOf(dialog_, IDC_TZ_MODE), kTwo);
  EXPECT_EQ(SelectionOf(dialog_, IDC_TZ_MODE), 0);
}

TEST_F(SetTableZeroDialog, OffersTheProbeBeforeAJobOnAnIdleMachineWithAllSwitches) {
  WriteInt(L"Axis Z", L"Zero Table Mode", 2);
  FitSwitches();
  OpenOn(&ShowSetTableZeroDialog);
  EXPECT_EQ(EntriesOf(dialog_, IDC_TZ_MODE), kThree);
  EXPECT_EQ(SelectionOf(dialog_, IDC_TZ_MODE), 2);
}

TEST_F(SetTableZeroDialog, EachMissingConditionTakesTheProbeAway) {
  const auto entriesWithout = [&](auto takeAway) {
    dialogState = {};
    FitSwitches();
    takeAway();
    OpenOn(&ShowSetTableZeroDialog);
    const Entries entries = EntriesOf(dialog_, IDC_TZ_MODE);
    CloseBy(IDCANCEL);
    return entries;
  };
  EXPECT_EQ(entriesWithout([] { dialogState.mode = 0; }), kTwo);
  EXPECT_EQ(entriesWithout([] { dialogState.busy = 1; }), kTwo);
  EXPECT_EQ(entriesWithout([] { dialogState.xLimitSwitch = 0; }), kTwo);
  EXPECT_EQ(entriesWithout([] { dialogState.yLimitSwitch = 0; }), kTwo);
  EXPECT_EQ(entriesWithout([] { dialogState.zLimitSwitch = 0; }), kTwo);
  EXPECT_EQ(entriesWithout([] { dialogState.zProxSwitch = 0; }), kTwo);
  EXPECT_EQ(entriesWithout([] {}), kThree);
}

// KEEP: the key that is written is not the one that is read.
TEST_F(SetTableZeroDialog, WritesTableZeroModeAndLeavesZeroTableMode) {
  WriteInt(L"Axis Z", L"Zero Table Mode", 0);
  OpenOn(&ShowSetTableZeroDialog);
  Pick(dialog_, IDC_TZ_MODE, 1);
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Written(), L"1");
  EXPECT_EQ(Stored(L"Axis Z", L"Zero Table Mode"), L"0");
  OpenOn(&ShowSetTableZeroDialog);
  EXPECT_EQ(SelectionOf(dialog_, IDC_TZ_MODE), 0);
}

TEST_F(SetTableZeroDialog, HandsBufferAndModeToTheMachine) {
  dialogState.engraveBufferModified = 1;
  OpenOn(&ShowSetTableZeroDialog);
  Type(IDC_TZ_BUFFER, L"0.25");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Table Buffer"), 0.25f);
  EXPECT_EQ(Written(), L"0");
  EXPECT_EQ(Record().position.tableSurface, 8000 - 1000);
  EXPECT_EQ(dialogState.engraveBufferModified, 0);
}

TEST_F(SetTableZeroDialog, TheSecondModeTakesThePresentZ) {
  OpenOn(&ShowSetTableZeroDialog);
  Record().position.last.z = 2500;
  Type(IDC_TZ_BUFFER, L"0.5");
  Pick(dialog_, IDC_TZ_MODE, 1);
  CloseBy(IDOK);
  EXPECT_EQ(Record().position.tableSurface, 2500 - 2000);
  EXPECT_EQ(Record().position.last.z, 0);
}

TEST_F(SetTableZeroDialog, TheThirdModeProbesForTheSurface) {
  WriteFloat(L"Prox", L"Semi Auto Offset", 0.25f);
  controller_.OnPrefix(
      "G30 ", [](FakeController& fake, const std::string&) { fake.Say("Z_Probe 4000\r\n"); });
  FitSwitches();
  OpenOn(&ShowSetTableZeroDialog);
  Record().position.last.z = 2000;  // the probe goes on from here
  Type(IDC_TZ_BUFFER, L"0.5");
  Pick(dialog_, IDC_TZ_MODE, 2);
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_THAT(Sent(), testing::StartsWith("G30 F25.400\nG92 Z"));
  EXPECT_EQ(Written(), L"2");
  EXPECT_EQ(Record().position.cutterHome, 5000) << "the probe's offset is taken off";
  EXPECT_EQ(Record().position.tableSurface, 6000 - 2000);
}

TEST_F(SetTableZeroDialog, AStoredModeThatIsNotOfferedSelectsNothing) {
  WriteInt(L"Axis Z", L"Zero Table Mode", 3);
  OpenOn(&ShowSetTableZeroDialog);
  EXPECT_EQ(SelectionOf(dialog_, IDC_TZ_MODE), -1);
}

TEST_F(SetTableZeroDialog, TextThatIsNoNumberIsNoBuffer) {
  OpenOn(&ShowSetTableZeroDialog);
  Type(IDC_TZ_BUFFER, L"thin");
  CloseBy(IDOK);
  EXPECT_EQ(Stored(L"Axis Z", L"Table Buffer"), L"0");
  EXPECT_EQ(Record().position.tableSurface, 8000);
}

TEST_F(SetTableZeroDialog, WithoutASelectionTheModeIsMinusOne) {
  OpenOn(&ShowSetTableZeroDialog);
  const std::int32_t before = Record().position.tableSurface;
  SendDlgItemMessageW(dialog_, IDC_TZ_MODE, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
  CloseBy(IDOK);
  EXPECT_EQ(Written(), L"-1");
  EXPECT_EQ(Record().position.tableSurface, before);
}

TEST_F(SetTableZeroDialog, CancelWritesNothing) {
  dialogState.engraveBufferModified = 1;
  OpenOn(&ShowSetTableZeroDialog);
  Type(IDC_TZ_BUFFER, L"0.25");
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(Written(), L"(none)");
  EXPECT_EQ(Stored(L"Axis Z", L"Table Buffer"), L"(none)");
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(dialogState.engraveBufferModified, 1);
}

TEST_F(SetTableZeroDialog, WithoutADeviceIsEmptyAndOnlyCloses) {
  OpenWith(&ShowSetTableZeroDialog, nullptr);
  EXPECT_EQ(Text(IDC_TZ_BUFFER), L"");
  EXPECT_EQ(EntriesOf(dialog_, IDC_TZ_MODE), Entries{});
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "");
}

}  // namespace
}  // namespace k7
