#include <windows.h>
// After windows.h, whose types it needs.
#include <commctrl.h>

#include <algorithm>

#include "device/guarded.h"
#include "support/wait_until.h"
#include "ui/settings/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

TEST_F(SettingsDialogTest, CancelEndsWithTwoAndWritesNothing) {
  Open();
  const auto before = AllKeys();
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(AllKeys(), before);
}

TEST_F(SettingsDialogTest, ApplyAndExitSavesAndEndsWithOneHundredAndOne) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101);
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Cutter Lift"), 0.5f);
}

TEST_F(SettingsDialogTest, RunJobSavesAndEndsWithOne) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.25");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Cutter Lift"), 0.25f);
}

TEST_F(SettingsDialogTest, TheRecordIsLoadedAnewUnlessCancelled) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.5");
  EXPECT_EQ(CloseBy(IDC_CS_APPLY), 101);
  EXPECT_EQ(Record().tools.cutterLift, 0.5f);
  Record().tools.cutterLift = 7.0f;
  driver_.emplace([this] { return ShowSettingsDialog(Record(), nullptr, 0, 1, 0, 1); });
  dialog_ = driver_->WaitForDialog();
  Record().tools.cutterLift = 7.0f;  // the material list has loaded the settings at opening
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(Record().tools.cutterLift, 7.0f);
}

TEST_F(SettingsDialogTest, TheCaptionIsTheFriendlyName) {
  File().WriteText(L"Settings", L"FriendlyName", L"North Bench");
  Open();
  wchar_t caption[64];
  GetWindowTextW(dialog_, caption, 64);
  EXPECT_STREQ(caption, L"North Bench");
}

// This program asks for no controls, and so has those of the last century: they know no ideal size.
TEST_F(SettingsDialogTest, HasTodaysControlsInAHostThatAsksForNone) {
  Open();
  SIZE size{};
  EXPECT_TRUE(
      SendDlgItemMessageW(dialog_, IDOK, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&size)));
  EXPECT_GT(size.cx, 0);
  const HWND own =
      CreateWindowW(L"BUTTON", L"OK", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  EXPECT_FALSE(SendMessageW(own, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&size)))
      << "the host's own windows stay as they are";
  DestroyWindow(own);
}

TEST_F(SettingsDialogTest, TheInitialParameterIsKeptInTwoSignedWords) {
  Open(1, 1, 0x8001FFFEu);
  EXPECT_EQ(dialogState.hostWordLow, -2);
  EXPECT_EQ(dialogState.hostWordHigh, -32767);
}

TEST_F(SettingsDialogTest, TheDeviceIsTheDialogsOnlyWhileItIsOpen) {
  Open();
  EXPECT_EQ(dialogDevice, &Record());
  CloseBy(IDCANCEL);
  EXPECT_EQ(dialogDevice, nullptr);
}

TEST_F(SettingsDialogTest, BothLivenessTicksAreClearedAtTheEnd) {
  speaksUnasked_ = false;
  Open();
  Record().link.alive.Alone().lastCheckTick = Record().link.alive.Alone().lastAnswerTick = 12345;
  CloseBy(IDCANCEL);
  const auto lock = Record().link.alive.Lock();
  EXPECT_EQ(Record().link.alive.Alone().lastCheckTick, 0u);
  EXPECT_EQ(Record().link.alive.Alone().lastAnswerTick, 0u);
}

TEST_F(SettingsDialogTest, StaysOpenWhileTheControllerAnswers) {
  speaksUnasked_ = false;
  Open();
  controller_.Clear();
  ASSERT_TRUE(controller_.WaitForLines(6)) << "one check every 500 ms, three seconds";
  EXPECT_EQ(driver_->Top(), dialog_);
  for (const std::string& line : controller_.Lines()) EXPECT_EQ(line, "SmoothieIsConnected\n");
}

TEST_F(SettingsDialogTest, AnyTimerChecksTheLink) {
  Open();
  controller_.Clear();
  for (int i = 0; i < 20; ++i) SendMessageW(dialog_, WM_TIMER, 7, 0);
  SendLine(Record().link, "mark\n");
  ASSERT_TRUE(controller_.WaitForLine("mark\n"));
  EXPECT_GE(std::ranges::count(controller_.Lines(), "SmoothieIsConnected\n"), 20)
      << "ten seconds of its own timer";
}

TEST_F(SettingsDialogTest, WithoutADeviceNoTimerClosesIt) {
  speaksUnasked_ = false;
  Open();
  controller_.Answer("SmoothieIsConnected\n", "");
  dialogDevice = nullptr;
  Record().link.alive.Alone().lastAnswerTick = 0;
  for (int i = 0; i < 20; ++i) SendMessageW(dialog_, WM_TIMER, 1041, 0);
  EXPECT_EQ(driver_->Top(), dialog_);
  dialogDevice = &Record();
}

TEST_F(SettingsDialogTest, ASilentControllerClosesItAsCancelled) {
  speaksUnasked_ = false;
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.75");
  controller_.Answer("SmoothieIsConnected\n", "");
  EXPECT_EQ(driver_->Result(), 2);
  EXPECT_NE(StoredFloat(L"Engrave Settings", L"Cutter Lift"), 0.75f) << "what was typed is lost";
}

TEST_F(SettingsDialogTest, TheTimerEndsWithTheDialog) {
  for (const int button : {IDCANCEL, IDC_CS_APPLY, IDOK}) {
    Open();
    CloseBy(button);
    SendLine(Record().link, "closed\n");  // what was sent before has arrived when this has
    ASSERT_TRUE(controller_.WaitForLine("closed\n"));
    controller_.Clear();
    EXPECT_FALSE(
        WaitUntil([&] { return !controller_.Lines().empty(); }, std::chrono::milliseconds{1200}));
  }
}

TEST_F(SettingsDialogTest, AnOpenJobMakesItBusy) {
  Record().job.jobOpen.Alone() = 1;
  Open();
  EXPECT_EQ(dialogState.busy, 1u);
  Record().job.jobOpen.Alone() = 0;
}

TEST_F(SettingsDialogTest, AHeldPlungeMakesItBusy) {
  Record().job.plungeHold = 1;
  Open();
  EXPECT_EQ(dialogState.busy, 1u);
}

TEST_F(SettingsDialogTest, OnlyAHoldOfOneMakesItBusy) {
  Record().job.plungeHold = 2;
  Open();
  EXPECT_EQ(dialogState.busy, 0u);
}

TEST_F(SettingsDialogTest, EnterAppliesAndExits) {
  Open();
  EXPECT_EQ(LOWORD(SendMessageW(dialog_, DM_GETDEFID, 0, 0)), IDC_CS_APPLY);
}

TEST_F(SettingsDialogTest, TheImportCommandShowsItsMessage) {
  Open();
  PostMessageW(dialog_, WM_COMMAND, IDC_CS_IMPORT_NOTICE, 0);
  const BoxSeen box = driver_->AnswerBox(dialog_, IDOK);
  EXPECT_EQ(box.text, L"Importing a material profile");
  EXPECT_EQ(box.caption, L"Import...");
  EXPECT_EQ(box.buttons, std::vector<std::wstring>{L"OK"});
}

TEST_F(SettingsDialogTest, UnknownCommandsAreIgnored) {
  Open();
  SendCommand(dialog_, 4711);
  SendCommand(dialog_, IDC_CS_IMPORT);
  SendCommand(dialog_, IDC_CS_GRID_SPEED, EN_CHANGE);
  EXPECT_EQ(driver_->Top(), dialog_);
}

// A box over the dialog lets its timer run; the dialog ends once the box has been answered.
TEST_F(SettingsDialogTest, ASilentControllerEndsItBehindAMessageBox) {
  speaksUnasked_ = false;
  Open();
  PostMessageW(dialog_, WM_COMMAND, IDC_CS_IMPORT_NOTICE, 0);
  const HWND box = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(box, nullptr);
  controller_.Answer("SmoothieIsConnected\n", "");
  ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog_); }));
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(driver_->Result(), 2);
}

}  // namespace
}  // namespace k7
