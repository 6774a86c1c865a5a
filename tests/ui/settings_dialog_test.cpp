#include "ui/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

TEST_F(SettingsDialogTest, CancelEndsWithTwoAndWritesNothing) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(Stored(keys::kEngraveSettings, keys::kCutterLift), L"(none)");
}

TEST_F(SettingsDialogTest, ApplyAndExitSavesAndEndsWithOneHundredAndOne) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101);
  EXPECT_EQ(StoredFloat(keys::kEngraveSettings, keys::kCutterLift), 0.5f);
}

TEST_F(SettingsDialogTest, RunJobSavesAndEndsWithOne) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.25");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(StoredFloat(keys::kEngraveSettings, keys::kCutterLift), 0.25f);
}

}  // namespace
}  // namespace k7
