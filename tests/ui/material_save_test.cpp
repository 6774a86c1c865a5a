#include <gmock/gmock.h>

#include "ui/material_profiles_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;

// Controls of the system's save dialog.
constexpr int kNameFields[] = {0x47C, 0x480};
constexpr int kFileTypes = 0x470;
constexpr int kReadOnlyBox = 0x410;

class SaveMaterialTest : public MaterialProfilesTest {
 protected:
  HWND OpenSaving() { return OpenOver(IDC_CS_SAVE_MATERIAL); }
  std::wstring ProposedName(HWND saving) {
    for (const int id : kNameFields) {
      if (const std::wstring text = TextOf(saving, id); !text.empty()) return text;
    }
    return L"";
  }
  // Types the name and saves; does not wait.
  void SaveAs(HWND saving, const std::wstring& path) {
    for (const int id : kNameFields) {
      if (GetDlgItem(saving, id) != nullptr) SetDlgItemTextW(saving, id, path.c_str());
    }
    Press(saving, IDOK);
  }
  void WaitUntilSaved() {
    EXPECT_TRUE(driver_->WaitUntilTop(dialog_));
    WaitUntilHandled();
  }
  float LiftIn(const std::wstring& path) {
    return SettingsFile{path.c_str()}.ReadFloat(keys::kEngraveSettings, keys::kCutterLift, -1.0f);
  }
};

TEST_F(SaveMaterialTest, WritesTheProfileAndSelectsIt) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.625");
  const auto before = AllKeys();
  const HWND saving = OpenSaving();
  EXPECT_EQ(ProposedName(saving), L"*.ini");
  SaveAs(saving, PathOf(L"Walnut"));
  WaitUntilSaved();
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Walnut");
  EXPECT_TRUE(Exists(L"Walnut.ini")) << "with the extension";
  EXPECT_EQ(LiftIn(PathOf(L"Walnut.ini")), 0.625f);
  EXPECT_EQ(StoredIn(PathOf(L"Walnut.ini"), keys::kEngraveSettings, keys::kMaterialProfile),
            L"(none)");
  EXPECT_EQ(AllKeys(), before) << "nothing goes to the controller's own file";
}

TEST_F(SaveMaterialTest, OffersProfilesOnlyAndNoReadOnlyBox) {
  Open();
  const HWND saving = OpenSaving();
  EXPECT_EQ(GetWindow(saving, GW_OWNER), dialog_);
  EXPECT_THAT(EntriesOf(saving, kFileTypes), ElementsAre(L"Material Settings (*.ini)"));
  EXPECT_FALSE(IsShown(saving, kReadOnlyBox));
  CloseOver(saving, IDCANCEL);
}

TEST_F(SaveMaterialTest, ProposesTheNameOfTheSelectedProfile) {
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  const HWND saving = OpenSaving();
  EXPECT_EQ(ProposedName(saving), L"Oak");
  CloseOver(saving, IDCANCEL);
}

TEST_F(SaveMaterialTest, AsksBeforeItReplacesAProfile) {
  MakeProfile(L"Oak.ini", 0.5f);
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.75");
  const HWND saving = OpenSaving();
  SaveAs(saving, PathOf(L"Oak.ini"));
  EXPECT_THAT(driver_->AnswerBox(saving, IDNO).buttons, ElementsAre(L"Yes", L"No"));
  ASSERT_TRUE(driver_->WaitUntilTop(saving)) << "another name may be typed";
  EXPECT_EQ(LiftIn(PathOf(L"Oak.ini")), 0.5f);
  SaveAs(saving, PathOf(L"Oak.ini"));
  EXPECT_THAT(driver_->AnswerBox(saving, IDYES).buttons, ElementsAre(L"Yes", L"No"));
  WaitUntilSaved();
  EXPECT_EQ(LiftIn(PathOf(L"Oak.ini")), 0.75f);
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak");
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
}

TEST_F(SaveMaterialTest, SavedElsewhereNoProfileIsSelected) {
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  const std::wstring elsewhere =
      (std::filesystem::path{folder_}.parent_path() / L"Elsewhere.ini").wstring();
  SaveAs(OpenSaving(), elsewhere);
  WaitUntilSaved();
  EXPECT_EQ(LiftIn(elsewhere), 0.5f);
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), ElementsAre(L"Oak"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

TEST_F(SaveMaterialTest, AFolderThatIsNotThereIsRefused) {
  Open();
  const HWND saving = OpenSaving();
  SaveAs(saving, PathOf(L"nowhere\\Walnut.ini"));
  const HWND box = driver_->WaitForDialogOver(saving);
  ASSERT_NE(box, nullptr);
  Press(box, IDOK);
  ASSERT_TRUE(driver_->WaitUntilTop(saving));
  CloseOver(saving, IDCANCEL);
  EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(SaveMaterialTest, CancelledWritesNothing) {
  Open();
  CloseOver(OpenSaving(), IDCANCEL);
  EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(SaveMaterialTest, ValuesThatBreakARuleAreNotSaved) {
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0");
  const HWND saving = OpenSaving();
  SaveAs(saving, PathOf(L"Walnut"));
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(saving) || !IsWindowVisible(saving); }));
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDOK).caption, L"Value Less Than Minimum");
  WaitUntilHandled();
  EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

}  // namespace
}  // namespace k7
