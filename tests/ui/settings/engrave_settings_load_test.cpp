#include <gmock/gmock.h>

#include "ui/settings/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;

using LoadEngraveSettingsTest = SettingsDialogTest;

TEST_F(LoadEngraveSettingsTest, AFileWithoutKeysShowsTheDefaults) {
  Open();
  constexpr struct {
    int id;
    const wchar_t* want;
  } kFields[] = {{1045, L"0.1250"},
                 {1046, L"0.0625"},
                 {1047, L"1.0000"},
                 {1048, L"1.0000"},
                 {1049, L"1.0000"},
                 {1055, L"1.0000"},
                 {1181, L"1.0000"},
                 {1145, L"0.0000"},
                 {1140, L"10.0000"},
                 {1143, L"10.0000"},
                 {1182, L"10.0000"},
                 {1142, L"10.0000"},
                 {1139, L"10.0000"},
                 {1135, L"1.0000"},
                 {1149, L"Last Cutter: 0.000"},
                 {1088, L"13000"},
                 {1174, L""},
                 {1159, L""},
                 {1160, L""},
                 {1183, L""},
                 {-1, L"Maximum Pass Depth"},
                 {1051, L"Engrave Depth"}};
  for (const auto& c : kFields) EXPECT_EQ(Text(c.id), c.want) << c.id;
  for (const int box : {1093, 1161, 1192}) EXPECT_FALSE(Checked(box)) << box;
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_ENGRAVE_TYPE), 0);
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 0);
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_ROUND_FIXTURE), 0);
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MULTI_PASS_MODE), 0);
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_RESOLUTION), 0);
  EXPECT_EQ(dialogState.passCopies, 2);
}

TEST_F(LoadEngraveSettingsTest, EveryFieldShowsItsKey) {
  struct Row {
    int id;
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* want;
  };
  constexpr Row kRows[] = {
      {1045, L"Engrave Settings", L"Cutter Lift", L"0.5000"},
      {1046, L"Engrave Settings", L"Engrave Depth", L"1.5000"},
      {1047, L"Engrave Settings", L"Traverse Speed", L"2.5000"},
      {1048, L"Engrave Settings", L"Cutter Down Speed", L"3.5000"},
      {1049, L"Engrave Settings", L"Cutter Up Speed", L"4.5000"},
      {1055, L"Engrave Settings", L"Engrave Speed", L"5.5000"},
      {1181, L"Engrave Settings", L"Grid Speed", L"6.5000"},
      {1145, L"Engrave Settings", L"Engrave Delay", L"7.5000"},
      {1149, L"Engrave Settings", L"Last Cutter Set", L"Last Cutter: 8.500"},
  };
  float value = 0.5f;
  for (const Row& row : kRows) {
    WriteFloat(row.section, row.key, value);
    value += 1.0f;
  }
  WriteFloat(L"Maximum Values", L"XY Speed", 20.0f);
  WriteFloat(L"Maximum Values", L"Z Speed", 30.0f);
  WriteFloat(L"Maximum Values", L"Engrave Depth", 40.0f);
  Open();
  for (const Row& row : kRows) EXPECT_EQ(Text(row.id), row.want) << row.id;
  for (const int id : {1140, 1143, 1182}) EXPECT_EQ(Text(id), L"20.0000") << id;
  for (const int id : {1142, 1139}) EXPECT_EQ(Text(id), L"30.0000") << id;
  EXPECT_EQ(Text(1135), L"40.0000");
}

TEST_F(LoadEngraveSettingsTest, TheGridSpeedIsHiddenWhenTheHostWantsNone) {
  Open(1, 1, 0, 0);
  for (const int id : {1180, 1181, 1182}) EXPECT_FALSE(Shown(id)) << id;
  EXPECT_EQ(Text(1181), L"1.0000") << "filled all the same";
}

TEST_F(LoadEngraveSettingsTest, TheGridSpeedIsShownOtherwise) {
  Open(1, 1, 0, 2);
  for (const int id : {1180, 1181, 1182}) EXPECT_TRUE(Shown(id)) << id;
}

TEST_F(LoadEngraveSettingsTest, EngraveByColorShowsItsButton) {
  WriteInt(L"Engrave Settings", L"Engrave By Color", 3);
  WriteInt(L"Engrave Settings", L"Dont Lower Air Z", 2);
  Open();
  EXPECT_TRUE(Checked(IDC_CS_ENGRAVE_BY_COLOR));
  EXPECT_TRUE(Shown(IDC_CS_COLOR_SETTINGS));
  EXPECT_TRUE(Checked(IDC_CS_DONT_LOWER_Z));
}

TEST_F(LoadEngraveSettingsTest, WithoutEngraveByColorTheButtonIsHidden) {
  Open();
  EXPECT_FALSE(Shown(IDC_CS_COLOR_SETTINGS));
}

TEST_F(LoadEngraveSettingsTest, SwitchesAndSpindleSetTheirFlags) {
  FitAllSwitches();
  WriteInt(L"Spindle", L"Has Spindle", 1);
  Open();
  EXPECT_TRUE(dialogState.HasAllSwitches());
  EXPECT_EQ(hasSpindle, 1);
}

TEST_F(LoadEngraveSettingsTest, FlagsOfAnEarlierDialogAreCleared) {
  dialogState.xLimitSwitch = dialogState.yLimitSwitch = 1;
  dialogState.zLimitSwitch = dialogState.zProxSwitch = 1;
  hasSpindle = 1;
  Open();
  EXPECT_EQ(dialogState.xLimitSwitch + dialogState.yLimitSwitch + dialogState.zLimitSwitch +
                dialogState.zProxSwitch,
            0);
  EXPECT_EQ(hasSpindle, 0);
}

// KEEP: the list of modes alone stays when multi-pass is off.
TEST_F(LoadEngraveSettingsTest, WithoutMultiPassTheListOfModesStays) {
  Open();
  for (const int id : {1159, 1160, -1, 1158, 1163}) EXPECT_FALSE(Shown(id)) << id;
  EXPECT_TRUE(Shown(1162));
}

TEST_F(LoadEngraveSettingsTest, PassDepthsAreShown) {
  WriteInt(L"Engrave Settings", L"Multi Pass", 1);
  WriteFloat(L"Engrave Settings", L"Max Pass Depth", 0.02f);
  WriteFloat(L"Engrave Settings", L"Finish Pass Depth", 0.005f);
  Open();
  EXPECT_TRUE(Checked(IDC_CS_MULTI_PASS));
  for (const int id : {1159, 1160, -1, 1158, 1162, 1163}) EXPECT_TRUE(Shown(id)) << id;
  EXPECT_EQ(Text(-1), L"Maximum Pass Depth");
  EXPECT_EQ(Text(1159), L"0.0200");
  EXPECT_EQ(Text(1160), L"0.0050");
  EXPECT_EQ(dialogState.maxPassDepth, 0.02f);
  EXPECT_THAT(EntriesOf(dialog_, 1162), ElementsAre(L"Max Pass Depth", L"Pass Copies"));
}

TEST_F(LoadEngraveSettingsTest, PassCopiesAreShown) {
  WriteInt(L"Engrave Settings", L"Multi Pass", 1);
  WriteInt(L"Engrave Settings", L"Multi Pass Mode", 1);
  WriteInt(L"Engrave Settings", L"Multi Pass Copies", 5);
  WriteFloat(L"Engrave Settings", L"Max Pass Depth", 0.02f);
  Open();
  for (const int id : {1159, -1, 1162, 1163}) EXPECT_TRUE(Shown(id)) << id;
  for (const int id : {1160, 1158}) EXPECT_FALSE(Shown(id)) << id;
  EXPECT_EQ(Text(-1), L"Pass Copies");
  EXPECT_EQ(Text(1159), L"5");
  EXPECT_EQ(dialogState.maxPassDepth, 0.02f) << "remembered for the other mode";
}

TEST_F(LoadEngraveSettingsTest, WithoutAFixtureItsControlsAreHidden) {
  for (const int mode : {0, 1, 2}) {
    WriteInt(L"Axis Round", L"Mode", mode);
    hasRoundAttachment = 1;
    Open();
    for (const int id : {1172, 1171, 1173, 1174}) EXPECT_FALSE(Shown(id)) << id;
    EXPECT_EQ(hasRoundAttachment, 0);
    CloseBy(IDCANCEL);
  }
}

TEST_F(LoadEngraveSettingsTest, AFixtureShowsTheCircumferenceWhileItIsInUse) {
  WriteInt(L"Axis Round", L"Has Round Attachment", 7);
  for (const int mode : {0, 1, 2}) {
    WriteInt(L"Axis Round", L"Mode", mode);
    Open();
    EXPECT_EQ(SelectionOf(dialog_, 1172), mode);
    for (const int id : {1172, 1171}) EXPECT_TRUE(Shown(id)) << id;
    for (const int id : {1173, 1174}) EXPECT_EQ(Shown(id), mode != 0) << id;
    EXPECT_EQ(hasRoundAttachment, 1);
    CloseBy(IDCANCEL);
  }
}

TEST_F(LoadEngraveSettingsTest, TheCircumferenceIsShownAsItWasTyped) {
  File().WriteText(L"Axis Round", L"Circumference", L"6.25 in");
  Open();
  EXPECT_THAT(EntriesOf(dialog_, 1172), ElementsAre(L"Off", L"Replace X", L"Replace Y"));
  EXPECT_EQ(Text(1174), L"6.25 in");
}

}  // namespace
}  // namespace k7
