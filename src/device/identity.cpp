#include "device/identity.h"

namespace k7 {

std::int32_t QueryControllerId(DeviceState&, wchar_t*, std::int32_t) noexcept {
  return {};
}

void ResetControllerId(DeviceState& record) noexcept {
  record.controllerId.Set(kUnsetControllerId);
}

}  // namespace k7
