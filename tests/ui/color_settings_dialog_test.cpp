#include "ui/color_settings_dialog.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "ui/host_color_table.h"
#include "ui/sub_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr int kSwatches[] = {1096, 1098, 1099, 1101, 1102, 1103, 1104, 1105,
                             1106, 1107, 1108, 1109, 1110, 1111, 1112, 1113};
constexpr int kChecks[] = {1097, 1114, 1115, 1116, 1117, 1118, 1119, 1120,
                           1121, 1122, 1123, 1124, 1125, 1126, 1127, 1128};
constexpr std::uint32_t kRed = 0x0000FF;
constexpr std::uint32_t kWhite = 0xFFFFFF;

class ColorSettingsDialog : public SubDialogTest {
 protected:
  ColorSettingsDialog() { Record().host.hostColorTlsIndex = table_.Index(); }
  ~ColorSettingsDialog() override { driver_.reset(); }

  void OpenColors(bool withTable = true, bool withDevice = true) {
    DeviceState* const device = withDevice ? &Record() : nullptr;
    driver_.emplace([this, device, withTable] {
      dialogDevice = device;
      if (withTable) table_.Bind();
      const INT_PTR result = ShowColorSettingsDialog(nullptr);
      dialogDevice = nullptr;
      return static_cast<std::int64_t>(result);
    });
    dialog_ = driver_->WaitForDialog();
    ASSERT_NE(dialog_, nullptr);
  }

  std::vector<int> ShownRows() {
    std::vector<int> rows;
    for (int i = 0; i < 16; ++i) {
      EXPECT_EQ(Shown(kSwatches[i]), Shown(kChecks[i])) << i;
      if (Shown(kSwatches[i])) rows.push_back(i);
    }
    return rows;
  }
  void ExpectWarning() {
    Press(dialog_, IDOK);
    const BoxSeen box = driver_->AnswerBox(dialog_, IDOK);
    EXPECT_EQ(box.text, L"At least 1 color MUST be turned on");
    EXPECT_EQ(box.caption, L"Warning!");
    EXPECT_EQ(box.buttons, std::vector<std::wstring>{L"OK"});
    EXPECT_EQ(box.owner, dialog_);
    EXPECT_TRUE(driver_->WaitUntilTop(dialog_)) << "stays open";
  }

  HostColorTable table_;
};

TEST_F(ColorSettingsDialog, ShowsTheColorsInUseWithTheirFlags) {
  table_.Set(0, 0x000000, 3, 1);
  table_.Set(4, kRed, 1, 0);
  OpenColors();
  EXPECT_EQ(ShownRows(), (std::vector<int>{0, 4}));
  EXPECT_TRUE(Checked(1097));
  EXPECT_FALSE(Checked(1117));
  EXPECT_EQ(ColorOf(1096), 0x000000u);
  EXPECT_EQ(ColorOf(1102), kRed);
}

TEST_F(ColorSettingsDialog, PaintsEverySwatchInItsColor) {
  for (int i = 0; i < 16; ++i) table_.Set(i, 0x102030u + static_cast<std::uint32_t>(i), 1, 1);
  OpenColors();
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(ColorOf(kSwatches[i]), 0x102030u + static_cast<std::uint32_t>(i)) << i;
    EXPECT_TRUE(Checked(kChecks[i])) << i;
  }
}

TEST_F(ColorSettingsDialog, AHiddenSwatchIsPaintedAsUsual) {
  table_.Set(0, 0x123456, 1, 1);
  table_.Set(1, 0x654321, 0, 1);
  OpenColors();
  EXPECT_NE(ColorOf(1098), 0x654321u);
}

TEST_F(ColorSettingsDialog, OnlyAFlagOfOneChecks) {
  table_.Set(0, kRed, 1, 2);
  OpenColors();
  EXPECT_FALSE(Checked(1097));
}

TEST_F(ColorSettingsDialog, ColorsThatAreNotInUseAreHidden) {
  table_.Set(0, kRed, 1, 1);
  table_.Set(1, kRed, 0, 1);
  table_.Set(2, kRed, -1, 1);
  OpenColors();
  EXPECT_EQ(ShownRows(), std::vector<int>{0});
}

// KEEP: white is the material.
TEST_F(ColorSettingsDialog, WhiteIsNeverOfferedAndNeverEnough) {
  table_.Set(0, kWhite, 500, 1);
  table_.Set(1, kRed, 1, 0);
  OpenColors();
  EXPECT_EQ(ShownRows(), std::vector<int>{1});
  ExpectWarning();
  EXPECT_EQ(table_.Flag(0), 1);
  Click(dialog_, 1114);
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(table_.Flag(1), 1);
}

TEST_F(ColorSettingsDialog, NearlyWhiteIsOffered) {
  table_.Set(0, 0xFFFFFE, 1, 1);
  OpenColors();
  EXPECT_EQ(ShownRows(), std::vector<int>{0});
}

TEST_F(ColorSettingsDialog, WithNothingCheckedOkWarnsAndLeavesTheTable) {
  table_.Set(0, 0x000000, 3, 1);
  table_.Set(4, kRed, 1, 1);
  OpenColors();
  Click(dialog_, 1097);
  Click(dialog_, 1117);
  ExpectWarning();
  EXPECT_EQ(table_.Flag(0), 1);
  EXPECT_EQ(table_.Flag(4), 1);
  EXPECT_EQ(ColorOf(1102), kRed) << "the brushes live on";
}

// KEEP: a hidden row counts as unchecked and is switched off.
TEST_F(ColorSettingsDialog, OkWritesAllFlagsHiddenRowsAsOff) {
  for (int i = 0; i < 16; ++i) table_.Set(i, kRed, i < 8 ? 1 : 0, 1);
  const HostColorTable::Bytes before = table_.AsLaidOut();
  OpenColors();
  Click(dialog_, kChecks[2]);
  EXPECT_EQ(CloseBy(IDOK), 1);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(table_.Flag(i), i < 8 && i != 2 ? 1 : 0) << i;
  HostColorTable::Bytes after = table_.AsLaidOut();
  std::copy_n(before.begin() + 884, 16, after.begin() + 884);
  EXPECT_EQ(after, before) << "nothing else";
}

TEST_F(ColorSettingsDialog, CancelLeavesTheFlags) {
  table_.Set(0, 0x000000, 3, 1);
  table_.Set(4, kRed, 1, 0);
  OpenColors();
  Click(dialog_, 1097);
  Click(dialog_, 1117);
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(table_.Flag(0), 1);
  EXPECT_EQ(table_.Flag(4), 0);
}

TEST_F(ColorSettingsDialog, TheBrushesLiveAsLongAsTheDialog) {
  for (const int button : {IDOK, IDCANCEL}) {
    table_.Set(0, kRed, 1, 1);
    OpenColors();
    const HBRUSH brush = BrushOf(1096);
    EXPECT_EQ(GetObjectType(brush), static_cast<DWORD>(OBJ_BRUSH));
    CloseBy(button);
    EXPECT_EQ(GetObjectType(brush), 0u) << button;
  }
}

TEST_F(ColorSettingsDialog, OtherCommandsAndControlsAreLeftAlone) {
  table_.Set(0, kRed, 1, 1);
  OpenColors();
  SendCommand(dialog_, 1096);
  SendCommand(dialog_, 1100);
  EXPECT_NE(ColorOf(IDOK), kRed);
  EXPECT_EQ(driver_->Top(), dialog_);
}

class ColorSettingsWithoutTable : public ColorSettingsDialog {
 protected:
  void ExpectRowsAsInTheTemplate() {
    EXPECT_EQ(ShownRows().size(), 16u);
    for (const int id : kChecks) EXPECT_FALSE(Checked(id)) << id;
    ExpectWarning();
    Click(dialog_, 1097);
    EXPECT_EQ(CloseBy(IDOK), 1);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(table_.Flag(i), 0) << i;
  }
};

TEST_F(ColorSettingsWithoutTable, NoIndex) {
  Record().host.hostColorTlsIndex = 0;
  OpenColors();
  ExpectRowsAsInTheTemplate();
}

TEST_F(ColorSettingsWithoutTable, NoTableAtTheIndex) {
  OpenColors(false);
  ExpectRowsAsInTheTemplate();
}

TEST_F(ColorSettingsWithoutTable, NoDevice) {
  OpenColors(true, false);
  ExpectRowsAsInTheTemplate();
}

}  // namespace
}  // namespace k7
