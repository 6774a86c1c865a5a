#include "settings/camera_id.h"

namespace k7 {

std::int64_t GetCameraId(const DeviceState&, wchar_t*, std::int32_t) noexcept {
  return {};
}
void SetCameraId(DeviceState&, const wchar_t*) noexcept {}

}  // namespace k7
