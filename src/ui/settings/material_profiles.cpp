#include "ui/settings/material_profiles.h"

#include <commdlg.h>

#include <cwchar>

#include "base/bounded_copy.h"
#include "device/module_state.h"
#include "session/library_folders.h"
#include "settings/paths.h"
#include "settings/profile_name.h"
#include "settings/schema.h"
#include "ui/common/current_directory.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/engrave_lists.h"
#include "ui/settings/engrave_settings.h"
#include "ui/settings/filling.h"

namespace k7 {
namespace {

// A folder on a failing drive is given up after so many failures in a row.
constexpr int kMaxSearchFailures = 100;
constexpr int kMaxDeletedName = 64;

// The material folder followed by "\" and `rest`, cut.
SettingsPath InMaterialFolder(const wchar_t* rest) noexcept {
  SettingsPath path{};
  GetMaterialLibraryFolder(*dialogDevice, path.text, kPathCapacity);
  AppendText(path.text, L"\\");
  AppendText(path.text, rest);
  return path;
}

SettingsPath ProfilePath(const wchar_t* name) noexcept {
  FieldText file;
  CopyText(file.text, name);
  AppendText(file.text, L".ini");
  return InMaterialFolder(file.text);
}

// A directory search; closed at the end of the scope.
class Search {
 public:
  explicit Search(const wchar_t* pattern) noexcept : handle_(FindFirstFileW(pattern, &found_)) {}
  ~Search() {
    if (IsOpen()) FindClose(handle_);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool IsOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
  wchar_t* FileName() noexcept { return found_.cFileName; }
  bool Next() noexcept {
    for (int failures = 0; failures < kMaxSearchFailures; ++failures) {
      if (FindNextFileW(handle_, &found_)) return true;
      if (GetLastError() == ERROR_NO_MORE_FILES) return false;
    }
    return false;
  }

 private:
  WIN32_FIND_DATAW found_{};
  HANDLE handle_;
};

}  // namespace

void FillMaterialList(HWND dialog, const wchar_t* name) noexcept {
  if (dialog == nullptr || dialogDevice == nullptr) return;
  const HWND list = GetDlgItem(dialog, IDC_CS_MATERIAL);
  if (list == nullptr) return;
  SettingsPath folder{};
  GetMaterialLibraryFolder(*dialogDevice, folder.text, kPathCapacity);
  if (folder.text[0] == L'\0') return;
  AppendText(folder.text, L"\\*.*");
  FieldText wanted;
  if (name != nullptr) {
    CopyText(wanted.text, name);
  } else {
    wanted = ReadText(dialog, IDC_CS_MATERIAL);
  }

  ClearList(dialog, IDC_CS_MATERIAL);
  Search search{folder.text};
  if (!search.IsOpen()) return;
  int count = 0;
  int match = -1;
  do {
    wchar_t* const file = search.FileName();
    if (!IsProfileFileName(file)) continue;  // to the condition, which finds the next file
    CutProfileExtension(file);
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(file));
    if (std::wcscmp(file, wanted.text) == 0) match = count;
    ++count;
  } while (search.Next());
  if (match >= 0) Select(dialog, IDC_CS_MATERIAL, match);
  EnableControl(dialog, IDC_CS_DELETE_MATERIAL, match >= 0);
}

void ClearMaterialSelection(HWND dialog) noexcept {
  Select(dialog, IDC_CS_MATERIAL, -1);
  EnableControl(dialog, IDC_CS_DELETE_MATERIAL, false);
}

void OnPickMaterial(HWND dialog) noexcept {
  if (FillingOf(dialog) == Filling::AtOpening || dialogDevice == nullptr) return;
  const FieldText name = ReadText(dialog, IDC_CS_MATERIAL);
  if (name.IsEmpty()) return;
  LoadEngraveSettings(dialog, ProfilePath(name.text).text);
  EnableControl(dialog, IDC_CS_DELETE_MATERIAL, true);
}

void OnSaveMaterial(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  const FieldText name = ReadText(dialog, IDC_CS_MATERIAL);
  SettingsPath path = InMaterialFolder(name.IsEmpty() ? L"*.ini" : name.text);
  if (path.text[0] == L'\0') return;

  OPENFILENAMEW choice{};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = dialog;
  choice.lpstrFilter = L"Material Settings (*.ini)\0*.ini\0";
  choice.nFilterIndex = 1;
  choice.lpstrFile = path.text;
  choice.nMaxFile = kPathCapacity;
  choice.lpstrDefExt = L"ini";
  choice.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_EXTENSIONDIFFERENT |
                 OFN_PATHMUSTEXIST | OFN_DONTADDTORECENT;
  {
    const KeepCurrentDirectory keep;
    if (!GetSaveFileNameW(&choice)) return;
  }
  if (!ValidateEngraveSettings(dialog)) return;
  SaveEngraveSettings(dialog, path.text);

  FieldText saved;
  ProfileNameOfPath(path.text, saved.text, kFieldCapacity);
  FillMaterialList(dialog, saved.text);
}

void OnDeleteMaterial(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  // KEEP: a longer name is cut, and the cut name is what is deleted.
  wchar_t name[kMaxDeletedName + 1] = L"";
  GetDlgItemTextW(dialog, IDC_CS_MATERIAL, name, kMaxDeletedName + 1);
  wchar_t question[kMaxDeletedName + 64];
  CopyText(question, L"Delete \"");
  AppendText(question, name);
  AppendText(question, L"\" Material Profile?");
  if (MessageBoxW(dialog, question, L"Delete Material Profile", MB_YESNO) != IDYES) return;

  DeleteFileW(ProfilePath(name).text);
  EngraveFile(nullptr).WriteText(settings::kMaterialProfile, L"");
  FillMaterialList(dialog, nullptr);
  if (!IsWindowEnabled(GetDlgItem(dialog, IDC_CS_DELETE_MATERIAL))) {
    // It had the keyboard, and no key would reach the dialog any more.
    const HWND list = GetDlgItem(dialog, IDC_CS_MATERIAL);
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list), TRUE);
  }
  // KEEP: "Run Job" is enabled whatever its state before.
  EnableControl(dialog, IDOK, true);
}

void OnImportNotice(HWND dialog) noexcept {
  MessageBoxW(dialog, L"Importing a material profile", L"Import...", MB_OK);
}

}  // namespace k7
