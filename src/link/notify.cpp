#include "link/notify.h"

#include <windows.h>

namespace k7 {

bool HasListener(const DeviceState& record) noexcept {
  return record.notifyCallback != nullptr || record.ownerWindow != nullptr;
}

bool IsSilent(const DeviceState& record) noexcept {
  return record.quietMoves != 0 || record.jogActive != 0;
}

void NotifyHost(const DeviceState& record, std::uint32_t message) noexcept {
  if (const NotifyCallback callback = record.notifyCallback) {
    callback(message, record.notifyContext);
  } else if (const WindowHandle window = record.ownerWindow) {
    SendMessageW(static_cast<HWND>(window), message, 0, 0);
  }
}

}  // namespace k7
