#include "settings/settings_paths.h"

namespace k7 {

SettingsPath SettingsFilePath(const DeviceState&) noexcept {
  return {};
}
std::uint32_t GetSettingsFilePath(const DeviceState&, wchar_t*, std::int32_t) noexcept {
  return {};
}

}  // namespace k7
