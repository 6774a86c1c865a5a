#include "link/notify.h"

#include <windows.h>

#include "base/trace.h"

namespace k7 {

namespace {

std::uint32_t MessageOf(const NotifyState& notify, HostReport report) noexcept {
  for (const HostReportRow& row : kHostReports) {
    if (row.report == report) return notify.*row.message;
  }
  return 0;
}

}  // namespace

bool HasListener(const NotifyState& notify) noexcept {
  return notify.notifyCallback != nullptr || notify.ownerWindow != nullptr;
}

bool IsSilent(const DeviceState& record) noexcept {
  return record.job.quietMoves != 0 || record.jog.jogActive != 0;
}

void NotifyHost(const NotifyState& notify, std::uint32_t message) noexcept {
  if (const NotifyCallback callback = notify.notifyCallback) {
    const TracedMessage traced{"callback", message};
    callback(message, notify.notifyContext);
  } else if (const WindowHandle window = notify.ownerWindow) {
    const TracedMessage traced{"window", message};
    SendMessageW(static_cast<HWND>(window), message, 0, 0);
  }
}

bool CanReport(const NotifyState& notify, HostReport report) noexcept {
  return notify.ownerWindow.Get() != nullptr && MessageOf(notify, report) != 0;
}

void SendReport(const NotifyState& notify, HostReport report, std::int32_t wParam,
                std::int32_t lParam) noexcept {
  SendToHost(notify.ownerWindow, MessageOf(notify, report), wParam, lParam);
}

void SendToHost(WindowHandle window, std::uint32_t message, std::int32_t wParam,
                std::int32_t lParam) noexcept {
  if (window == nullptr || message == 0) return;
  const TracedMessage traced{"window", message, wParam, lParam};
  SendMessageW(static_cast<HWND>(window), message, static_cast<WPARAM>(wParam),
               static_cast<LPARAM>(lParam));
}

}  // namespace k7
