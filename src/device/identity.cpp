#include "device/identity.h"

namespace k7 {

std::int32_t QueryControllerId(DeviceState&, wchar_t*, std::int32_t) noexcept {
  return {};
}

}  // namespace k7
