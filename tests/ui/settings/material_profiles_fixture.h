// The settings dialog of a machine with a material folder of its own.
#pragma once

#include <algorithm>
#include <filesystem>

#include "session/library_folders.h"
#include "ui/settings/settings_dialog_fixture.h"

namespace k7 {

class MaterialProfilesTest : public SettingsDialogTest {
 protected:
  MaterialProfilesTest() {
    wchar_t folder[512] = L"";
    GetMaterialLibraryFolder(Record(), folder, 512);
    folder_ = folder;
  }
  std::wstring PathOf(const std::wstring& file) const { return folder_ + L"\\" + file; }
  void MakeProfile(const std::wstring& file, float lift = 0.5f) {
    k7test::KeyFile{PathOf(file)}.WriteFloat(L"Engrave Settings", L"Cutter Lift", lift);
  }
  bool Exists(const std::wstring& file) const {
    return GetFileAttributesW(PathOf(file).c_str()) != INVALID_FILE_ATTRIBUTES;
  }
  void Choose(const std::wstring& name) {
    const auto entries = k7test::EntriesOf(dialog_, IDC_CS_MATERIAL);
    const auto at = std::find(entries.begin(), entries.end(), name);
    ASSERT_NE(at, entries.end());
    k7test::Pick(dialog_, IDC_CS_MATERIAL, static_cast<int>(at - entries.begin()));
  }

  std::wstring folder_;
};

}  // namespace k7
