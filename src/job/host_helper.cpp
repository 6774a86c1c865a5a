#include "job/host_helper.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <shlobj.h>

#include "settings/paths.h"

namespace k7 {

namespace {

using Librarian = void*(__cdecl*)(std::int32_t kind);
using Destroy = void(__cdecl*)(void* object);
using Formatter = void(__cdecl*)(void* object, std::int32_t thousandths, wchar_t* buffer,
                                 std::int32_t size, std::int32_t, std::int32_t decimals);

constexpr std::int32_t kObjectKind = 7;
constexpr int kFormatterSlot = 9;  // counted from 0

// Kept for the life of the process; touched by the host's thread alone.
HMODULE library = nullptr;
Librarian librarian = nullptr;

// The export of that name, with the type of the function.
template <typename Function>
Function ExportOf(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

void LoadOnce() {
  if (library != nullptr) return;
  SettingsPath path{};
  SHGetFolderPathW(nullptr, CSIDL_PROGRAM_FILES, nullptr, SHGFP_TYPE_DEFAULT, path.text);
  AppendFolder(path, L"Penfold Hatch");
  AppendLevel(path, L"Cache");
  AppendLevel(path, L"TSL_000.dll");
  // With this flag the libraries that it needs are looked for in its own folder, too.
  library = LoadLibraryExW(path.text, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (library != nullptr) librarian = ExportOf<Librarian>(library, "TSLibrarian");
}

}  // namespace

HostHelper::HostHelper() noexcept : object_(nullptr) {
  LoadOnce();
  if (librarian != nullptr) object_ = librarian(kObjectKind);
}

HostHelper::~HostHelper() {
  if (object_ == nullptr) return;
  // Without that export nobody can free the object.
  if (const auto destroy = ExportOf<Destroy>(library, "TSDestroy")) destroy(object_);
}

HostHelper::LengthText HostHelper::FormatLength(std::int32_t thousandths) const noexcept {
  constexpr std::int32_t kSize = sizeof(LengthText::text) / sizeof(wchar_t);
  LengthText length{};
  // The first word of the object points to its table of operations.
  void** const table = *static_cast<void***>(object_);
  const auto format = reinterpret_cast<Formatter>(table[kFormatterSlot]);
  format(object_, thousandths, length.text, kSize, 1, 3);
  length.text[kSize - 1] = L'\0';
  return length;
}

}  // namespace k7
