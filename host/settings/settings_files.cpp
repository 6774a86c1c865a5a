#include "settings/settings_files.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <shlobj.h>

#include <algorithm>

#include "core/text.h"
#include "settings/system_error.h"

namespace k7host {
namespace {

constexpr wchar_t kExtension[] = L".ini";
constexpr char kNoIdentity[] = "0000000000000000";
constexpr LONGLONG kLargestFile = 16 << 20;  // a settings file has a few thousand bytes

class SystemPage : public CodePage {
 public:
  std::string ToUtf8(std::string_view bytes) const override {
    if (bytes.empty()) return "";
    std::wstring wide(bytes.size(), L'\0');
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()),
                                           wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(length));
    return NarrowText(wide);
  }
  std::optional<std::string> FromUtf8(std::string_view text) const override {
    if (text.empty()) return "";
    const std::wstring wide = WideText(text);
    std::string bytes(wide.size() * 4, '\0');
    const int length =
        WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(length));
    // A character that the code page lacks comes back as another one.
    if (ToUtf8(bytes) != text) return std::nullopt;
    return bytes;
  }
};

// A path has a folder, a drive or an extension; an identity has none.
bool LooksLikePath(const std::string& which) {
  return which.find_first_of("\\/.:") != std::string::npos;
}

}  // namespace

const CodePage& SystemCodePage() {
  static const SystemPage page;
  return page;
}

std::wstring ControllersFolder() {
  wchar_t path[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_DEFAULT, path);
  return std::wstring(path) + L"\\Penfold Hatch\\Veltrana\\Controllers";
}

std::wstring SettingsPath(const std::string& id) {
  return ControllersFolder() + L"\\" + WideText(id) + kExtension;
}

std::vector<std::string> ControllersWithSettings() {
  std::vector<std::string> ids;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((ControllersFolder() + L"\\*.ini").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return ids;
  do {
    std::wstring name = found.cFileName;
    constexpr std::size_t kCut = sizeof kExtension / sizeof *kExtension - 1;
    if (name.size() <= kCut || name[name.size() - kCut] != L'.') continue;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
    name.resize(name.size() - kCut);
    if (NarrowText(name) != kNoIdentity) ids.push_back(NarrowText(name));
  } while (FindNextFileW(search, &found) != 0);
  FindClose(search);
  std::sort(ids.begin(), ids.end());
  return ids;
}

FileBytes ReadWholeFile(const std::wstring& path) {
  FileBytes result;
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    const DWORD code = GetLastError();
    if (code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND) return result;
    result.exists = true;
    result.error = "cannot read " + NarrowText(path) + ": " + ErrorText(code);
    return result;
  }
  result.exists = true;
  LARGE_INTEGER size{};
  DWORD read = 0;
  if (GetFileSizeEx(file, &size) == 0 || size.QuadPart > kLargestFile) {
    result.error = NarrowText(path) + " is no settings file: it has more than 16 MiB";
  } else {
    result.bytes.resize(static_cast<std::size_t>(size.QuadPart));
    if (ReadFile(file, result.bytes.data(), static_cast<DWORD>(size.QuadPart), &read, nullptr) ==
            0 ||
        read != size.QuadPart) {
      result.error = "cannot read " + NarrowText(path) + ": " + LastError();
    }
  }
  CloseHandle(file);
  return result;
}

ChosenFile ChooseSettingsFile(const std::string& which, const std::string& id,
                              const std::string& file) {
  ChosenFile chosen;
  const bool path = !file.empty() || LooksLikePath(which);
  if (path) {
    chosen.path = WideText(file.empty() ? which : file);
    return chosen;
  }
  chosen.id = id.empty() ? which : id;
  if (chosen.id.empty()) {
    const std::vector<std::string> ids = ControllersWithSettings();
    if (ids.size() != 1) {
      std::string all;
      for (const std::string& one : ids) all += (all.empty() ? "" : ", ") + one;
      chosen.error = ids.empty()
                         ? "there are no settings in " + NarrowText(ControllersFolder()) +
                               "; name a file with --file"
                         : "several controllers have settings, choose one with --id: " + all;
      return chosen;
    }
    chosen.id = ids.front();
  }
  chosen.path = SettingsPath(chosen.id);
  return chosen;
}

std::vector<SettingsFault> CheckSettingsFile(const std::wstring& path) {
  const FileBytes read = ReadWholeFile(path);
  if (!read.error.empty()) {
    return {{Severity::Wrong, "", read.error, "see who may read it, and what it is"}};
  }
  if (!read.exists) return {};
  return CheckSettings(IniText(read.bytes, SystemCodePage()));
}

}  // namespace k7host
