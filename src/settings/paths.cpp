#include "settings/paths.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <shlobj.h>

#include "base/bounded_copy.h"

namespace k7 {

static_assert(kPathCapacity >= MAX_PATH, "SHGetFolderPathW writes up to MAX_PATH characters");

void AppendLevel(SettingsPath& path, const wchar_t* name) noexcept {
  AppendText(path.text, L"\\");
  AppendText(path.text, name);
}

std::uint32_t AppendFolder(SettingsPath& path, const wchar_t* name) noexcept {
  AppendLevel(path, name);
  return static_cast<std::uint32_t>(CreateDirectoryW(path.text, nullptr));
}

SettingsPath ControllersFolder() noexcept {
  SettingsPath path{};
  SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_DEFAULT, path.text);
  AppendFolder(path, L"Penfold Hatch");
  AppendFolder(path, L"Veltrana");
  AppendFolder(path, L"Controllers");
  return path;
}

SettingsPath SettingsFilePath(const LinkState& link) noexcept {
  SettingsPath path = ControllersFolder();
  AppendLevel(path, link.controllerId.Get().text);
  AppendText(path.text, L".ini");
  return path;
}

std::uint32_t GetSettingsFilePath(const LinkState& link, wchar_t* buffer,
                                  std::int32_t size) noexcept {
  const SettingsPath path = SettingsFilePath(link);
  CopyText(buffer, size, path.text);
  return 0;
}

}  // namespace k7
