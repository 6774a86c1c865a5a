#include "motion/host_messages.h"

#include <windows.h>

namespace k7 {

namespace {

std::uint32_t MessageOf(const DeviceState& record, HostReport report) noexcept {
  for (const HostMessageRow& row : kHostMessages) {
    if (row.report == report) return record.*row.message;
  }
  return 0;
}

}  // namespace

bool CanReport(const DeviceState& record, HostReport report) noexcept {
  return record.ownerWindow.Get() != nullptr && MessageOf(record, report) != 0;
}

void SendReport(const DeviceState& record, HostReport report, std::int32_t wParam,
                std::int32_t lParam) noexcept {
  SendToHost(record.ownerWindow, MessageOf(record, report), wParam, lParam);
}

void SendToHost(WindowHandle window, std::uint32_t message, std::int32_t wParam,
                std::int32_t lParam) noexcept {
  if (window == nullptr || message == 0) return;
  SendMessageW(static_cast<HWND>(window), message, static_cast<WPARAM>(wParam),
               static_cast<LPARAM>(lParam));
}

}  // namespace k7
