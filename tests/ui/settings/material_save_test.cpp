#include <gmock/gmock.h>

#include <windows.h>
// After windows.h, whose types it needs.
#include <commdlg.h>

#include "support/replaced_import.h"
#include "ui/settings/material_profiles_fixture.h"

extern "C" BOOL(WINAPI* __imp_GetSaveFileNameW)(LPOPENFILENAMEW);

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;

// Controls of the system's save dialog.
constexpr int kNameFields[] = {0x47C, 0x480};
constexpr int kFileTypes = 0x470;

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
    return k7test::KeyFile{path}.ReadFloat(L"Engrave Settings", L"Cutter Lift", -1.0f);
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
  EXPECT_EQ(StoredIn(PathOf(L"Walnut.ini"), L"Engrave Settings", L"Material Profile"), L"(none)");
  EXPECT_EQ(AllKeys(), before) << "nothing goes to the controller's own file";
}

TEST_F(SaveMaterialTest, OffersProfilesOnly) {
  Open();
  const HWND saving = OpenSaving();
  EXPECT_EQ(GetWindow(saving, GW_OWNER), dialog_);
  EXPECT_THAT(EntriesOf(saving, kFileTypes), ElementsAre(L"Material Settings (*.ini)"));
  CloseOver(saving, IDCANCEL);
}

// What the system's save dialog was asked for, by a user who cancels it at once.
struct Asked {
  HWND owner;
  std::wstring filter, file, extension;
  DWORD filterIndex, fileCapacity, flags;
  bool hasTitle;
};
std::optional<Asked> asked;
BOOL WINAPI CancelSaving(LPOPENFILENAMEW choice) {
  const wchar_t* filterEnd = choice->lpstrFilter;
  while (*filterEnd != L'\0') filterEnd += std::wcslen(filterEnd) + 1;
  asked = {choice->hwndOwner,    {choice->lpstrFilter, filterEnd},
           choice->lpstrFile,    choice->lpstrDefExt,
           choice->nFilterIndex, choice->nMaxFile,
           choice->Flags,        choice->lpstrTitle != nullptr};
  return FALSE;
}

TEST_F(SaveMaterialTest, AsksTheSystemsDialogForAProfileInTheMaterialFolder) {
  constexpr std::wstring_view kFilter{L"Material Settings (*.ini)\0*.ini\0", 32};
  const ReplacedImport replaced{__imp_GetSaveFileNameW, &CancelSaving};
  MakeProfile(L"Oak.ini");
  Open();
  for (const wchar_t* name : {L"", L"Oak"}) {
    if (*name != L'\0') Choose(name);
    asked.reset();
    Click(dialog_, IDC_CS_SAVE_MATERIAL);
    ASSERT_TRUE(asked.has_value());
    EXPECT_EQ(asked->owner, dialog_);
    EXPECT_EQ(asked->filter, kFilter);
    EXPECT_EQ(asked->filterIndex, 1u);
    EXPECT_EQ(asked->file, PathOf(*name == L'\0' ? L"*.ini" : name));
    EXPECT_EQ(asked->fileCapacity, 512u);
    EXPECT_EQ(asked->extension, L"ini");
    EXPECT_FALSE(asked->hasTitle);
    EXPECT_EQ(asked->flags, 0x02000C06u);
  }
}

// A user who browses to another folder before saving there.
std::wstring browsedTo;
BOOL WINAPI BrowseAndSave(LPOPENFILENAMEW choice) {
  SetCurrentDirectoryW(browsedTo.c_str());
  std::wcscpy(choice->lpstrFile, (browsedTo + L"\\Walnut.ini").c_str());
  return TRUE;
}

TEST_F(SaveMaterialTest, LeavesTheHostInTheFolderThatItWasIn) {
  browsedTo = std::filesystem::path{folder_}.parent_path().wstring();
  const std::filesystem::path before = std::filesystem::current_path();
  ASSERT_NE(before, browsedTo);
  const ReplacedImport replaced{__imp_GetSaveFileNameW, &BrowseAndSave};
  Open();
  Click(dialog_, IDC_CS_SAVE_MATERIAL);
  EXPECT_EQ(std::filesystem::current_path(), before);
  EXPECT_EQ(LiftIn(browsedTo + L"\\Walnut.ini"), 0.125f) << "and saves where the user chose";
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
