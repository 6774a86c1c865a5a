#include "ui/material_profiles.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "settings/library_folders.h"
#include "support/wait_until.h"
#include "ui/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kSaveNameFields[] = {0x47C, 0x480};  // the name in the common save dialog

class MaterialProfilesTest : public SettingsDialogTest {
 protected:
  MaterialProfilesTest() {
    wchar_t folder[512] = L"";
    GetMaterialLibraryFolder(Record(), folder, 512);
    folder_ = folder;
  }
  std::wstring PathOf(const std::wstring& file) const { return folder_ + L"\\" + file; }
  void MakeProfile(const std::wstring& file, float lift = 0.5f) {
    SettingsFile{PathOf(file).c_str()}.WriteFloat(keys::kEngraveSettings, keys::kCutterLift, lift);
  }
  bool Exists(const std::wstring& file) const {
    return GetFileAttributesW(PathOf(file).c_str()) != INVALID_FILE_ATTRIBUTES;
  }
  void Choose(const std::wstring& name) {
    const auto entries = EntriesOf(dialog_, IDC_CS_MATERIAL);
    const auto at = std::find(entries.begin(), entries.end(), name);
    ASSERT_NE(at, entries.end());
    Pick(dialog_, IDC_CS_MATERIAL, static_cast<int>(at - entries.begin()));
  }
  // Types the name into the open common dialog and saves.
  void SaveAs(HWND saving, const std::wstring& path) {
    for (const int id : kSaveNameFields) {
      if (GetDlgItem(saving, id) != nullptr) SetDlgItemTextW(saving, id, path.c_str());
    }
    Press(saving, IDOK);
  }
  std::wstring ProposedName(HWND saving) {
    for (const int id : kSaveNameFields) {
      if (const std::wstring text = TextOf(saving, id); !text.empty()) return text;
    }
    return L"";
  }

  std::wstring folder_;
};

TEST_F(MaterialProfilesTest, ProfilesAreListedByNameInAnyCaseOfTheExtension) {
  for (const wchar_t* file :
       {L"Oak.INI", L"ash.ini", L"Brass.Ini", L".ini", L"notes.txt", L"ini"}) {
    MakeProfile(file);
  }
  std::filesystem::create_directory(PathOf(L"Foo.ini"));
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), ElementsAre(L"ash", L"Brass", L"Foo", L"Oak"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

TEST_F(MaterialProfilesTest, TheProfileLastUsedIsSelected) {
  MakeProfile(L"Oak.ini");
  MakeProfile(L"Ash.ini");
  File().WriteText(keys::kEngraveSettings, keys::kMaterialProfile, L"Oak");
  Open();
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak");
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  EXPECT_EQ(Text(IDC_CS_CUTTER_LIFT), L"0.1250") << "the fields come from the controller's file";
  CloseBy(IDC_CS_APPLY);
  EXPECT_EQ(Stored(keys::kEngraveSettings, keys::kMaterialProfile), L"Oak");
}

TEST_F(MaterialProfilesTest, NamesAreComparedWithTheirCase) {
  MakeProfile(L"Oak.ini");
  File().WriteText(keys::kEngraveSettings, keys::kMaterialProfile, L"oak");
  Open();
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
}

TEST_F(MaterialProfilesTest, AnEmptyFolderGivesAnEmptyList) {
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), IsEmpty());
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

TEST_F(MaterialProfilesTest, PickingAProfileFillsTheFieldsAndKeepsItSelected) {
  MakeProfile(L"Oak.ini", 0.75f);
  Open();
  const std::wstring before = ReadWholeFile();
  Choose(L"Oak");
  EXPECT_EQ(Text(IDC_CS_CUTTER_LIFT), L"0.7500");
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak");
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  EXPECT_EQ(dialogState.loadingProfile, 0);
  EXPECT_EQ(ReadWholeFile(), before);
  Type(IDC_CS_CUTTER_LIFT, L"0.8");
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

// KEEP: a profile has no keys for them.
TEST_F(MaterialProfilesTest, AProfileShowsDefaultMaximaAndNoLastCutter) {
  WriteFloat(keys::kMaximumValues, keys::kXySpeed, 20.0f);
  WriteFloat(keys::kEngraveSettings, keys::kLastCutterSet, 0.5f);
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  EXPECT_EQ(Text(IDC_CS_MAX_TRAVERSE_SPEED), L"10.0000");
  EXPECT_EQ(Text(IDC_CS_LAST_CUTTER), L"Last Cutter: 0.000");
}

// KEEP: a profile knows nothing of the Z axis.
TEST_F(MaterialProfilesTest, AProfileShowsTheControlsOfAZMotorEvenWithAirZ) {
  WriteInt(keys::kAxisZ, keys::kAirZ, 1);
  MakeProfile(L"Oak.ini");
  Open();
  ASSERT_FALSE(Shown(IDC_CS_CUTTER_LIFT));
  Choose(L"Oak");
  EXPECT_TRUE(Shown(IDC_CS_CUTTER_LIFT));
  EXPECT_FALSE(Shown(IDC_CS_DONT_LOWER_Z));
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
              ElementsAre(L"No Cutter Set", L"Manual Cutter"));
}

TEST_F(MaterialProfilesTest, AProfileLeavesTheSwitchesAndTheFixture) {
  FitAllSwitches();
  WriteInt(keys::kAxisRound, keys::kHasRoundAttachment, 1);
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  EXPECT_TRUE(dialogState.HasAllSwitches());
  EXPECT_TRUE(Shown(IDC_CS_ROUND_FIXTURE));
}

TEST_F(MaterialProfilesTest, AProfilesSpindleSpeedIsBoundedByTheMachine) {
  WriteInt(keys::kSpindle, keys::kMotorRpm, 1000);
  MakeProfile(L"Oak.ini");
  SettingsFile{PathOf(L"Oak.ini").c_str()}.WriteInt(keys::kSpindle, keys::kSpindleRpm, 9000);
  MakeProfile(L"Slow.ini");
  SettingsFile{PathOf(L"Slow.ini").c_str()}.WriteInt(keys::kSpindle, keys::kSpindleRpm, 700);
  Open();
  Choose(L"Oak");
  EXPECT_EQ(Text(IDC_CS_SPINDLE_RPM), L"3250");
  Choose(L"Slow");
  EXPECT_EQ(Text(IDC_CS_SPINDLE_RPM), L"700");
}

TEST_F(MaterialProfilesTest, SavingWritesTheProfileAndSelectsIt) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.625");
  Press(dialog_, IDC_CS_SAVE_MATERIAL);
  const HWND saving = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(saving, nullptr);
  EXPECT_EQ(ProposedName(saving), L"*.ini");
  SaveAs(saving, PathOf(L"Walnut"));
  ASSERT_TRUE(driver_->WaitUntilTop(dialog_));
  ASSERT_TRUE(WaitUntil([&] { return Enabled(IDC_CS_DELETE_MATERIAL); }));
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Walnut");
  EXPECT_TRUE(Exists(L"Walnut.ini")) << "with the extension";
  SettingsFile profile{PathOf(L"Walnut.ini").c_str()};
  EXPECT_EQ(profile.ReadFloat(keys::kEngraveSettings, keys::kCutterLift, 0.0f), 0.625f);
  EXPECT_EQ(StoredIn(PathOf(L"Walnut.ini"), keys::kEngraveSettings, keys::kMaterialProfile),
            L"(none)");
}

TEST_F(MaterialProfilesTest, SavingOverAProfileAsksFirst) {
  MakeProfile(L"Oak.ini", 0.5f);
  Open();
  Choose(L"Oak");
  Press(dialog_, IDC_CS_SAVE_MATERIAL);
  const HWND saving = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(saving, nullptr);
  SaveAs(saving, PathOf(L"Oak.ini"));
  const BoxSeen box = driver_->AnswerBox(saving, IDNO);
  EXPECT_THAT(box.buttons, ElementsAre(L"Yes", L"No"));
  ASSERT_TRUE(driver_->WaitUntilTop(saving));
  Press(saving, IDCANCEL);
  ASSERT_TRUE(driver_->WaitUntilTop(dialog_));
}

TEST_F(MaterialProfilesTest, ACancelledSaveWritesNothing) {
  Open();
  Press(dialog_, IDC_CS_SAVE_MATERIAL);
  const HWND saving = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(saving, nullptr);
  Press(saving, IDCANCEL);
  ASSERT_TRUE(driver_->WaitUntilTop(dialog_));
  EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(MaterialProfilesTest, ARefusedSaveWritesNoFile) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0");
  Press(dialog_, IDC_CS_SAVE_MATERIAL);
  const HWND saving = driver_->WaitForDialogOver(dialog_);
  ASSERT_NE(saving, nullptr);
  SaveAs(saving, PathOf(L"Walnut"));
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(saving) || !IsWindowVisible(saving); }));
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDOK).caption, L"Value Less Than Minimum");
  EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(MaterialProfilesTest, DeletingAsksThenRemovesTheProfile) {
  MakeProfile(L"Oak.ini");
  MakeProfile(L"Ash.ini");
  File().WriteText(keys::kEngraveSettings, keys::kMaterialProfile, L"Oak");
  Open();
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  BoxSeen box = driver_->AnswerBox(dialog_, IDNO);
  EXPECT_EQ(box.text, L"Delete \"Oak\" Material Profile?");
  EXPECT_EQ(box.caption, L"Delete Material Profile");
  EXPECT_THAT(box.buttons, ElementsAre(L"Yes", L"No"));
  EXPECT_EQ(box.owner, dialog_);
  EXPECT_TRUE(Exists(L"Oak.ini"));

  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  driver_->AnswerBox(dialog_, IDYES);
  ASSERT_TRUE(WaitUntil([&] { return !Enabled(IDC_CS_DELETE_MATERIAL); }));
  EXPECT_FALSE(Exists(L"Oak.ini"));
  EXPECT_EQ(Stored(keys::kEngraveSettings, keys::kMaterialProfile), L"");
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), ElementsAre(L"Ash"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
}

// KEEP: whatever its state before.
TEST_F(MaterialProfilesTest, AfterDeletingTheJobCanBeRun) {
  MakeProfile(L"Oak.ini");
  File().WriteText(keys::kEngraveSettings, keys::kMaterialProfile, L"Oak");
  Open(0, 1);
  ASSERT_FALSE(Enabled(IDOK));
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  driver_->AnswerBox(dialog_, IDYES);
  EXPECT_TRUE(WaitUntil([&] { return Enabled(IDOK); }));
}

// KEEP: the cut name is what is deleted.
TEST_F(MaterialProfilesTest, ALongNameIsCutToSixtyFourCharacters) {
  const std::wstring cut(64, L'x');
  const std::wstring whole = cut + L"yz";
  MakeProfile(cut + L".ini");
  MakeProfile(whole + L".ini");
  File().WriteText(keys::kEngraveSettings, keys::kMaterialProfile, whole.c_str());
  Open();
  ASSERT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), whole);
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDYES).text, L"Delete \"" + cut + L"\" Material Profile?");
  ASSERT_TRUE(WaitUntil([&] { return !Exists(cut + L".ini"); }));
  EXPECT_TRUE(Exists(whole + L".ini"));
}

TEST_F(MaterialProfilesTest, WithoutADeviceNothingIsFilled) {
  FillMaterialList(nullptr, L"Oak");
  MakeProfile(L"Oak.ini");
  Open();
  dialogDevice = nullptr;
  FillMaterialList(dialog_, L"Oak");
  dialogDevice = &Record();
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
}

}  // namespace
}  // namespace k7
