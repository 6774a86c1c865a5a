#include "settings/camera_id.h"

#include <cwchar>
#include <new>

#include "base/bounded_copy.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

std::int64_t GetCameraId(const HostValues& host, wchar_t* buffer, std::int32_t size) noexcept {
  if (!host.cameraId) return 0;
  const auto length = static_cast<std::int64_t>(std::wcslen(host.cameraId.get()));
  if (size > length) CopyText(buffer, size, host.cameraId.get());
  return length;
}

void SetCameraId(DeviceState& record, const wchar_t* text) noexcept {
  if (text == nullptr) return;
  KeepCameraId(record.host, text);
  if (text[0] == L'\0') return;
  SettingsFile{record.link}.WriteText(settings::kCameraId, text);
}

void KeepCameraId(HostValues& host, const wchar_t* text) noexcept {
  host.cameraId.reset();
  if (text[0] == L'\0') return;
  const std::size_t size = std::wcslen(text) + 1;
  host.cameraId.reset(new (std::nothrow) wchar_t[size]);
  CopyText(host.cameraId.get(), static_cast<std::ptrdiff_t>(size), text);
}

}  // namespace k7
