#include "support/host_window.h"

#include "support/wait_until.h"

namespace k7test {

void PrintTo(const HostMessage& message, std::ostream* out) {
  *out << "WM_APP+" << message.message - WM_APP << '(' << message.wParam << ", " << message.lParam
       << ')';
}

HostWindow::HostWindow(Lives lives) {
  if (lives == Lives::OnThisThread) {
    Open();
    return;
  }
  thread_ = std::thread{[this] {
    Open();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    DestroyWindow(window_);
  }};
  WaitUntil([&] { return window_ != nullptr; });
}

HostWindow::~HostWindow() {
  if (thread_.joinable()) {
    PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
  } else {
    DestroyWindow(window_);
  }
}

void HostWindow::Open() {
  const HWND window = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HostWindow::Procedure));
  window_ = window;
}

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto& self = *reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_CLOSE) {
    PostQuitMessage(0);
    return 0;
  }
  if (message < WM_APP || message >= 0xC000) {
    return DefWindowProcW(window, message, wParam, lParam);
  }
  std::function<void()> handler;
  {
    const std::lock_guard lock{self.guard_};
    self.seen_.push_back({message, static_cast<std::int64_t>(wParam), lParam});
    for (const auto& [number, candidate] : self.handlers_) {
      if (number == message) handler = candidate;
    }
  }
  if (handler) handler();
  return 0;
}

void HostWindow::OnMessage(UINT message, std::function<void()> handler) {
  const std::lock_guard lock{guard_};
  handlers_.emplace_back(message, std::move(handler));
}

std::vector<HostMessage> HostWindow::Seen() const {
  const std::lock_guard lock{guard_};
  return seen_;
}

int HostWindow::Count(UINT message) const {
  int count = 0;
  for (const HostMessage& seen : Seen()) count += seen.message == message;
  return count;
}

bool HostWindow::WaitFor(UINT message, int count) const {
  const bool here = GetWindowThreadProcessId(window_, nullptr) == GetCurrentThreadId();
  return WaitUntil([&] {
    MSG ignored;
    if (here) PeekMessageW(&ignored, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    return Count(message) >= count;
  });
}

HeldKey::HeldKey(std::uint8_t virtualKey) : key_{virtualKey} {
  keybd_event(key_, 0, 0, 0);
}

void HeldKey::Release() {
  if (held_) keybd_event(key_, 0, KEYEVENTF_KEYUP, 0);
  held_ = false;
}

}  // namespace k7test
