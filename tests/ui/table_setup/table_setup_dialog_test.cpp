#include "ui/table_setup/table_setup_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/host_helper/install.h"
#include "ui/sub_dialog_fixture.h"
#include "ui/table_setup/table_setup_layout.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr int kEdits[] = {1003, 1034, 1035, 1038, 1039, 1074, 1088, 1090, 1092, 1132,
                          1134, 1136, 1178, 1179, 1188, 1189, 1191, 1016, 1017, 1018,
                          1019, 1020, 1021, 1022, 1023, 1024, 1082, 1084};
constexpr int kBoxes[] = {1060, 1061, 1062, 1063, 1094, 1095, 1154, 1161, 1192};
constexpr int kUnlocked[] = {1003, 1016, 1017, 1018, 1019, 1020, 1021, 1022, 1023, 1024,
                             1060, 1061, 1062, 1063, 1082, 1084, 1090, 1132, 1134, 1136,
                             1074, 1034, 1035, 1191, 1178, 1179, 1092, 1094, 1154, 1155,
                             1188, 1189, 1161, 1165, 1038, 1039, 1088, 1095, 1192};
constexpr int kBeadTool[] = {1155, 1156, 1157, 1188, 1189};
constexpr int kDiode[] = {1165, 1166, 1167};
constexpr int kMotorZ[] = {1190, 1191, 1133, 1134, 1135, 1136, 1030, 1006, 1009, 1012, 1015,
                           1018, 1021, 1024, 1027, 1067, 1062, 1063, 1078, 1079, 1080, 1081,
                           1082, 1083, 1084, 1085, 1086, 1089, 1090, 1094, -1,   1154, 1155,
                           1156, 1157, 1188, 1189, 1164, 1161, 1165, 1166, 1167, 1169, 1170,
                           1037, 1038, 1039, 1087, 1088, 1095, 1073, 1074};

class TableSetupDialog : public SubDialogTest {
 protected:
  void OpenSetup() { OpenOn(&ShowTableSetupDialog); }
  void OpenUnlocked() {
    OpenSetup();
    Click(dialog_, 1031);
  }
  void DisableOk() { EnableWindow(GetDlgItem(dialog_, IDOK), FALSE); }
  template <typename Ids>
  void ExpectShown(const Ids& ids, bool shown) {
    for (const int id : ids) EXPECT_EQ(Shown(id), shown) << id;
  }
};

TEST_F(TableSetupDialog, OpensLockedWithOkDisabled) {
  OpenSetup();
  EXPECT_FALSE(Enabled(IDOK));
  EXPECT_TRUE(Enabled(IDCANCEL));
  EXPECT_TRUE(Enabled(1031));
  EXPECT_TRUE(Enabled(1043));
  for (const int id : kUnlocked) EXPECT_FALSE(Enabled(id)) << id;
}

TEST_F(TableSetupDialog, EditPermanentSettingsUnlocksAndLocks) {
  OpenUnlocked();
  for (const int id : kUnlocked) EXPECT_TRUE(Enabled(id)) << id;
  Click(dialog_, 1031);
  for (const int id : kUnlocked) EXPECT_FALSE(Enabled(id)) << id;
}

// KEEP: from the first click on, whatever the box says then.
TEST_F(TableSetupDialog, EditPermanentSettingsAloneForbidsJobsButSavesNothing) {
  OpenSetup();
  dialogState.applyResult = 101;
  Click(dialog_, 1031);
  EXPECT_FALSE(Enabled(IDOK));
  EXPECT_FALSE(Enabled(1043));
  EXPECT_EQ(dialogState.applyResult, 2);
  Click(dialog_, 1031);
  EXPECT_FALSE(Enabled(1043)) << "not enabled again";
  EXPECT_EQ(dialogState.applyResult, 2);
}

TEST_F(TableSetupDialog, EditingAnyFieldEnablesOk) {
  OpenUnlocked();
  for (const int id : kEdits) {
    DisableOk();
    Type(id, L"7");
    EXPECT_TRUE(Enabled(IDOK)) << id;
  }
}

TEST_F(TableSetupDialog, ClickingAnyBoxEnablesOk) {
  OpenUnlocked();
  for (const int id : kBoxes) {
    DisableOk();
    Click(dialog_, id);
    EXPECT_TRUE(Enabled(IDOK)) << id;
  }
}

TEST_F(TableSetupDialog, OtherNotificationsOfAFieldDoNothing) {
  OpenUnlocked();
  for (const int id : kEdits) SendCommand(dialog_, id, EN_SETFOCUS);
  for (const int id : kBoxes) SendCommand(dialog_, id, BN_SETFOCUS);
  EXPECT_FALSE(Enabled(IDOK));
}

TEST_F(TableSetupDialog, ABusyControllerKeepsEverythingLocked) {
  dialogState.busy = 1;
  OpenSetup();
  EXPECT_FALSE(Enabled(1043));
  EXPECT_FALSE(Enabled(1031));
  for (const int id : kEdits) Type(id, L"7");
  for (const int id : kBoxes) SendCommand(dialog_, id, BN_CLICKED);
  EXPECT_FALSE(Enabled(IDOK));
}

TEST_F(TableSetupDialog, AChangeWhileBusyDisablesOkAgain) {
  OpenUnlocked();
  Type(1003, L"One");
  EXPECT_TRUE(Enabled(IDOK));
  dialogState.busy = 1;
  Type(1003, L"Two");
  EXPECT_FALSE(Enabled(IDOK));
}

TEST_F(TableSetupDialog, EachAxisShowsItsResolutionAsTyped) {
  OpenSetup();
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(Text(1025 + axis), L"4000");
    Type(1016 + axis, L"400");
    EXPECT_EQ(Text(1025 + axis), L"8000");
    Type(1019 + axis, L"16");
    EXPECT_EQ(Text(1025 + axis), L"12800");
    Type(1022 + axis, L"0.3");
    EXPECT_EQ(Text(1025 + axis), L"21333");
    Type(1016 + axis, L"399.5");
    EXPECT_EQ(Text(1025 + axis), L"21333") << "motor steps are rounded first";
  }
}

TEST_F(TableSetupDialog, WithoutAPitchTheResolutionIsHeldAtTheLargest) {
  OpenSetup();
  Type(1022, L"0");
  EXPECT_EQ(Text(1025), L"2147483648");  // as single precision knows 2147483647
  Type(1016, L"0");
  EXPECT_EQ(Text(1025), L"0.");
}

// KEEP: saving takes all of it.
TEST_F(TableSetupDialog, OnlyTheFirstFifteenCharactersCountForTheResolution) {
  OpenSetup();
  Type(1022, L"0.5000000000000e9");
  EXPECT_EQ(Text(1025), L"4000");
}

TEST_F(TableSetupDialog, ShowsTheSpindleSpeedAsTyped) {
  OpenSetup();
  EXPECT_EQ(Text(1086), L"13000");
  Type(1082, L"4000.5");
  EXPECT_EQ(Text(1086), L"13003");
  Type(1084, L"2");
  EXPECT_EQ(Text(1086), L"8002");
}

TEST_F(TableSetupDialog, TheBeadToolsControlsFollowItsBox) {
  OpenUnlocked();
  ExpectShown(kBeadTool, false);
  Click(dialog_, 1154);
  ExpectShown(kBeadTool, true);
  Click(dialog_, 1154);
  ExpectShown(kBeadTool, false);
}

TEST_F(TableSetupDialog, TheDiodePointersControlsFollowItsBox) {
  OpenUnlocked();
  ExpectShown(kDiode, false);
  Click(dialog_, 1161);
  ExpectShown(kDiode, true);
  Click(dialog_, 1161);
  ExpectShown(kDiode, false);
}

TEST_F(TableSetupDialog, OpensWithTheControlsOfTheToolsThatAreThere) {
  WriteInt(L"Braille", L"Bead Insert Tool", 1);
  OpenSetup();
  ExpectShown(kBeadTool, true);
  ExpectShown(kDiode, false);
  CloseBy(IDCANCEL);
  WriteInt(L"Braille", L"Bead Insert Tool", 0);
  WriteInt(L"Diode", L"Diode Pointer", 1);
  OpenSetup();
  ExpectShown(kBeadTool, false);
  ExpectShown(kDiode, true);
}

TEST_F(TableSetupDialog, AirZHidesWhatItMakesMeaningless) {
  OpenUnlocked();
  Click(dialog_, 1192);
  ExpectShown(kMotorZ, false);
  for (const int id : {1001, 1003, 1016, 1017, 1025, 1034, 1035, 1060, 1061, 1065, 1066,
                       1076, 1077, 1092, 1130, 1132, 1175, 1178, 1179, 1192, 1031, 1043}) {
    EXPECT_TRUE(Shown(id)) << id;
  }
}

// KEEP: the tools' boxes are not asked.
TEST_F(TableSetupDialog, WithoutAirZAgainTheControlsOfAbsentToolsAppear) {
  OpenUnlocked();
  Click(dialog_, 1192);
  Click(dialog_, 1192);
  EXPECT_FALSE(Checked(1154));
  EXPECT_FALSE(Checked(1161));
  ExpectShown(kMotorZ, true);
}

TEST_F(TableSetupDialog, AMachineWithAirZOpensWithoutThem) {
  WriteInt(L"Axis Z", L"Air Z", 1);
  WriteInt(L"Braille", L"Bead Insert Tool", 1);
  WriteInt(L"Diode", L"Diode Pointer", 1);
  OpenSetup();
  ExpectShown(kMotorZ, false);
}

TEST_F(TableSetupDialog, SetTableHomeShowsTheNewHomeAndForbidsJobs) {
  OpenSetup();
  dialogState.applyResult = 101;
  Press(dialog_, 1043);
  const BoxSeen box = driver_->AnswerBox(dialog_, IDYES);
  EXPECT_EQ(box.caption, L"Table Home");
  EXPECT_EQ(box.owner, dialog_);
  ASSERT_TRUE(WaitUntil([&] {
    return driver_->Top() != nullptr && GetDlgItem(driver_->Top(), IDC_TH_LITERAL) != nullptr;
  }));
  const HWND home = driver_->Top();
  TypeText(home, IDC_TH_X, L"0.5");
  TypeText(home, IDC_TH_Y, L"1.25");
  TypeText(home, IDC_TH_Z, L"2");
  Press(home, IDOK);
  ASSERT_TRUE(driver_->WaitUntilTop(dialog_));
  EXPECT_TRUE(WaitUntil([&] { return Text(1065) == L"Table Home  0.500000"; }));
  EXPECT_EQ(Text(1066), L"Table Home  1.250000");
  EXPECT_EQ(Text(1067), L"Table Home  2.000000");
  EXPECT_TRUE(WaitUntil([&] { return dialogState.applyResult == 2; }));
  EXPECT_FALSE(Enabled(IDOK));
}

TEST_F(TableSetupDialog, SetTableHomeForbidsJobsAlsoWhenAnsweredNo) {
  OpenSetup();
  dialogState.applyResult = 101;
  Press(dialog_, 1043);
  driver_->AnswerBox(dialog_, IDNO);
  EXPECT_TRUE(WaitUntil([&] { return dialogState.applyResult == 2; }));
}

TEST_F(TableSetupDialog, UnknownCommandsAreIgnored) {
  OpenSetup();
  SendCommand(dialog_, 1002);
  SendCommand(dialog_, 9999);
  EXPECT_FALSE(Enabled(IDOK));
  EXPECT_EQ(driver_->Top(), dialog_);
}

// ------------------------------------------------------------- offsets of the accessories

// The cutter stands at the table home; the host's point is (-2, 1250) thousandths from it.
class TableSetupOffsets : public TableSetupDialog {
 protected:
  TableSetupOffsets() {
    EXPECT_TRUE(InstalledHelper{"whole"}.Works());
    dialogState.hostWordLow = -2;
    dialogState.hostWordHigh = 1250;
    WriteInt(L"Braille", L"Bead Insert Tool", 1);
    WriteInt(L"Braille", L"Bead Insert Tool X Offset", 500);
    WriteInt(L"Diode", L"Diode Pointer", 1);
    WriteInt(L"Diode", L"Diode Pointer X Offset", 500);
    OpenUnlocked();
    DisableOk();
  }
  void PressAndAnswer(int id, const wchar_t* caption, int answer) {
    Press(dialog_, id);
    const BoxSeen box = driver_->AnswerBox(dialog_, answer);
    EXPECT_EQ(box.caption, caption);
    EXPECT_THAT(box.text, testing::HasSubstr(L"X: -0.002 in\nY: 1.250 in")) << "sign-extended";
    EXPECT_TRUE(driver_->WaitUntilTop(dialog_));
  }
};

TEST_F(TableSetupOffsets, SetToolOffsetShowsTheNewOffsets) {
  PressAndAnswer(1155, L"Braille Bead Insert Tool", IDYES);
  EXPECT_TRUE(WaitUntil([&] { return Text(1189) == L"1.250"; }));
  EXPECT_EQ(Text(1188), L"-0.002");
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool X Offset"), L"-2");
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool Y Offset"), L"1250");
}

TEST_F(TableSetupOffsets, SetDiodeOffsetShowsTheNewOffsets) {
  PressAndAnswer(1165, L"Diode Pointer", IDYES);
  EXPECT_TRUE(WaitUntil([&] { return Text(1167) == L"Y: 1.2500"; }));
  EXPECT_EQ(Text(1166), L"X: -0.0020");
  EXPECT_EQ(Stored(L"Diode", L"Diode Pointer X Offset"), L"-2");
  EXPECT_EQ(Stored(L"Diode", L"Diode Pointer Y Offset"), L"1250");
}

TEST_F(TableSetupOffsets, AnsweredNoTheTypedOffsetsStay) {
  Type(1188, L"7");
  PressAndAnswer(1155, L"Braille Bead Insert Tool", IDNO);
  PressAndAnswer(1165, L"Diode Pointer", IDNO);
  EXPECT_EQ(Text(1188), L"7");
  EXPECT_EQ(Text(1166), L"X: 0.5000");
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool X Offset"), L"500");
  EXPECT_EQ(Stored(L"Diode", L"Diode Pointer X Offset"), L"500");
}

TEST_F(TableSetupDialog, WithoutADeviceItsButtonsDoNothing) {
  OpenWith(&ShowTableSetupDialog, nullptr);
  dialogState.applyResult = 101;
  for (const int id : {1043, 1155, 1165}) SendCommand(dialog_, id);
  EXPECT_EQ(driver_->Top(), dialog_);
  EXPECT_EQ(dialogState.applyResult, 101);
  for (const int id : {1076, 1077, 1078, 1079}) EXPECT_EQ(ColorOf(id), RGB(0, 0, 0)) << id;
}

}  // namespace
}  // namespace k7
