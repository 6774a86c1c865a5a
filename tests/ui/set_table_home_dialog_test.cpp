#include "ui/set_table_home_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/home_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class SetTableHomeDialog : public HomeDialogTest {
 protected:
  void OpenHome() {
    OpenOn(&ShowSetTableHomeDialog);
    EXPECT_EQ(Sent(), "M18\n") << "the table can be moved by hand";
  }
  void TypeHome(const wchar_t* x, const wchar_t* y, const wchar_t* z) {
    Type(IDC_TH_X, x);
    Type(IDC_TH_Y, y);
    Type(IDC_TH_Z, z);
  }
  bool FieldsEnabled() {
    const bool enabled = Enabled(IDC_TH_X);
    EXPECT_EQ(Enabled(IDC_TH_Y), enabled);
    EXPECT_EQ(Enabled(IDC_TH_Z), enabled);
    return enabled;
  }
};

TEST_F(SetTableHomeDialog, ShowsTheStoredHomeWithSixDecimals) {
  WriteFloat(L"Axis X", L"Table Home", 0.5f);
  WriteFloat(L"Axis Y", L"Table Home", -0.25025f);
  WriteFloat(L"Axis Z", L"Table Home", 1.25f);
  OpenHome();
  EXPECT_EQ(Text(IDC_TH_X), L"0.500000");
  EXPECT_EQ(Text(IDC_TH_Y), L"-0.250250");
  EXPECT_EQ(Text(IDC_TH_Z), L"1.250000");
  EXPECT_TRUE(FieldsEnabled());
  EXPECT_TRUE(Shown(IDC_TH_Z));
  EXPECT_FALSE(Checked(IDC_TH_LITERAL));
}

TEST_F(SetTableHomeDialog, AMissingZIsOneAndThreeQuarters) {
  OpenHome();
  EXPECT_EQ(Text(IDC_TH_X), L"0.000000");
  EXPECT_EQ(Text(IDC_TH_Y), L"0.000000");
  EXPECT_EQ(Text(IDC_TH_Z), L"1.750000");
}

TEST_F(SetTableHomeDialog, WithAllSwitchesTheFieldsAreDisabledUntilLiteralValues) {
  FitAllSwitches();
  OpenHome();
  EXPECT_FALSE(FieldsEnabled());
  Click(dialog_, IDC_TH_LITERAL);
  EXPECT_TRUE(FieldsEnabled());
  Click(dialog_, IDC_TH_LITERAL);
  EXPECT_FALSE(FieldsEnabled());
}

TEST_F(SetTableHomeDialog, OneMissingSwitchLeavesTheFieldsEnabled) {
  FitAllSwitches();
  WriteInt(L"Axis Z", L"Prox Switch", 0);
  OpenHome();
  EXPECT_TRUE(FieldsEnabled());
}

// KEEP: also on a machine that has no switches.
TEST_F(SetTableHomeDialog, UncheckingLiteralValuesDisablesTheFieldsOnEveryMachine) {
  OpenHome();
  Click(dialog_, IDC_TH_LITERAL);
  EXPECT_TRUE(FieldsEnabled());
  Click(dialog_, IDC_TH_LITERAL);
  EXPECT_FALSE(FieldsEnabled());
}

// KEEP: "round" is the air-driven Z here.
TEST_F(SetTableHomeDialog, WithAirZThereIsNoZ) {
  UseAirZ();
  OpenHome();
  EXPECT_FALSE(Shown(IDC_TH_Z));
  EXPECT_FALSE(Shown(IDC_TH_Z_LABEL));
  EXPECT_TRUE(Shown(IDC_TH_X));
  EXPECT_TRUE(Shown(IDC_TH_Y_LABEL));
}

TEST_F(SetTableHomeDialog, ARoundFixtureKeepsItsZ) {
  WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  LoadSettings(Record());
  OpenHome();
  EXPECT_TRUE(Shown(IDC_TH_Z));
}

TEST_F(SetTableHomeDialog, ByHandThePositionIsDeclaredAndTheHeadSentToMachineZero) {
  OpenHome();
  TypeHome(L"0.5", L"1", L"1");
  EXPECT_EQ(CloseBy(IDOK), 1);
  const std::string sent = Sent();
  EXPECT_THAT(sent, StartsWith("M17\n"
                               "G92 X12.700000 Y25.400000 Z25.400000\n"
                               "G0 F1524.000\n"
                               "G0 Z0.000000\n"
                               "M106\nSendBlockMessagesOn\n"));
  EXPECT_THAT(sent, HasSubstr("G0 X0.000000 Y0.000000\n"));
  EXPECT_THAT(sent, EndsWith("SetTableHomed\n"));
  EXPECT_EQ(Record().position.last.x, 0);
  EXPECT_EQ(Record().position.last.y, 0);
}

// KEEP: inches, as the bits of a single, to the file; steps to the record.
TEST_F(SetTableHomeDialog, WritesInchesAndKeepsSteps) {
  OpenHome();
  TypeHome(L"0.5", L"1.00013", L"1.75");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Stored(L"Axis X", L"Table Home"), L"1056964608");
  EXPECT_EQ(StoredFloat(L"Axis Y", L"Table Home"), 1.00013f);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Table Home"), 1.75f);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Cutter Home"), 1.75f);
  EXPECT_EQ(Record().position.tableHome.x, 2000);
  EXPECT_EQ(Record().position.tableHome.y, 4001);
  EXPECT_EQ(Record().position.cutterHome, 7000);
}

TEST_F(SetTableHomeDialog, ByHandWithAirZLeavesZAlone) {
  UseAirZ();
  OpenHome();
  const std::int32_t cutterHome = Record().position.cutterHome;
  TypeHome(L"0.5", L"1", L"1");
  EXPECT_EQ(CloseBy(IDOK), 1);
  const std::string sent = Sent();
  EXPECT_THAT(sent, StartsWith("M17\nG92 X12.700000 Y25.400000\nG0 F1524.000\nM106\n"));
  EXPECT_THAT(sent, EndsWith("SetTableHomed\n"));
  EXPECT_EQ(Record().position.cutterHome, cutterHome);
  EXPECT_EQ(Stored(L"Axis Z", L"Table Home"), L"(none)");
  EXPECT_EQ(Stored(L"Axis Z", L"Cutter Home"), L"(none)");
}

TEST_F(SetTableHomeDialog, WithAllSwitchesThePlaceIsMachineZero) {
  FitAllSwitches();
  WriteFloat(L"Axis X", L"Table Home", 0.5f);
  OpenHome();
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "M17\nG92 X0.000000 Y0.000000 Z0.000000\nSetTableHomed\n");
  EXPECT_EQ(Record().position.tableHome.x, 2000);
  EXPECT_EQ(Record().position.cutterHome, 7000);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Cutter Home"), 1.75f);
}

TEST_F(SetTableHomeDialog, WithAllSwitchesAndAirZThePlaceIsMachineZeroButForZ) {
  FitAllSwitches();
  UseAirZ();
  OpenHome();
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "M17\nG92 X0.000000 Y0.000000\nSetTableHomed\n");
}

// KEEP: counts as cancelled.
TEST_F(SetTableHomeDialog, LiteralValuesHomeTheMachineAndEndWithTwo) {
  FitAllSwitches();
  OpenHome();
  Click(dialog_, IDC_TH_LITERAL);
  TypeHome(L"0.5", L"1", L"1");
  EXPECT_EQ(CloseBy(IDOK), 2);
  EXPECT_EQ(Sent(),
            "M17\nM119\nG0 F7620.000\nG28 Z0\nG28 Y0\nG28 X0\nSetTableHomed\n"
            "G92 X0.000000 Y0.000000 Z0.000000\n");
  EXPECT_EQ(Record().position.tableHome.x, 2000);
  EXPECT_EQ(Record().position.tableHome.y, 4000);
  EXPECT_EQ(Record().position.cutterHome, 4000);
}

// KEEP: homing is refused there, and nobody tells the controller that its home is set.
TEST_F(SetTableHomeDialog, LiteralValuesWithoutSwitchesOnlyKeepTheHome) {
  OpenHome();
  Click(dialog_, IDC_TH_LITERAL);
  TypeHome(L"0.5", L"1", L"1");
  EXPECT_EQ(CloseBy(IDOK), 2);
  EXPECT_EQ(Sent(), "M17\n");
  EXPECT_EQ(Record().position.tableHome.x, 2000);
}

TEST_F(SetTableHomeDialog, LiteralValuesWithAirZEndWithOne) {
  FitAllSwitches();
  UseAirZ();
  OpenHome();
  Click(dialog_, IDC_TH_LITERAL);
  TypeHome(L"0.5", L"1", L"1");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "M17\n");
  EXPECT_EQ(Record().position.tableHome.y, 4000);
}

// The machine moves meanwhile: a second click would be one too many.
TEST_F(SetTableHomeDialog, WhileTheMachineHomesNothingCanBePressed) {
  FitAllSwitches();
  OpenHome();
  Click(dialog_, IDC_TH_LITERAL);
  controller_.Answer("G28 Z0\n", "");
  Press(dialog_, IDOK);
  ASSERT_TRUE(controller_.WaitForLine("G28 Z0\n"));
  EXPECT_FALSE(FieldsEnabled());
  EXPECT_FALSE(Enabled(IDOK));
  EXPECT_FALSE(Enabled(IDCANCEL));
  controller_.Say("Z_Limit 6000\r\n");
  EXPECT_EQ(driver_->Result(), 2);
}

// By the settings file: what the table setup has just saved reaches the record later.
TEST_F(SetTableHomeDialog, TheSwitchesAreTheFilesNotTheRecords) {
  OpenOn(&ShowSetTableHomeDialog);
  EXPECT_TRUE(FieldsEnabled());
  FitAllSwitches();
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "M18\nM17\nG92 X0.000000 Y0.000000 Z0.000000\nSetTableHomed\n");
}

TEST_F(SetTableHomeDialog, CancelHoldsTheTableAndChangesNothing) {
  OpenHome();
  const auto before = AllKeys();
  TypeHome(L"0.5", L"1", L"1");
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(Sent(), "M17\nSetTableHomed\n");
  EXPECT_EQ(AllKeys(), before);
  EXPECT_EQ(Record().position.tableHome.x, 0);
}

TEST_F(SetTableHomeDialog, WithoutADeviceOnlyOpensAndCloses) {
  OpenWith(&ShowSetTableHomeDialog, nullptr);
  EXPECT_EQ(Text(IDC_TH_X), L"");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "");
}

}  // namespace
}  // namespace k7
