#include "ui/settings/filling.h"
#include "ui/settings/settings_dialog_fixture.h"

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
  SetFilling(dialog_, Filling::FromProfile);
  Type(IDC_CS_CUTTER_LIFT, L"2");
  EXPECT_TRUE(ProfileIsSelected());
  SetFilling(dialog_, Filling::AtOpening);
  Type(IDC_CS_CUTTER_LIFT, L"3");
  SendCommand(dialog_, IDC_CS_RESOLUTION, CBN_SELCHANGE);
  SendCommand(dialog_, IDC_CS_ENGRAVE_BY_COLOR, BN_CLICKED);
  SendCommand(dialog_, IDC_CS_MULTI_PASS, BN_CLICKED);
  EXPECT_TRUE(ProfileIsSelected());
  SetFilling(dialog_, Filling::None);
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
  WriteInt(L"Engrave Settings", L"Multi Pass Mode", 1);
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
  WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  Open();
  Pick(dialog_, IDC_CS_ROUND_FIXTURE, 1);
  for (const int id : {1173, 1174}) EXPECT_TRUE(Shown(id)) << id;
  Pick(dialog_, IDC_CS_ROUND_FIXTURE, 0);
  for (const int id : {1173, 1174}) EXPECT_FALSE(Shown(id)) << id;
}

TEST_F(SettingsCommandsTest, OtherNotificationsDoNothing) {
  WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  FitAllSwitches();
  Open();
  SelectSomeProfile();
  for (const int id : {1045, 1046, 1047, 1048, 1049, 1055, 1088, 1145}) {
    SendCommand(dialog_, id, EN_KILLFOCUS);
  }
  for (const int id : {1058, 1069, 1072, 1162, 1172}) {
    SendDlgItemMessageW(dialog_, id, CB_SETCURSEL, 1, 0);
    SendCommand(dialog_, id, CBN_CLOSEUP);
  }
  for (const int id : {1093, 1161}) {
    SendDlgItemMessageW(dialog_, id, BM_SETCHECK, BST_CHECKED, 0);
    SendCommand(dialog_, id, BN_SETFOCUS);
  }
  Type(IDC_CS_GRID_SPEED, L"3");
  SendCommand(dialog_, IDC_CS_MATERIAL, CBN_CLOSEUP);
  EXPECT_TRUE(ProfileIsSelected());
  EXPECT_EQ(Text(IDC_CS_GRID_SPEED), L"3") << "no profile was loaded";
  EXPECT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).size(), 3u);
  EXPECT_EQ(Text(-1), L"Maximum Pass Depth");
  for (const int id : {1095, 1159, 1160, 1173, 1174}) EXPECT_FALSE(Shown(id)) << id;
}

TEST_F(SettingsCommandsTest, CopiesAreRoundedHalfUpAlsoBelowZero) {
  constexpr struct {
    const wchar_t* typed;
    std::int32_t want;
  } kCases[] = {{L"2.5", 3}, {L"2.4", 2}, {L"-1.3", -1}, {L"-1.5", -1}, {L"-1.6", -2}, {L"x", 0}};
  Open();
  Click(dialog_, IDC_CS_MULTI_PASS);
  for (const auto& c : kCases) {
    Pick(dialog_, IDC_CS_MULTI_PASS_MODE, 1);
    Type(IDC_CS_PASS_DEPTH_OR_COPIES, c.typed);
    Pick(dialog_, IDC_CS_MULTI_PASS_MODE, 0);
    EXPECT_EQ(dialogState.passCopies, c.want) << c.typed;
  }
}

}  // namespace
}  // namespace k7
