#include "support/controller_id.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <shlobj.h>

#include <atomic>
#include <cwchar>
#include <filesystem>

namespace k7test {

std::wstring SettingsFileOf(const std::wstring& controllerId) {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_DEFAULT, folder);
  return std::wstring{folder} + L"\\Penfold Hatch\\Veltrana\\Controllers\\" + controllerId +
         L".ini";
}

std::wstring FreshControllerId() {
  static std::atomic<unsigned> serial{0};
  wchar_t id[17];
  std::swprintf(id, 17, L"T%07XN%07X", static_cast<unsigned>(GetCurrentProcessId()) & 0xFFFFFFFu,
                ++serial & 0xFFFFFFFu);
  const std::filesystem::path file = SettingsFileOf(id);
  std::error_code ignored;
  std::filesystem::remove(file, ignored);
  std::filesystem::remove_all(file.parent_path() / id, ignored);
  return id;
}

}  // namespace k7test
