#include "support/calling_thread_window.h"

#include "support/wait_until.h"

namespace k7test {

CallingThreadWindow::CallingThreadWindow() {
  WNDCLASSW type{};
  type.lpfnWndProc = Procedure;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = L"k7test host window";
  RegisterClassW(&type);  // fails from the second time on: it is there
  window_ = CreateWindowExW(0, type.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            type.hInstance, nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

CallingThreadWindow::~CallingThreadWindow() {
  DestroyWindow(window_);
}

std::vector<SentMessage> CallingThreadWindow::Messages() const {
  const std::lock_guard lock{guard_};
  return messages_;
}

bool CallingThreadWindow::WaitForMessages(std::size_t count) const {
  return WaitUntil([&] {
    MSG ignored;
    PeekMessageW(&ignored, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    return Messages().size() >= count;
  });
}

LRESULT CALLBACK CallingThreadWindow::Procedure(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
  auto* const self =
      reinterpret_cast<CallingThreadWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr || message < WM_APP) return DefWindowProcW(window, message, wParam, lParam);
  const std::lock_guard lock{self->guard_};
  self->messages_.push_back({message, wParam, lParam, GetCurrentThreadId()});
  return 0;
}

}  // namespace k7test
