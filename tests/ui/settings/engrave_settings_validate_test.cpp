#include "ui/settings/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

class ValidateEngraveSettingsTest : public SettingsDialogTest {
 protected:
  // Presses "Run Job" and "Apply & Exit" in turn: each shows the box, stays open and puts the
  // focus.
  void ExpectRefused(int field, const wchar_t* text, const wchar_t* caption) {
    for (const int button : {IDOK, IDC_CS_APPLY}) {
      const auto before = AllKeys();
      Press(dialog_, button);
      const BoxSeen box = driver_->AnswerBox(dialog_, IDOK);
      EXPECT_EQ(box.text, text);
      EXPECT_EQ(box.caption, caption);
      EXPECT_EQ(box.buttons, std::vector<std::wstring>{L"OK"});
      EXPECT_FALSE(box.hasIcon);
      EXPECT_EQ(box.owner, dialog_);
      ASSERT_TRUE(driver_->WaitUntilTop(dialog_));
      if (field != 0) {
        EXPECT_TRUE(driver_->WaitForFocus(dialog_, field)) << driver_->FocusedControl();
        const int length = static_cast<int>(Text(field).size());
        EXPECT_EQ(SelectedRange(dialog_, field), std::make_pair(0, length));
      }
      EXPECT_EQ(AllKeys(), before) << "nothing is written";
    }
  }
};

TEST_F(ValidateEngraveSettingsTest, EveryMaximumIsChecked) {
  constexpr struct {
    int field;
    const wchar_t* good;
    const wchar_t* bad;
    const wchar_t* text;
  } kRules[] = {
      {1048, L"10", L"10.001", L"Cutter Down Speed Exceeds Maximum Allowed Value"},
      {1047, L"10", L"10.001", L"Traverse Speed Exceeds Maximum Allowed Value"},
      {1046, L"1", L"1.001", L"Engrave Depth Exceeds Maximum Allowed Value"},
      {1049, L"10", L"10.001", L"Cutter Up Speed Exceeds Maximum Allowed Value"},
      {1055, L"10", L"10.001", L"Engrave Speed Exceeds Maximum Allowed Value"},
      {1181, L"10", L"10.001", L"Grid Speed Exceeds Maximum Allowed Value"},
  };
  Open();
  for (const auto& rule : kRules) {
    Type(rule.field, rule.bad);
    ExpectRefused(rule.field, rule.text, L"Value Exceeds Max");
    Type(rule.field, rule.good);
  }
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101) << "values equal to their maxima pass";
}

TEST_F(ValidateEngraveSettingsTest, TheCutterLiftHasAMinimum) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.09");
  ExpectRefused(IDC_CS_CUTTER_LIFT, L"Cutter Lift Should Be At Least 0.100 Or Greater",
                L"Value Less Than Minimum");
}

TEST_F(ValidateEngraveSettingsTest, MaximaAreComparedAsTheyAreShown) {
  WriteFloat(L"Maximum Values", L"XY Speed", 10.00004f);  // shown as 10.0000
  Open();
  Type(IDC_CS_TRAVERSE_SPEED, L"10.00003");
  ExpectRefused(IDC_CS_TRAVERSE_SPEED, L"Traverse Speed Exceeds Maximum Allowed Value",
                L"Value Exceeds Max");
}

TEST_F(ValidateEngraveSettingsTest, AHiddenGridSpeedIsChecked) {
  WriteFloat(L"Engrave Settings", L"Grid Speed", 11.0f);
  Open(1, 1, 0, 0);
  ASSERT_FALSE(Shown(IDC_CS_GRID_SPEED));
  Press(dialog_, IDOK);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDOK).text, L"Grid Speed Exceeds Maximum Allowed Value");
}

TEST_F(ValidateEngraveSettingsTest, AHiddenCutterLiftBlocksTheJobWithAirZ) {
  WriteInt(L"Axis Z", L"Air Z", 1);
  WriteFloat(L"Engrave Settings", L"Cutter Lift", 0.05f);
  Open();
  ASSERT_FALSE(Shown(IDC_CS_CUTTER_LIFT));
  Press(dialog_, IDOK);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDOK).text,
            L"Cutter Lift Should Be At Least 0.100 Or Greater");
}

TEST_F(ValidateEngraveSettingsTest, TheSpringPressureKeepsTheRuleOfTheDepth) {
  WriteInt(L"Engrave Settings", L"Cutter Mode", 2);
  Open();
  ASSERT_EQ(Text(IDC_CS_ENGRAVE_DEPTH_LABEL), L"Spring Pressure");
  Type(IDC_CS_ENGRAVE_DEPTH, L"1.5");
  ExpectRefused(IDC_CS_ENGRAVE_DEPTH, L"Engrave Depth Exceeds Maximum Allowed Value",
                L"Value Exceeds Max");
}

TEST_F(ValidateEngraveSettingsTest, PassCopiesAreChecked) {
  Open();
  Click(dialog_, IDC_CS_MULTI_PASS);
  Pick(dialog_, IDC_CS_MULTI_PASS_MODE, 1);
  Type(IDC_CS_PASS_DEPTH_OR_COPIES, L"1.4");
  ExpectRefused(IDC_CS_PASS_DEPTH_OR_COPIES, L"Number of Pass Copies Must Be At Least 2 Or Greater",
                L"Value Too Low");
  Type(IDC_CS_PASS_DEPTH_OR_COPIES, L"1.5");
  EXPECT_EQ(CloseBy(IDOK), 1);
}

TEST_F(ValidateEngraveSettingsTest, PassDepthsAreChecked) {
  Open();
  Click(dialog_, IDC_CS_MULTI_PASS);
  Type(IDC_CS_PASS_DEPTH_OR_COPIES, L"0.07");
  ExpectRefused(IDC_CS_PASS_DEPTH_OR_COPIES, L"Maximum Pass Depth Exceeds Engrave Depth",
                L"Value Exceeds Max");
  Type(IDC_CS_PASS_DEPTH_OR_COPIES, L"0.05");
  Type(IDC_CS_FINISH_DEPTH, L"0.07");
  ExpectRefused(IDC_CS_FINISH_DEPTH, L"Maximum Finish Depth Exceeds Engrave Depth",
                L"Value Exceeds Max");
  Click(dialog_, IDC_CS_MULTI_PASS);
  EXPECT_EQ(CloseBy(IDOK), 1) << "without multi-pass they do not matter";
}

TEST_F(ValidateEngraveSettingsTest, TheCircumferenceIsChecked) {
  WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  WriteInt(L"Axis Round", L"Mode", 1);
  File().WriteText(L"Axis Round", L"Circumference", L"0.0009");
  Open();
  ExpectRefused(IDC_CS_CIRCUMFERENCE, L"Circumference value is invalid", L"Invalid Value");
  Pick(dialog_, IDC_CS_ROUND_FIXTURE, 0);
  EXPECT_EQ(CloseBy(IDOK), 1);
}

TEST_F(ValidateEngraveSettingsTest, AThousandthAndANegativeCircumferencePass) {
  WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  WriteInt(L"Axis Round", L"Mode", 1);
  for (const wchar_t* circumference : {L"0.001", L"-5"}) {
    File().WriteText(L"Axis Round", L"Circumference", circumference);
    Open();
    EXPECT_EQ(CloseBy(IDOK), 1) << circumference;
  }
}

TEST_F(ValidateEngraveSettingsTest, AnEmptySpeedPassesAndAnEmptyLiftDoesNot) {
  Open();
  for (const int id : {1048, 1047, 1046, 1049, 1055, 1181}) Type(id, L"");
  Type(IDC_CS_CUTTER_LIFT, L"");
  ExpectRefused(IDC_CS_CUTTER_LIFT, L"Cutter Lift Should Be At Least 0.100 Or Greater",
                L"Value Less Than Minimum");
  Type(IDC_CS_CUTTER_LIFT, L"0.1");
  EXPECT_EQ(CloseBy(IDOK), 1);
}

TEST_F(ValidateEngraveSettingsTest, AModifiedBufferIsRemindedOfWithoutTouchingTheFocus) {
  dialogState.engraveBufferModified = 1;
  Open();
  SetFocusTo(IDC_CS_ENGRAVE_SPEED);
  SendDlgItemMessageW(dialog_, IDC_CS_ENGRAVE_SPEED, EM_SETSEL, 1, 2);
  SendMessageW(dialog_, WM_NULL, 0, 0);
  PostMessageW(dialog_, WM_COMMAND, IDOK, 0);
  const BoxSeen box = driver_->AnswerBox(dialog_, IDOK);
  EXPECT_EQ(box.text,
            L"Your Engrave Buffer has been modified. Always reset your Table Zero after modifying "
            L"Engrave Buffer");
  EXPECT_EQ(box.caption, L"Extra Step Required");
  EXPECT_TRUE(driver_->WaitForFocus(dialog_, IDC_CS_ENGRAVE_SPEED));
  EXPECT_EQ(SelectedRange(dialog_, IDC_CS_ENGRAVE_SPEED), std::make_pair(1, 2));
  EXPECT_EQ(dialogState.engraveBufferModified, 1);
  dialogState.engraveBufferModified = 0;
  EXPECT_EQ(CloseBy(IDOK), 1);
}

}  // namespace
}  // namespace k7
