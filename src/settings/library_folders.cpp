#include "settings/library_folders.h"

namespace k7 {

std::uint32_t GetMaterialLibraryFolder(DeviceState&, wchar_t*, std::int32_t) noexcept {
  return {};
}
std::uint32_t GetTempHomeLibraryFolder(DeviceState&, wchar_t*, std::int32_t) noexcept {
  return {};
}

}  // namespace k7
