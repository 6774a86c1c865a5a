#include "settings/camera_id.h"

#include <cwchar>
#include <new>

#include "device/bounded_copy.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

std::int64_t GetCameraId(const DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept {
  if (!record.cameraId) return 0;
  const auto length = static_cast<std::int64_t>(std::wcslen(record.cameraId.get()));
  if (size > length) CopyText(buffer, size, record.cameraId.get());
  return length;
}

void SetCameraId(DeviceState& record, const wchar_t* text) noexcept {
  if (text == nullptr) return;
  KeepCameraId(record, text);
  if (text[0] == L'\0') return;
  SettingsFile{record}.WriteText(keys::kSettings, keys::kCameraId, text);
}

void KeepCameraId(DeviceState& record, const wchar_t* text) noexcept {
  record.cameraId.reset();
  if (text[0] == L'\0') return;
  const std::size_t size = std::wcslen(text) + 1;
  record.cameraId.reset(new (std::nothrow) wchar_t[size]);
  CopyText(record.cameraId.get(), static_cast<std::ptrdiff_t>(size), text);
}

}  // namespace k7
