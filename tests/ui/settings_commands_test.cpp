#include "support/wait_until.h"
#include "ui/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

// A dialog with a profile selected in its list.
class SettingsCommandsTest : public SettingsDialogTest {
 protected:
  void SelectSomeProfile() {
    if (EntriesOf(dialog_, IDC_CS_MATERIAL).empty()) {
      SendDlgItemMessageW(dialog_, IDC_CS_MATERIAL, CB_ADDSTRING, 0,
                          reinterpret_cast<LPARAM>(L"Oak"));
    }
    SendDlgItemMessageW(dialog_, IDC_CS_MATERIAL, CB_SETCURSEL, 0, 0);
    EnableWindow(GetDlgItem(dialog_, IDC_CS_DELETE_MATERIAL), TRUE);
  }
  // After the table setup has closed: what "Apply & Exit" ends with is the last thing put right.
  bool WaitUntilRefreshed() {
    return driver_->WaitUntilTop(dialog_) &&
           WaitUntil([] { return dialogState.applyResult == 101; });
  }
  bool ProfileIsSelected() {
    const bool selected = SelectionOf(dialog_, IDC_CS_MATERIAL) == 0;
    EXPECT_EQ(selected, Enabled(IDC_CS_DELETE_MATERIAL));
    return selected;
  }
};

TEST_F(SettingsCommandsTest, EditingAFieldClearsTheProfile) {
  Open();
  for (const int id : {1045, 1046, 1047, 1048, 1049, 1055, 1088, 1145}) {
    SelectSomeProfile();
    Type(id, L"2");
    EXPECT_FALSE(ProfileIsSelected()) << id;
  }
}

// KEEP: they belong to the profile, too, and still leave it selected.
TEST_F(SettingsCommandsTest, EditingOtherFieldsLeavesTheProfile) {
  Open();
  for (const int id : {1181, 1159, 1160, 1174, 1183}) {
    SelectSomeProfile();
    Type(id, L"2");
    EXPECT_TRUE(ProfileIsSelected()) << id;
  }
  Pick(dialog_, IDC_CS_ROUND_FIXTURE, 1);
  EXPECT_TRUE(ProfileIsSelected());
  Click(dialog_, IDC_CS_DONT_LOWER_Z);
  EXPECT_TRUE(ProfileIsSelected());
}

TEST_F(SettingsCommandsTest, WhileFillingOrLoadingNothingClearsTheProfile) {
  Open();
  SelectSomeProfile();
  dialogState.loadingProfile = 1;
  Type(IDC_CS_CUTTER_LIFT, L"2");
  EXPECT_TRUE(ProfileIsSelected());
  dialogState.loadingProfile = 0;
  dialogState.initializing = 1;
  Type(IDC_CS_CUTTER_LIFT, L"3");
  SendCommand(dialog_, IDC_CS_RESOLUTION, CBN_SELCHANGE);
  SendCommand(dialog_, IDC_CS_ENGRAVE_BY_COLOR, BN_CLICKED);
  SendCommand(dialog_, IDC_CS_MULTI_PASS, BN_CLICKED);
  EXPECT_TRUE(ProfileIsSelected());
  dialogState.initializing = 0;
}

TEST_F(SettingsCommandsTest, PickingFromTheListsClearsTheProfile) {
  FitAllSwitches();
  Open();
  for (const int id : {1058, 1069, 1072, 1162}) {
    SelectSomeProfile();
    Pick(dialog_, id, 1);
    EXPECT_FALSE(ProfileIsSelected()) << id;
  }
}

TEST_F(SettingsCommandsTest, TheCutterModeNamesTheDepth) {
  FitAllSwitches();
  Open();
  Pick(dialog_, IDC_CS_CUTTER_MODE, 2);
  EXPECT_EQ(Text(IDC_CS_ENGRAVE_DEPTH_LABEL), L"Spring Pressure");
  Pick(dialog_, IDC_CS_CUTTER_MODE, 1);
  EXPECT_EQ(Text(IDC_CS_ENGRAVE_DEPTH_LABEL), L"Engrave Depth");
}

TEST_F(SettingsCommandsTest, TheEngraveTypeBringsSemiAutomaticAndTakesIt) {
  FitAllSwitches();
  Open();
  Pick(dialog_, IDC_CS_ENGRAVE_TYPE, 1);
  EXPECT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).size(), 4u);
  Pick(dialog_, IDC_CS_ENGRAVE_TYPE, 0);
  EXPECT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).size(), 3u);
  EXPECT_EQ(dialogState.currentEngraveType, 0u);
}

TEST_F(SettingsCommandsTest, TheSameEngraveTypeChangesNothing) {
  FitAllSwitches();
  Open();
  Pick(dialog_, IDC_CS_CUTTER_MODE, 2);
  SelectSomeProfile();
  Pick(dialog_, IDC_CS_ENGRAVE_TYPE, 0);
  EXPECT_TRUE(ProfileIsSelected());
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 2);
}

TEST_F(SettingsCommandsTest, EngraveByColorShowsAndHidesItsButton) {
  Open();
  SelectSomeProfile();
  Click(dialog_, IDC_CS_ENGRAVE_BY_COLOR);
  EXPECT_TRUE(Shown(IDC_CS_COLOR_SETTINGS));
  EXPECT_FALSE(ProfileIsSelected());
  Click(dialog_, IDC_CS_ENGRAVE_BY_COLOR);
  EXPECT_FALSE(Shown(IDC_CS_COLOR_SETTINGS));
}

TEST_F(SettingsCommandsTest, MultiPassShowsAndHidesItsControls) {
  Open();
  SelectSomeProfile();
  Click(dialog_, IDC_CS_MULTI_PASS);
  EXPECT_FALSE(ProfileIsSelected());
  for (const int id : {1162, 1163, 1159, -1, 1160, 1158}) EXPECT_TRUE(Shown(id)) << id;
  Click(dialog_, IDC_CS_MULTI_PASS);
  for (const int id : {1162, 1163, 1159, -1, 1160, 1158}) EXPECT_FALSE(Shown(id)) << id;
}

TEST_F(SettingsCommandsTest, MultiPassByCopiesHidesTheFinishDepth) {
  WriteInt(keys::kEngraveSettings, keys::kMultiPassMode, 1);
  Open();
  Click(dialog_, IDC_CS_MULTI_PASS);
  for (const int id : {1162, 1163, 1159, -1}) EXPECT_TRUE(Shown(id)) << id;
  for (const int id : {1160, 1158}) EXPECT_FALSE(Shown(id)) << id;
}

TEST_F(SettingsCommandsTest, TheModesShareOneFieldAndRememberTheOtherNumber) {
  Open();
  Click(dialog_, IDC_CS_MULTI_PASS);
  Type(IDC_CS_PASS_DEPTH_OR_COPIES, L"0.03");
  Pick(dialog_, IDC_CS_MULTI_PASS_MODE, 1);
  EXPECT_EQ(Text(-1), L"Pass Copies");
  EXPECT_EQ(Text(1159), L"2");
  EXPECT_EQ(dialogState.maxPassDepth, 0.03f);
  for (const int id : {1160, 1158}) EXPECT_FALSE(Shown(id)) << id;
  Type(IDC_CS_PASS_DEPTH_OR_COPIES, L"3.5");
  Pick(dialog_, IDC_CS_MULTI_PASS_MODE, 0);
  EXPECT_EQ(Text(-1), L"Maximum Pass Depth");
  EXPECT_EQ(Text(1159), L"0.0300");
  EXPECT_EQ(dialogState.passCopies, 4);
  for (const int id : {1160, 1158}) EXPECT_TRUE(Shown(id)) << id;
}

TEST_F(SettingsCommandsTest, TheRoundFixtureShowsTheCircumference) {
  WriteInt(keys::kAxisRound, keys::kHasRoundAttachment, 1);
  Open();
  Pick(dialog_, IDC_CS_ROUND_FIXTURE, 1);
  for (const int id : {1173, 1174}) EXPECT_TRUE(Shown(id)) << id;
  Pick(dialog_, IDC_CS_ROUND_FIXTURE, 0);
  for (const int id : {1173, 1174}) EXPECT_FALSE(Shown(id)) << id;
}

TEST_F(SettingsCommandsTest, TableSetupRefreshesWhatItChanges) {
  Open();
  WriteFloat(keys::kMaximumValues, keys::kXySpeed, 20.0f);
  WriteFloat(keys::kMaximumValues, keys::kZSpeed, 30.0f);
  WriteFloat(keys::kMaximumValues, keys::kEngraveDepth, 2.0f);
  Press(dialog_, IDC_CS_TABLE_SETUP);
  const HWND setup = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(setup, nullptr);
  dialogState.applyResult = 77;
  EnableWindow(GetDlgItem(setup, IDOK), TRUE);
  Press(setup, IDOK);
  ASSERT_TRUE(WaitUntilRefreshed());
  for (const int id : {1140, 1143}) EXPECT_EQ(Text(id), L"20.0000") << id;
  for (const int id : {1142, 1139}) EXPECT_EQ(Text(id), L"30.0000") << id;
  EXPECT_EQ(Text(1135), L"2.0000");
  // KEEP: the grid speed's maximum is that of the opening.
  EXPECT_EQ(Text(1182), L"10.0000");
  EXPECT_TRUE(Enabled(IDOK));
}

TEST_F(SettingsCommandsTest, EditedPermanentSettingsForbidTheJob) {
  FitAllSwitches();
  Open();
  Press(dialog_, IDC_CS_TABLE_SETUP);
  const HWND setup = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(setup, nullptr);
  dialogState.applyResult = 2;
  EnableWindow(GetDlgItem(setup, IDOK), TRUE);
  Press(setup, IDOK);
  ASSERT_TRUE(WaitUntilRefreshed());
  EXPECT_FALSE(Enabled(IDOK));
  EXPECT_FALSE(Enabled(IDC_CS_MECHANICAL_HOME));
}

TEST_F(SettingsCommandsTest, SetCutterRefreshesTheLastCutter) {
  Open();
  Press(dialog_, IDC_CS_SET_CUTTER);
  const HWND cutter = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(cutter, nullptr);
  WriteFloat(keys::kEngraveSettings, keys::kLastCutterSet, 0.375f);
  SetDlgItemTextW(cutter, 1148, L"0");
  Press(cutter, IDOK);
  EXPECT_TRUE(WaitUntil([&] { return Text(1149) == L"Last Cutter: 0.375"; })) << "by the file";
}

}  // namespace
}  // namespace k7
