// The six dialogs by keyboard alone: where the focus stands at the opening, the tab order, Enter
// and Escape.
#include <gtest/gtest.h>

#include "ui/color_settings_dialog.h"
#include "ui/home_dialog_fixture.h"
#include "ui/set_cutter_dialog.h"
#include "ui/set_table_home_dialog.h"
#include "ui/set_table_zero_dialog.h"
#include "ui/table_setup/table_setup_dialog.h"

namespace k7 {
namespace {

using namespace k7test;
using Round = std::vector<int>;

class Keyboard : public HomeDialogTest {
 protected:
  void OpenSettings() {
    Record().position.tableHomed = 1;
    FitAllSwitches();
    Open();
  }
  void OpenSetup() { OpenOn(&ShowTableSetupDialog); }
  void OpenUnlockedSetup() {
    OpenSetup();
    Click(dialog_, IDC_TS_EDIT_PERMANENT);
  }

  void ExpectFocusAtOpening(int id) { EXPECT_TRUE(driver_->WaitForFocus(dialog_, id)) << id; }
  // Every character selected, so that typing replaces the number.
  void ExpectSelected(int id) {
    EXPECT_EQ(SelectedRange(dialog_, id), (std::pair{0, static_cast<int>(Text(id).size())})) << id;
  }
  void FocusAndPress(int id, WPARAM key) {
    SetFocusTo(id);
    driver_->PressKey(dialog_, key);
  }
};

// --------------------------------------------------------------------- focus at the opening

TEST_F(Keyboard, TheSettingsOpenOnTheMaterialList) {
  OpenSettings();
  ExpectFocusAtOpening(IDC_CS_MATERIAL);
}

TEST_F(Keyboard, TheLockedTableSetupOpensOnItsLock) {
  OpenSetup();
  ExpectFocusAtOpening(IDC_TS_EDIT_PERMANENT);
}

TEST_F(Keyboard, TheSmallDialogsOpenOnTheirFirstFieldWithTheNumberSelected) {
  const struct {
    ShowDialog show;
    int field;
  } kDialogs[] = {
      {&ShowSetCutterDialog, IDC_SC_DEPTH},
      {&ShowSetTableZeroDialog, IDC_TZ_BUFFER},
      {&ShowSetTableHomeDialog, IDC_TH_X},
  };
  for (const auto& row : kDialogs) {
    OpenOn(row.show);
    ExpectFocusAtOpening(row.field);
    ExpectSelected(row.field);
    EXPECT_EQ(CloseBy(IDCANCEL), 2);
  }
}

TEST_F(Keyboard, SetTableHomeWithAllSwitchesOpensOnItsCheckBox) {
  FitAllSwitches();
  OpenOn(&ShowSetTableHomeDialog);
  ExpectFocusAtOpening(IDC_TH_LITERAL);
}

TEST_F(Keyboard, TheColorsOpenOnTheFirstCheckBox) {
  OpenOn(&ShowColorSettingsDialog);
  ExpectFocusAtOpening(IDC_CO_CHECK_0);
}

// ---------------------------------------------------------------------------------- tab order

TEST_F(Keyboard, TabGoesThroughTheSettingsInReadingOrder) {
  OpenSettings();
  SetFocusTo(IDC_CS_MATERIAL);
  EXPECT_EQ(
      driver_->TabRound(dialog_),
      (Round{IDC_CS_MATERIAL, IDC_CS_SAVE_MATERIAL,
             // left
             IDC_CS_ENGRAVE_TYPE, IDC_CS_CUTTER_MODE, IDC_CS_RESOLUTION, IDC_CS_ENGRAVE_BY_COLOR,
             IDC_CS_MULTI_PASS, IDC_CS_MULTI_PASS_MODE,
             // right
             IDC_CS_ENGRAVE_SPEED, IDC_CS_TRAVERSE_SPEED, IDC_CS_GRID_SPEED, IDC_CS_ENGRAVE_DELAY,
             IDC_CS_SPINDLE_RPM, IDC_CS_CUTTER_UP_SPEED, IDC_CS_CUTTER_DOWN_SPEED,
             IDC_CS_ENGRAVE_DEPTH, IDC_CS_CUTTER_LIFT, IDC_CS_TABLE_BUFFER,
             // below
             IDC_CS_MECHANICAL_HOME, IDC_CS_TABLE_SETUP, IDC_CS_SET_TABLE_ZERO, IDC_CS_SET_CUTTER,
             IDOK, IDC_CS_APPLY, IDCANCEL}));
}

TEST_F(Keyboard, TabGoesThroughTheLockedTableSetupByWhatIsNotLocked) {
  OpenSetup();
  SetFocusTo(IDC_TS_EDIT_PERMANENT);
  EXPECT_EQ(driver_->TabRound(dialog_),
            (Round{IDC_TS_EDIT_PERMANENT, IDC_TS_SET_TABLE_HOME, IDCANCEL}));
}

TEST_F(Keyboard, TabGoesThroughTheTableSetupGroupByGroup) {
  WriteInt(L"Braille", L"Bead Insert Tool", 1);
  WriteInt(L"Diode", L"Diode Pointer", 1);
  OpenUnlockedSetup();
  Type(IDC_TS_FRIENDLY_NAME, L"Bench");  // OK comes alive
  SetFocusTo(IDC_TS_FRIENDLY_NAME);
  EXPECT_EQ(
      driver_->TabRound(dialog_),
      (Round{IDC_TS_FRIENDLY_NAME, IDC_TS_EDIT_PERMANENT,
             // X, Y, Z
             IDC_TS_MOTOR_STEPS_X, IDC_TS_MICRO_STEPS_X, IDC_TS_SCREW_PITCH_X,
             IDC_TS_LIMIT_SWITCH_X, IDC_TS_MOTOR_STEPS_Y, IDC_TS_MICRO_STEPS_Y,
             IDC_TS_SCREW_PITCH_Y, IDC_TS_LIMIT_SWITCH_Y, IDC_TS_MOTOR_STEPS_Z,
             IDC_TS_MICRO_STEPS_Z, IDC_TS_SCREW_PITCH_Z, IDC_TS_LIMIT_SWITCH_Z, IDC_TS_PROX_SWITCH,
             // spindle, round fixture, braille
             IDC_TS_MOTOR_RPM, IDC_TS_SPINDLE_GEAR_RATIO, IDC_TS_RAMP_TIME, IDC_TS_HAS_SPINDLE,
             IDC_TS_ROUND_MOTOR_STEPS, IDC_TS_ROUND_MICRO_STEPS, IDC_TS_ROUND_GEAR_RATIO,
             IDC_TS_HAS_ROUND_FIXTURE, IDC_TS_HAS_BEAD_TOOL, IDC_TS_SET_BEAD_OFFSET, IDC_TS_BEAD_X,
             IDC_TS_BEAD_Y,
             // below them
             IDC_TS_SCISSORS, IDC_TS_HAS_AIR_Z, IDC_TS_SEMI_AUTO_OFFSET,
             // right
             IDC_TS_MAX_XY_SPEED, IDC_TS_MAX_Z_SPEED, IDC_TS_MAX_ENGRAVE_DEPTH, IDC_TS_TABLE_WIDTH,
             IDC_TS_TABLE_HEIGHT, IDC_TS_TABLE_DEPTH, IDC_TS_JOG_FAST, IDC_TS_JOG_SLOW,
             IDC_TS_HAS_DIODE, IDC_TS_SET_DIODE_OFFSET,
             // the ways out; "Set Table Home..." is disabled by the unlocking
             IDOK, IDCANCEL}));
}

TEST_F(Keyboard, TabGoesThroughTheSmallDialogsInReadingOrder) {
  const struct {
    ShowDialog show;
    Round round;
  } kDialogs[] = {
      {&ShowSetCutterDialog, {IDC_SC_DEPTH, IDOK, IDCANCEL}},
      {&ShowSetTableZeroDialog, {IDC_TZ_BUFFER, IDC_TZ_MODE, IDOK, IDCANCEL}},
      {&ShowSetTableHomeDialog, {IDC_TH_X, IDC_TH_Y, IDC_TH_Z, IDC_TH_LITERAL, IDOK, IDCANCEL}},
      {&ShowColorSettingsDialog,
       {1097, 1114, 1115, 1116, 1117, 1118, 1119, 1120, 1121, 1122, 1123, 1124, 1125, 1126, 1127,
        1128, IDOK, IDCANCEL}},
  };
  for (const auto& row : kDialogs) {
    OpenOn(row.show);
    SetFocusTo(row.round.front());
    EXPECT_EQ(driver_->TabRound(dialog_), row.round);
    EXPECT_EQ(CloseBy(IDCANCEL), 2);
  }
}

// ------------------------------------------------------------------------------ Enter, Escape

TEST_F(Keyboard, EnterInAFieldOfTheSettingsAppliesAndExits) {
  OpenSettings();
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  FocusAndPress(IDC_CS_CUTTER_LIFT, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 101);
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Cutter Lift"), 0.5f);
}

TEST_F(Keyboard, EnterInAFieldOfTheSmallDialogsIsOk) {
  OpenOn(&ShowSetCutterDialog);
  FocusAndPress(IDC_SC_DEPTH, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 1);
  OpenOn(&ShowSetTableZeroDialog);
  FocusAndPress(IDC_TZ_BUFFER, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 1);
  OpenOn(&ShowSetTableHomeDialog);
  FocusAndPress(IDC_TH_X, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 1);
  OpenOn(&ShowColorSettingsDialog);
  Click(dialog_, IDC_CO_CHECK_0);
  FocusAndPress(IDC_CO_CHECK_0, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 1);
}

TEST_F(Keyboard, EnterInTheTableSetupWaitsForAChange) {
  OpenUnlockedSetup();
  SetFocusTo(IDC_TS_SCISSORS);
  driver_->PressKey(dialog_, VK_RETURN);
  driver_->PressKey(dialog_, VK_TAB);  // handled after the Enter, which has closed nothing
  EXPECT_TRUE(driver_->WaitForFocus(dialog_, IDC_TS_HAS_AIR_Z));
  Type(IDC_TS_SCISSORS, L"2");
  FocusAndPress(IDC_TS_SCISSORS, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 1);
  EXPECT_EQ(StoredFloat(L"Settings", L"Scissors"), 2.0f);
}

TEST_F(Keyboard, EnterOnCancelCancels) {
  OpenOn(&ShowSetTableZeroDialog);
  FocusAndPress(IDCANCEL, VK_RETURN);
  EXPECT_EQ(driver_->Result(), 2);
}

TEST_F(Keyboard, EscapeCancelsEveryDialog) {
  LoadSettings(Record());
  const auto before = AllKeys();
  for (const ShowDialog show :
       {&ShowTableSetupDialog, &ShowSetCutterDialog, &ShowSetTableZeroDialog,
        &ShowSetTableHomeDialog, &ShowColorSettingsDialog}) {
    OpenOn(show);
    driver_->PressKey(dialog_, VK_ESCAPE);
    EXPECT_EQ(driver_->Result(), 2);
  }
  EXPECT_EQ(AllKeys(), before);
  OpenSettings();
  driver_->PressKey(dialog_, VK_ESCAPE);
  EXPECT_EQ(driver_->Result(), 2);
}

}  // namespace
}  // namespace k7
