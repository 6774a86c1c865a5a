// Loading of the driver.
#include "app/driver_library.h"

#include <vector>

#include "core/text.h"

namespace k7host {
namespace {

constexpr wchar_t kDriverName[] = L"k7driver.dll";

// The folder of the running program, with its last backslash.
std::wstring ProgramFolder() {
  std::vector<wchar_t> path(MAX_PATH);
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      const std::wstring text(path.data(), length);
      return text.substr(0, text.find_last_of(L'\\') + 1);
    }
    path.resize(path.size() * 2);
  }
}

template <typename Function>
bool Find(HMODULE module, const char* name, Function& function) {
  // Through void*, because the compiler warns of a direct cast between function types.
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  return function != nullptr;
}

}  // namespace

DriverLibrary::~DriverLibrary() {
  if (module_ != nullptr) FreeLibrary(module_);
}

std::string DriverLibrary::Load() {
  const std::wstring folder = ProgramFolder();
  const std::wstring path = folder + kDriverName;
  module_ = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (module_ == nullptr) {
    const DWORD code = GetLastError();
    const bool missing = code == ERROR_MOD_NOT_FOUND || code == ERROR_FILE_NOT_FOUND;
    return missing ? "k7driver.dll is missing from " + NarrowText(folder)
                   : NarrowText(path) + " cannot be loaded: error " + std::to_string(code);
  }
  const char* lacking = nullptr;
  if (!Find(module_, "EnumerateControllers", enumerate)) lacking = "EnumerateControllers";
  if (!Find(module_, "GetControllerInfo", getInfo)) lacking = "GetControllerInfo";
  if (!Find(module_, "ConnectToController", connect)) lacking = "ConnectToController";
  if (!Find(module_, "ReleaseController", release)) lacking = "ReleaseController";
  if (lacking != nullptr) return NarrowText(path) + " has no function " + lacking;
  return "";
}

}  // namespace k7host
