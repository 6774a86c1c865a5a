#include "ui/settings/control_states.h"

#include "ui/settings/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

using ControlStatesTest = SettingsDialogTest;

constexpr int kEditable[] = {1045, 1046, 1047, 1048, 1049, 1055, 1058, 1072, 1088,
                             1093, 1095, 1145, 1146, 1151, 1153, 1159, 1160, 1161};
constexpr int kCutterControls[] = {1071, 1072, 1050, 1045, 1054, 1049, 1142, 1053, 1048, 1139, 1051,
                                   1046, 1135, 1186, 1183, 1146, 1087, 1088, 1141, 1149, 1185};

TEST_F(ControlStatesTest, BeforeAJobEverythingIsEnabled) {
  FitAllSwitches();
  Open(1, 1);
  for (const int id : kEditable) EXPECT_TRUE(Enabled(id)) << id;
  for (const int id : {1, 2, 1059, 1064, 1068, 1069, 1162}) EXPECT_TRUE(Enabled(id)) << id;
}

TEST_F(ControlStatesTest, ABusyControllerDisablesAllButTheWaysOut) {
  FitAllSwitches();
  Record().job.plungeHold = 1;
  Open(1, 1);
  for (const int id : kEditable) EXPECT_FALSE(Enabled(id)) << id;
  for (const int id : {1, 1064, 1068}) EXPECT_FALSE(Enabled(id)) << id;
  for (const int id : {1059, 2}) EXPECT_TRUE(Enabled(id)) << id;
}

// KEEP: the two lists are enabled by the kind of Z axis; three fields are never looked at.
TEST_F(ControlStatesTest, SomeControlsStayEnabledOnABusyController) {
  Record().job.plungeHold = 1;
  Open(1, 1);
  for (const int id : {1069, 1162, 1181, 1172, 1174}) EXPECT_TRUE(Enabled(id)) << id;
}

TEST_F(ControlStatesTest, OutsideOfAJobItCannotBeRun) {
  FitAllSwitches();
  Open(0, 1);
  for (const int id : kEditable) EXPECT_TRUE(Enabled(id)) << id;
  for (const int id : {1, 1064}) EXPECT_FALSE(Enabled(id)) << id;
  for (const int id : {1059, 1068}) EXPECT_TRUE(Enabled(id)) << id;
}

TEST_F(ControlStatesTest, AUserWhoMayNotChangeCanOnlyLeave) {
  FitAllSwitches();
  Open(1, 0);
  for (const int id : kEditable) EXPECT_FALSE(Enabled(id)) << id;
  for (const int id : {1, 1068}) EXPECT_FALSE(Enabled(id)) << id;
  for (const int id : {2, 1059, 1064}) EXPECT_TRUE(Enabled(id)) << id;
}

// KEEP: the fields ask for exactly 1, the buttons for anything but 0.
TEST_F(ControlStatesTest, APermissionOtherThanOneRunsButDoesNotChange) {
  Open(1, 2);
  for (const int id : kEditable) EXPECT_FALSE(Enabled(id)) << id;
  for (const int id : {1, 1068}) EXPECT_TRUE(Enabled(id)) << id;
}

TEST_F(ControlStatesTest, MechanicalHomeNeedsAllSwitches) {
  Open(1, 1);
  EXPECT_FALSE(Enabled(IDC_CS_MECHANICAL_HOME));
}

TEST_F(ControlStatesTest, EachMissingSwitchTakesMechanicalHomeAway) {
  constexpr std::uint8_t DialogState::*kSwitches[] = {
      &DialogState::xLimitSwitch, &DialogState::yLimitSwitch, &DialogState::zLimitSwitch,
      &DialogState::zProxSwitch};
  FitAllSwitches();
  Open(1, 1);
  for (const auto missing : kSwitches) {
    dialogState.*missing = 0;
    UpdateControlStates(dialog_, nullptr);
    EXPECT_FALSE(Enabled(IDC_CS_MECHANICAL_HOME));
    EXPECT_FALSE(Shown(IDC_CS_SET_CUTTER));
    dialogState.*missing = 1;
    UpdateControlStates(dialog_, nullptr);
    EXPECT_TRUE(Enabled(IDC_CS_MECHANICAL_HOME));
    EXPECT_TRUE(Shown(IDC_CS_SET_CUTTER));
  }
}

TEST_F(ControlStatesTest, TheImportButtonIsNeverShown) {
  FitAllSwitches();
  Open(1, 1);
  EXPECT_FALSE(Shown(IDC_CS_IMPORT));
}

// KEEP: a Z motor shows them on every machine.
TEST_F(ControlStatesTest, AZMotorShowsSetCutterAndTheSpindleOnEveryMachine) {
  Open(1, 1);
  ASSERT_EQ(hasSpindle, 0);
  for (const int id : kCutterControls) EXPECT_TRUE(Shown(id)) << id;
  EXPECT_FALSE(Shown(IDC_CS_DONT_LOWER_Z));
}

TEST_F(ControlStatesTest, WithoutAFileSetCutterFollowsTheSwitches) {
  Open(1, 1);
  UpdateControlStates(dialog_, nullptr);
  EXPECT_FALSE(Shown(IDC_CS_SET_CUTTER));
  dialogState.xLimitSwitch = dialogState.yLimitSwitch = 1;
  dialogState.zLimitSwitch = dialogState.zProxSwitch = 1;
  UpdateControlStates(dialog_, nullptr);
  EXPECT_TRUE(Shown(IDC_CS_SET_CUTTER));
}

TEST_F(ControlStatesTest, AirZHidesTheCutterControls) {
  FitAllSwitches();
  WriteInt(L"Axis Z", L"Air Z", 1);
  WriteInt(L"Engrave Settings", L"Multi Pass", 1);
  WriteInt(L"Engrave Settings", L"Multi Pass Copies", 4);
  Open(1, 1);
  for (const int id : kCutterControls) EXPECT_FALSE(Shown(id)) << id;
  for (const int id : {1158, 1160}) EXPECT_FALSE(Shown(id)) << id;
  for (const int id : {1192, 1159, -1, 1137}) EXPECT_TRUE(Shown(id)) << id;
  for (const int id : {1069, 1162}) EXPECT_FALSE(Enabled(id)) << id;
  EXPECT_EQ(SelectionOf(dialog_, 1162), 1);
  EXPECT_EQ(Text(-1), L"Pass Copies");
  EXPECT_EQ(Text(1159), L"4");
  EXPECT_EQ(dialogState.passCopies, 4);
}

TEST_F(ControlStatesTest, AirZWithoutStoredCopiesMakesTwo) {
  WriteInt(L"Axis Z", L"Air Z", 1);
  Open(1, 1);
  EXPECT_EQ(Text(1159), L"2");
}

// Only 1 is a pneumatic head.
TEST_F(ControlStatesTest, AnotherKindOfZIsAMotor) {
  WriteInt(L"Axis Z", L"Air Z", 2);
  Open(1, 1);
  for (const int id : kCutterControls) EXPECT_TRUE(Shown(id)) << id;
  EXPECT_FALSE(Shown(IDC_CS_DONT_LOWER_Z));
  EXPECT_TRUE(Enabled(IDC_CS_CUTTER_MODE));
}

}  // namespace
}  // namespace k7
