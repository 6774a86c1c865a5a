#include <gmock/gmock.h>

#include "support/host_helper/install.h"
#include "ui/home_dialog_fixture.h"
#include "ui/host_color_table.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;

// The settings dialog of a machine that stands at home, and what its buttons open and do.
class SettingsButtonsTest : public HomeDialogTest {
 protected:
  SettingsButtonsTest() { Record().position.tableHomed = 1; }

  // What was sent since the last call. The dialog's own checks of the link come at any time.
  std::string SentByButtons() {
    std::string all;
    for (const std::string& line : SentLines()) {
      if (line != "SmoothieIsConnected\n") all += line;
    }
    return all;
  }
};

TEST_F(SettingsButtonsTest, ButtonsActOnAnyNotification) {
  FitAllSwitches();
  Open();
  constexpr int kOpening[] = {IDC_CS_COLOR_SETTINGS, IDC_CS_TABLE_SETUP,   IDC_CS_SET_CUTTER,
                              IDC_CS_SET_TABLE_ZERO, IDC_CS_SAVE_MATERIAL, IDC_CS_DELETE_MATERIAL,
                              IDC_CS_IMPORT_NOTICE};
  for (const int id : kOpening) {
    PostMessageW(dialog_, WM_COMMAND, MAKEWPARAM(id, 9), 0);
    const HWND above = driver_->WaitForDialogOver(dialog_);
    ASSERT_NE(above, nullptr) << id;
    EXPECT_EQ(GetWindow(above, GW_OWNER), dialog_) << id;
    CloseOver(above, GetDlgItem(above, IDNO) != nullptr       ? IDNO
                     : GetDlgItem(above, IDCANCEL) != nullptr ? IDCANCEL
                                                              : IDOK);
  }
  SentByButtons();
  SendCommand(dialog_, IDC_CS_MECHANICAL_HOME, 9);
  EXPECT_EQ(SentByButtons(), kHoming);
  CloseBy(IDCANCEL);
  constexpr struct {
    int id;
    std::int64_t result;
  } kClosing[] = {{IDOK, 1}, {IDC_CS_APPLY, 101}, {IDCANCEL, 2}};
  for (const auto& c : kClosing) {
    Open();
    PostMessageW(dialog_, WM_COMMAND, MAKEWPARAM(c.id, 9), 0);
    EXPECT_EQ(driver_->Result(), c.result) << c.id;
  }
}

TEST_F(SettingsButtonsTest, MechanicalHomeHomesTheMachine) {
  FitAllSwitches();
  Open();
  ASSERT_TRUE(Enabled(IDC_CS_MECHANICAL_HOME));
  SentByButtons();
  Click(dialog_, IDC_CS_MECHANICAL_HOME);
  EXPECT_EQ(SentByButtons(), kHoming);
  EXPECT_EQ(driver_->Top(), dialog_) << "stays open";
}

TEST_F(SettingsButtonsTest, WithoutADeviceTheyDoNothing) {
  FitAllSwitches();
  Open();
  SentByButtons();
  dialogDevice = nullptr;
  for (const int id : {IDC_CS_MECHANICAL_HOME, IDC_CS_SAVE_MATERIAL, IDC_CS_DELETE_MATERIAL}) {
    PostMessageW(dialog_, WM_COMMAND, static_cast<WPARAM>(id), 0);
  }
  WaitUntilHandled();  // nothing else has opened
  dialogDevice = &Record();
  EXPECT_EQ(SentByButtons(), "");
}

TEST_F(SettingsButtonsTest, SetCutterRefreshesTheLastCutter) {
  Open();
  const HWND cutter = OpenOver(IDC_CS_SET_CUTTER);
  WriteFloat(L"Engrave Settings", L"Last Cutter Set", 0.375f);
  SetDlgItemTextW(cutter, IDC_SC_DEPTH, L"0");
  CloseOver(cutter, IDOK);
  EXPECT_EQ(Text(IDC_CS_LAST_CUTTER), L"Last Cutter: 0.375") << "by the file";
}

TEST_F(SettingsButtonsTest, ACancelledSetCutterRefreshesNothing) {
  Open();
  const HWND cutter = OpenOver(IDC_CS_SET_CUTTER);
  WriteFloat(L"Engrave Settings", L"Last Cutter Set", 0.375f);
  CloseOver(cutter, IDCANCEL);
  EXPECT_EQ(Text(IDC_CS_LAST_CUTTER), L"Last Cutter: 0.000");
}

TEST_F(SettingsButtonsTest, SetTableZeroTakesTheReminderAway) {
  FitAllSwitches();
  dialogState.engraveBufferModified = 1;
  Open();
  const HWND zero = OpenOver(IDC_CS_SET_TABLE_ZERO);
  EXPECT_THAT(EntriesOf(zero, IDC_TZ_MODE),
              ElementsAre(L"Max Table Depth", L"Current Z Location", L"Do Z Probe"))
      << "before a job, with all switches";
  TypeText(zero, IDC_TZ_BUFFER, L"0.25");
  CloseOver(zero, IDOK);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Table Buffer"), 0.25f);
  EXPECT_EQ(Stored(L"Axis Z", L"Table Zero Mode"), L"0");
  EXPECT_EQ(CloseBy(IDOK), 1) << "the job can be run";
}

TEST_F(SettingsButtonsTest, ACancelledSetTableZeroLeavesTheReminder) {
  dialogState.engraveBufferModified = 1;
  Open();
  CloseOver(OpenOver(IDC_CS_SET_TABLE_ZERO), IDCANCEL);
  Press(dialog_, IDOK);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDOK).caption, L"Extra Step Required");
}

class ColorSettingsButtonTest : public SettingsButtonsTest {
 protected:
  ~ColorSettingsButtonTest() override { driver_.reset(); }
  HostColorTable colors_;
};

TEST_F(ColorSettingsButtonTest, SwitchesTheColorsOfTheHostsTable) {
  colors_.Set(0, 0x000000, 3, 1);
  colors_.Set(4, 0x0000FF, 1, 0);
  onHostThread_ = [&] { colors_.Bind(); };
  Record().host.hostColorTlsIndex = colors_.Index();
  Open();
  ASSERT_FALSE(Shown(IDC_CS_COLOR_SETTINGS));
  Click(dialog_, IDC_CS_ENGRAVE_BY_COLOR);
  ASSERT_TRUE(Shown(IDC_CS_COLOR_SETTINGS));
  const auto before = AllKeys();
  for (const int button : {IDCANCEL, IDOK}) {
    const HWND box = OpenOver(IDC_CS_COLOR_SETTINGS);
    EXPECT_TRUE(IsBoxChecked(box, IDC_CO_CHECK_0));
    EXPECT_FALSE(IsShown(box, IDC_CO_CHECK_1));
    Click(box, IDC_CO_CHECK_4);
    CloseOver(box, button);
    EXPECT_EQ(colors_.Flag(4), button == IDOK ? 1 : 0);
  }
  EXPECT_EQ(AllKeys(), before) << "nothing goes to the file";
}

class TableSetupButtonTest : public SettingsButtonsTest {
 protected:
  // Opens the table setup, ready to be accepted as after a change.
  HWND OpenSetup() {
    const HWND setup = OpenOver(IDC_CS_TABLE_SETUP);
    EnableWindow(GetDlgItem(setup, IDOK), TRUE);
    return setup;
  }
  static void Check(HWND setup, int box, bool checked = true) {
    SendDlgItemMessageW(setup, box, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
  }
};

TEST_F(TableSetupButtonTest, RefreshesTheMaxima) {
  Open();
  const HWND setup = OpenSetup();
  TypeText(setup, IDC_TS_MAX_XY_SPEED, L"20");
  TypeText(setup, IDC_TS_MAX_Z_SPEED, L"30");
  TypeText(setup, IDC_TS_MAX_ENGRAVE_DEPTH, L"2");
  dialogState.applyResult = 77;
  CloseOver(setup, IDOK);
  for (const int id : {1140, 1143}) EXPECT_EQ(Text(id), L"20.0000") << id;
  for (const int id : {1142, 1139}) EXPECT_EQ(Text(id), L"30.0000") << id;
  EXPECT_EQ(Text(1135), L"2.0000");
  // KEEP: the grid speed's maximum is that of the opening.
  EXPECT_EQ(Text(1182), L"10.0000");
  EXPECT_TRUE(Enabled(IDOK));
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101);
}

TEST_F(TableSetupButtonTest, FillsTheListsAnewFromTheFile) {
  WriteInt(L"Spindle", L"Spindle RPM", 9000);
  Open();
  Pick(dialog_, IDC_CS_ENGRAVE_TYPE, 1);
  Pick(dialog_, IDC_CS_RESOLUTION, 3);
  Pick(dialog_, IDC_CS_CUTTER_MODE, 1);
  Type(IDC_CS_SPINDLE_RPM, L"12");
  const HWND setup = OpenSetup();
  for (const int box : {1060, 1061, 1062, 1063}) Check(setup, box);
  TypeText(setup, IDC_TS_MOTOR_RPM, L"1000");
  CloseOver(setup, IDOK);
  EXPECT_EQ(Text(IDC_CS_SPINDLE_RPM), L"3250") << "the stored one within its new bound";
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_RESOLUTION), 0);
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_ENGRAVE_TYPE), 0);
  EXPECT_EQ(dialogState.currentEngraveType, 0u);
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 0);
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
              ElementsAre(L"No Cutter Set", L"Manual Cutter", L"Full Automatic"));
  EXPECT_TRUE(Enabled(IDC_CS_MECHANICAL_HOME)) << "the switches are there now";
}

TEST_F(TableSetupButtonTest, AppliesTheKindOfZ) {
  Open();
  const HWND setup = OpenSetup();
  Check(setup, IDC_TS_HAS_AIR_Z);
  CloseOver(setup, IDOK);
  EXPECT_FALSE(Shown(IDC_CS_CUTTER_LIFT));
  EXPECT_TRUE(Shown(IDC_CS_DONT_LOWER_Z));
  EXPECT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).back(), L"Air Z");
}

TEST_F(TableSetupButtonTest, ShowsAFixtureThatWasFitted) {
  for (const int mode : {0, 1, 2}) {
    WriteInt(L"Axis Round", L"Has Round Attachment", 0);
    WriteInt(L"Axis Round", L"Mode", mode);
    Open();
    for (const int id : {1171, 1172, 1173, 1174}) EXPECT_FALSE(Shown(id)) << id;
    const HWND setup = OpenSetup();
    Check(setup, IDC_TS_HAS_ROUND_FIXTURE);
    CloseOver(setup, IDOK);
    for (const int id : {1171, 1172}) EXPECT_TRUE(Shown(id)) << id;
    for (const int id : {1173, 1174}) EXPECT_EQ(Shown(id), mode != 0) << id << " mode " << mode;
    CloseBy(IDCANCEL);
  }
}

// KEEP: the label of the circumference alone stays.
TEST_F(TableSetupButtonTest, HidesAFixtureThatWasTakenOff) {
  for (const int mode : {0, 1, 2}) {
    WriteInt(L"Axis Round", L"Has Round Attachment", 1);
    WriteInt(L"Axis Round", L"Mode", mode);
    Open();
    for (const int id : {1171, 1172}) EXPECT_TRUE(Shown(id)) << id;
    const HWND setup = OpenSetup();
    Check(setup, IDC_TS_HAS_ROUND_FIXTURE, false);
    CloseOver(setup, IDOK);
    for (const int id : {1171, 1172, 1174}) EXPECT_FALSE(Shown(id)) << id << " mode " << mode;
    EXPECT_EQ(Shown(1173), mode != 0) << mode;
    CloseBy(IDCANCEL);
  }
}

TEST_F(TableSetupButtonTest, EditedPermanentSettingsForbidTheJob) {
  FitAllSwitches();
  Open();
  ASSERT_TRUE(Enabled(IDOK));
  ASSERT_TRUE(Enabled(IDC_CS_MECHANICAL_HOME));
  const HWND setup = OpenOver(IDC_CS_TABLE_SETUP);
  Click(setup, IDC_TS_EDIT_PERMANENT);
  TypeText(setup, IDC_TS_TABLE_WIDTH, L"24");
  CloseOver(setup, IDOK);
  EXPECT_FALSE(Enabled(IDOK));
  EXPECT_FALSE(Enabled(IDC_CS_MECHANICAL_HOME));
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101);
}

TEST_F(TableSetupButtonTest, CancelledRefreshesNothing) {
  Open();
  const HWND setup = OpenSetup();
  WriteFloat(L"Maximum Values", L"XY Speed", 20.0f);
  WriteInt(L"Axis Z", L"Air Z", 1);
  CloseOver(setup, IDCANCEL);
  EXPECT_EQ(Text(1140), L"10.0000");
  EXPECT_TRUE(Shown(IDC_CS_CUTTER_LIFT));
}

// KEEP: unlocked and then cancelled, the machine is as it was, and still the settings that are
// applied afterwards do not reach the record.
TEST_F(TableSetupButtonTest, UnlockedAndCancelledApplyEndsAsCancelled) {
  Open();
  const HWND setup = OpenOver(IDC_CS_TABLE_SETUP);
  Click(setup, IDC_TS_EDIT_PERMANENT);
  CloseOver(setup, IDCANCEL);
  EXPECT_TRUE(Enabled(IDOK));
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  Record().tools.cutterLift = 7.0f;
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 2);
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Cutter Lift"), 0.5f) << "saved all the same";
  EXPECT_EQ(Record().tools.cutterLift, 7.0f);
}

// The parameter that the host opens the settings with is its point, in thousandths of an inch.
TEST_F(TableSetupButtonTest, TheToolOffsetsAreProposedFromTheHostsParameter) {
  ASSERT_TRUE(InstalledHelper{"whole"}.Works());
  WriteInt(L"Braille", L"Bead Insert Tool", 1);
  WriteInt(L"Diode", L"Diode Pointer", 1);
  Open(1, 1, static_cast<std::uint64_t>(MAKELPARAM(1250, -125)));
  const HWND setup = OpenOver(IDC_CS_TABLE_SETUP);
  Click(setup, IDC_TS_EDIT_PERMANENT);
  for (const int button : {IDC_TS_SET_BEAD_OFFSET, IDC_TS_SET_DIODE_OFFSET}) {
    Press(setup, button);
    EXPECT_THAT(driver_->AnswerBox(setup, IDYES).text,
                testing::EndsWith(L"X: 1.250 in\nY: -0.125 in"));
    EXPECT_TRUE(driver_->WaitUntilTop(setup));
  }
  EXPECT_TRUE(WaitUntil([&] { return TextOf(setup, IDC_TS_DIODE_Y) == L"Y: -0.1250"; }));
  EXPECT_EQ(TextOf(setup, IDC_TS_DIODE_X), L"X: 1.2500");
  EXPECT_EQ(TextOf(setup, IDC_TS_BEAD_X), L"1.250");
  EXPECT_EQ(TextOf(setup, IDC_TS_BEAD_Y), L"-0.125");
  EXPECT_TRUE(IsEnabled(setup, IDOK)) << "fields have changed";
}

}  // namespace
}  // namespace k7
