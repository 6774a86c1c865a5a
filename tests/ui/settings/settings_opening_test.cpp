#include <gmock/gmock.h>

#include "ui/home_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

// What comes before the settings dialog appears.
class SettingsOpeningTest : public HomeDialogTest {
 protected:
  SettingsOpeningTest() {
    onHostThread_ = [this] {
      parent_ = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                nullptr, nullptr);  // ends with its thread
    };
  }
  static bool IsSettingsDialog(HWND dialog) {
    return dialog != nullptr && GetDlgItem(dialog, IDC_CS_APPLY) != nullptr;
  }
  static bool IsTableHomeDialog(HWND dialog) {
    return dialog != nullptr && GetDlgItem(dialog, IDC_TH_LITERAL) != nullptr;
  }
  // Whether the dialog is the parent's, which takes no input meanwhile.
  bool BelongsToParent(HWND dialog) const {
    return parent_ != nullptr && GetWindow(dialog, GW_OWNER) == parent_ &&
           !IsWindowEnabled(parent_);
  }
};

TEST_F(SettingsOpeningTest, BeforeAJobTheTableHomeIsAskedForFirst) {
  for (const int button : {IDOK, IDCANCEL}) {
    Record().position.tableHomed = 0;
    Open(1);
    EXPECT_TRUE(IsTableHomeDialog(dialog_));
    EXPECT_TRUE(BelongsToParent(dialog_));
    Press(dialog_, button);
    ASSERT_TRUE(WaitUntil([&] { return IsSettingsDialog(driver_->Top()); })) << "whatever it said";
    dialog_ = driver_->Top();
    EXPECT_TRUE(BelongsToParent(dialog_));
    EXPECT_EQ(dialogDevice, &Record());
    EXPECT_EQ(CloseBy(IDCANCEL), 2);
  }
}

TEST_F(SettingsOpeningTest, OutsideOfAJobTheTableHomeIsNotAskedFor) {
  for (const std::uint32_t mode : {0u, 2u}) {
    Open(mode);
    EXPECT_TRUE(IsSettingsDialog(dialog_)) << mode;
    CloseBy(IDCANCEL);
  }
}

TEST_F(SettingsOpeningTest, AMachineAtHomeIsNotAskedAgain) {
  Record().position.tableHomed = 1;
  FitAllSwitches();
  Open(1);
  EXPECT_TRUE(IsSettingsDialog(dialog_));
  EXPECT_THAT(Sent(), testing::Not(testing::HasSubstr("G28")));
}

TEST_F(SettingsOpeningTest, AMachineWithAllSwitchesHomesItselfFirst) {
  FitAllSwitches();
  Open(1);
  EXPECT_TRUE(IsSettingsDialog(dialog_));
  EXPECT_THAT(Sent(), testing::HasSubstr(kHoming));
}

// An earlier dialog that was left with a changed machine.
TEST_F(SettingsOpeningTest, EveryDialogStartsWithTheResultOfApplied) {
  Record().position.tableHomed = 1;
  dialogState.applyResult = 2;
  Open(1);
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101);
}

}  // namespace
}  // namespace k7
