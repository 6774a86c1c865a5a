#include "ui/table_home.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/home_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr char kDialogAccepted[] = "M18\nM17\nG92 X0.000000 Y0.000000 Z0.000000\nSetTableHomed\n";

class EnsureTableHomeTest : public HomeDialogTest {
 protected:
  void Ensure() {
    LoadSettings(Record());
    Sent();
    driver_.emplace(
        [this] { return static_cast<std::int64_t>(EnsureTableHome(Record(), nullptr)); });
  }
};

TEST_F(EnsureTableHomeTest, DoesNothingOnceTheTableIsHomed) {
  FitAllSwitches();
  Record().position.tableHomed = 1;
  Ensure();
  EXPECT_EQ(driver_->Result(), 0);
  EXPECT_EQ(Sent(), "");
}

TEST_F(EnsureTableHomeTest, AMachineWithAllSwitchesHomesItself) {
  FitAllSwitches();
  Ensure();
  EXPECT_EQ(driver_->Result(), 0);
  EXPECT_EQ(Sent(), kHoming);
}

TEST_F(EnsureTableHomeTest, AnyOtherMachineAsksAndHandsOnTheResult) {
  dialogDevice = nullptr;
  for (const int button : {IDOK, IDCANCEL}) {
    Ensure();
    dialog_ = driver_->WaitForDialog();
    ASSERT_NE(dialog_, nullptr);
    EXPECT_TRUE(Shown(IDC_TH_LITERAL));
    EXPECT_EQ(dialogDevice, &Record());
    EXPECT_EQ(CloseBy(button), button);
    EXPECT_EQ(dialogDevice, nullptr);
  }
}

TEST_F(EnsureTableHomeTest, RestoresTheDeviceOfTheDialogUnderWay) {
  DeviceState other;
  dialogDevice = &other;
  Ensure();
  dialog_ = driver_->WaitForDialog();
  ASSERT_NE(dialog_, nullptr);
  CloseBy(IDCANCEL);
  EXPECT_EQ(dialogDevice, &other);
  dialogDevice = nullptr;
}

class PromptTableHomeTest : public HomeDialogTest {
 protected:
  void Prompt() {
    LoadSettings(Record());
    Sent();
    driver_.emplace(
        [this] { return static_cast<std::int64_t>(PromptTableHome(Record(), nullptr) ? 1 : 0); });
  }
  void AnswerYes() {
    const BoxSeen box = driver_->AnswerBox(nullptr, IDYES);
    EXPECT_EQ(box.text, L"Would you like to set your table home?");
    EXPECT_EQ(box.caption, L"Table Home");
    dialog_ = driver_->WaitForDialog();
    ASSERT_NE(dialog_, nullptr);
  }
  void AcceptFirstDialog() {
    Press(dialog_, IDOK);
    const HWND second = driver_->WaitForDialogOver(dialog_);
    ASSERT_NE(second, nullptr);
    dialog_ = second;
  }
};

TEST_F(PromptTableHomeTest, AsksYesOrNoAndTakesNo) {
  Prompt();
  const BoxSeen box = driver_->AnswerBox(nullptr, IDNO);
  EXPECT_EQ(box.buttons, (std::vector<std::wstring>{L"Yes", L"No"}));
  EXPECT_EQ(driver_->Result(), 1);
  EXPECT_EQ(Sent(), "");
}

TEST_F(PromptTableHomeTest, IsQuietWithoutAConnection) {
  LoadSettings(Record());
  Record().link.connected = 0;
  driver_.emplace(
      [this] { return static_cast<std::int64_t>(PromptTableHome(Record(), nullptr) ? 1 : 0); });
  EXPECT_EQ(driver_->Result(), 1);
}

TEST_F(PromptTableHomeTest, IsQuietInAJob) {
  LoadSettings(Record());
  Record().job.jobOpen.Alone() = 1;
  driver_.emplace(
      [this] { return static_cast<std::int64_t>(PromptTableHome(Record(), nullptr) ? 1 : 0); });
  EXPECT_EQ(driver_->Result(), 1);
}

TEST_F(PromptTableHomeTest, WithoutSwitchesTheDialogOpensOnce) {
  Prompt();
  AnswerYes();
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(dialogDevice, nullptr);
}

TEST_F(PromptTableHomeTest, WithAllSwitchesACancelledDialogEndsIt) {
  FitAllSwitches();
  Prompt();
  AnswerYes();
  EXPECT_EQ(CloseBy(IDCANCEL), 1);
  EXPECT_EQ(Sent(), "M18\nM17\nSetTableHomed\n");
}

TEST_F(PromptTableHomeTest, LiteralValuesHomeOnceOnly) {
  FitAllSwitches();
  Prompt();
  AnswerYes();
  Click(dialog_, IDC_TH_LITERAL);
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), std::string{"M18\nM17\n"} + kHoming);
}

TEST_F(PromptTableHomeTest, WithAllSwitchesTheReportsOfTheSwitchesBringTheHome) {
  FitAllSwitches();
  Prompt();
  AnswerYes();
  AcceptFirstDialog();
  EXPECT_EQ(Sent(), std::string{kDialogAccepted} + "M119\n" + kHoming + "M18\n");
  EXPECT_EQ(Record().position.tableHome.x, 4000);
  EXPECT_EQ(Record().position.tableHome.y, 5000);
  EXPECT_EQ(Record().position.cutterHome, 6000);
  EXPECT_EQ(StoredFloat(L"Axis X", L"Table Home"), 1.0f);
  EXPECT_EQ(StoredFloat(L"Axis Y", L"Table Home"), 1.25f);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Table Home"), 1.5f);
  EXPECT_EQ(Text(IDC_TH_X), L"1.000000") << "the second dialog shows it";
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Cutter Home"), 1.5f);
}

TEST_F(PromptTableHomeTest, AnAxisAtItsSwitchIsPulledBackAQuarterInch) {
  FitAllSwitches();
  controller_.Answer("M119\n", "min_x:1 min_y:0 min_z:1 pins: Probe: 0\r\n");
  Prompt();
  AnswerYes();
  AcceptFirstDialog();
  EXPECT_EQ(Record().position.tableHome.x, 3000);
  EXPECT_EQ(Record().position.tableHome.y, 5000);
  EXPECT_EQ(Record().position.cutterHome, 5000);
  EXPECT_EQ(StoredFloat(L"Axis X", L"Table Home"), 0.75f);
  CloseBy(IDCANCEL);
}

// KEEP: where no report brings a home, -1 stays and is written.
TEST_F(PromptTableHomeTest, RefusedHomingLeavesMinusOne) {
  FitAllSwitches();
  Prompt();
  AnswerYes();
  controller_.OnPrefix("SetTableHomed\n", [this](FakeController&, const std::string&) {
    Record().link.connected = 0;  // as a controller that was switched off just then
  });
  AcceptFirstDialog();
  EXPECT_EQ(Record().position.tableHome.x, -1);
  EXPECT_EQ(Record().position.tableHome.y, -1);
  EXPECT_EQ(Record().position.cutterHome, -1);
  EXPECT_EQ(StoredFloat(L"Axis X", L"Table Home"), -1.0f / 4000.0f);
  EXPECT_EQ(StoredFloat(L"Axis Z", L"Table Home"), -1.0f / 4000.0f);
  CloseBy(IDCANCEL);
}

// KEEP: an air-driven Z is not homed, so that its home stays -1 and is not written.
TEST_F(PromptTableHomeTest, WithAirZNothingIsWrittenForZ) {
  FitAllSwitches();
  UseAirZ();
  controller_.Answer("M119\n", "min_x:0 min_y:0 min_z:1 pins: Probe: 0\r\n");
  Prompt();
  AnswerYes();
  AcceptFirstDialog();
  EXPECT_EQ(Record().position.cutterHome, -1);
  EXPECT_EQ(Stored(L"Axis Z", L"Table Home"), L"(none)");
  EXPECT_THAT(Sent(), testing::Not(testing::HasSubstr("G28 Z0")));
  CloseBy(IDCANCEL);
}

}  // namespace
}  // namespace k7
