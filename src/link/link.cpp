#include "link/link.h"

namespace k7 {

void AttachLink(DeviceState&, LinkHandle, std::uint32_t, const wchar_t*) noexcept {}
void DetachLink(DeviceState&, std::uint32_t) noexcept {}
void SendLine(DeviceState&, const char*) noexcept {}
std::int32_t CheckAlive(DeviceState&) noexcept {
  return {};
}

}  // namespace k7
