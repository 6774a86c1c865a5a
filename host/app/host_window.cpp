// Window, callback and message pump.
#include "app/host_window.h"

#include "app/stop_request.h"
#include "app/watchdog.h"

namespace k7host {
namespace {

constexpr wchar_t kClassName[] = L"K7HostWindow";

}  // namespace

HostWindow::~HostWindow() {
  if (window_ != nullptr) DestroyWindow(window_);
  if (moved_ != nullptr) CloseHandle(moved_);
}

bool HostWindow::Create() {
  WNDCLASSW type{};
  type.lpfnWndProc = &Procedure;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = kClassName;
  // Another window of the program may have registered it already.
  if (RegisterClassW(&type) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
  moved_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  window_ = CreateWindowExW(0, kClassName, L"K7 Host", WS_OVERLAPPED, CW_USEDEFAULT, CW_USEDEFAULT,
                            0, 0, nullptr, nullptr, type.hInstance, nullptr);
  if (window_ == nullptr || moved_ == nullptr) return false;
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  return true;
}

void HostWindow::Attach(k7::IEngraver& device, bool batch) {
  device.SetNotifyWindow(batch ? nullptr : window_, kMsgQueued, kMsgStarted, kMsgFinished,
                         kMsgPosition, kMsgSurface, kMsgJogZ);
  device.SetNotifyCallback(&OnMove, reinterpret_cast<std::uint64_t>(this), kMsgQueued, kMsgStarted,
                           kMsgFinished);
  device.SetConnectNotify(TheWatch().Window(), Watch::kMsgAlive);
}

void HostWindow::Detach(k7::IEngraver& device) {
  device.SetConnectNotify(nullptr, 0);
  device.SetNotifyCallback(nullptr, 0, 0, 0, 0);
  device.SetNotifyWindow(nullptr, 0, 0, 0, 0, 0, 0);
}

void HostWindow::OnMove(uint32_t message, uint64_t context) {
  auto& host = *reinterpret_cast<HostWindow*>(context);
  switch (message) {
    case kMsgQueued:
      ++host.counters_.queued;
      break;
    case kMsgStarted:
      ++host.counters_.started;
      break;
    case kMsgFinished:
      ++host.counters_.finished;
      break;
    default:
      return;
  }
  TheWatch().Progress();
  SetEvent(host.moved_);
}

void HostWindow::Wait(DWORD timeoutMs) {
  // The stop event stays signalled, so that a wait for it would return at once from then on.
  const HANDLE handles[] = {moved_, StopEvent()};
  MsgWaitForMultipleObjects(StopRequested() ? 1 : 2, handles, FALSE, timeoutMs, QS_ALLINPUT);
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* host = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (host != nullptr && host->Receive(message, first, second)) return 0;
  return DefWindowProcW(window, message, first, second);
}

bool HostWindow::Receive(UINT message, WPARAM first, LPARAM second) {
  if (message >= kMsgQueued && message <= kMsgRampEnd) TheWatch().Progress();
  switch (message) {
    case kMsgPosition:
      reports_.position =
          HostPosition{static_cast<std::int32_t>(first), static_cast<std::int32_t>(second)};
      return true;
    case kMsgSurface:
      reports_.surfaceSteps = static_cast<std::int32_t>(first);
      reports_.zSteps = static_cast<std::int32_t>(second);
      return true;
    case kMsgJogZ:
      reports_.zSteps = static_cast<std::int32_t>(first);
      return true;
    case kMsgJogEnd:
      reports_.jogEnded = true;
      return true;
    case kMsgRampEnd:
      reports_.rampRpm = static_cast<std::uint32_t>(first);
      return true;
    default:
      return false;
  }
}

}  // namespace k7host
