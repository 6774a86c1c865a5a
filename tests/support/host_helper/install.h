// Puts a host's helper library where the driver looks for it.
#pragma once

#include <windows.h>
// After windows.h, whose types it needs.
#include <shlobj.h>

#include <filesystem>
#include <string>

namespace k7test {

inline std::filesystem::path HelperFolder() {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_PROGRAM_FILES, nullptr, SHGFP_TYPE_DEFAULT, folder);
  return std::filesystem::path{folder} / L"Penfold Hatch" / L"Cache";
}

// The library lies there from now on; a process that has loaded one keeps that.
class InstalledHelper {
 public:
  // `make`: "whole", "no_destroy", "no_librarian" or "no_object". Check Works(): program files may
  // not be ours to write.
  explicit InstalledHelper(const std::string& make) {
    // Nobody can replace a library that this process has loaded.
    works_ = GetModuleHandleW(L"TSL_000.dll") != nullptr;
    if (works_) return;
    wchar_t self[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::filesystem::path from =
        std::filesystem::path{self}.parent_path() / ("k7_host_helper_" + make + ".dll");
    std::error_code failed;
    std::filesystem::create_directories(HelperFolder(), failed);
    std::filesystem::copy_file(from, HelperFolder() / L"TSL_000.dll",
                               std::filesystem::copy_options::overwrite_existing, failed);
    works_ = !failed;
  }
  bool Works() const { return works_; }

 private:
  bool works_ = false;
};

// Removes it. A process that has loaded it must have ended.
inline void RemoveHelper() {
  std::error_code ignored;
  std::filesystem::remove(HelperFolder() / L"TSL_000.dll", ignored);
}

// What the loaded library has counted; -1 while it is not loaded.
inline int HelperCount(const char* counter) {
  const HMODULE library = GetModuleHandleW(L"TSL_000.dll");
  if (library == nullptr) return -1;
  const auto count =
      reinterpret_cast<int(__cdecl*)()>(reinterpret_cast<void*>(GetProcAddress(library, counter)));
  return count == nullptr ? -1 : count();
}

}  // namespace k7test
