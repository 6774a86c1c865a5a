#include "session/library_folders.h"

#include "base/bounded_copy.h"
#include "session/identity.h"
#include "settings/paths.h"

namespace k7 {

namespace {

// "\Controllers\" + identity + "\" + library, created level by level.
std::uint32_t LibraryFolder(DeviceState& record, const wchar_t* library, wchar_t* buffer,
                            std::int32_t size) {
  // Without an answer the pending mark stays in the field. The folder is named after the text that
  // stands there, as the settings file is.
  SettleIdentity(record, nullptr, 0);
  SettingsPath path = ControllersFolder();
  AppendFolder(path, record.link.controllerId.Get().text);
  const std::uint32_t created = AppendFolder(path, library);
  CopyText(buffer, size, path.text);
  return created;
}

}  // namespace

std::uint32_t GetMaterialLibraryFolder(DeviceState& record, wchar_t* buffer,
                                       std::int32_t size) noexcept {
  return LibraryFolder(record, L"Material Library", buffer, size);
}

std::uint32_t GetTempHomeLibraryFolder(DeviceState& record, wchar_t* buffer,
                                       std::int32_t size) noexcept {
  return LibraryFolder(record, L"Temp Home Library", buffer, size);
}

}  // namespace k7
