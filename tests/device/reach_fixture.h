// Reach: a device object on a fake controller, with a window of the host that keeps its messages.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "device/smoothieboard.h"
#include "support/attached_device.h"
#include "support/controller_id.h"

namespace k7test {

struct ReachMessage {
  UINT number;
  WPARAM wParam;
  LPARAM lParam;
  bool operator==(const ReachMessage&) const = default;
};

// A host's window on the test's own thread: keeps the messages of the driver.
class ReachWindow {
 public:
  ReachWindow() {
    window_ = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  }
  ~ReachWindow() { DestroyWindow(window_); }
  HWND Handle() const { return window_; }
  bool Has(const ReachMessage& message) {
    MSG sent;
    PeekMessageW(&sent, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    for (const ReachMessage& seen : seen_) {
      if (seen == message) return true;
    }
    return false;
  }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<ReachWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (number >= WM_APP) self->seen_.push_back({number, wParam, lParam});
    return DefWindowProcW(window, number, wParam, lParam);
  }

  HWND window_ = nullptr;
  std::vector<ReachMessage> seen_;
};

inline constexpr UINT kPosition = WM_APP + 4;
inline constexpr UINT kSurface = WM_APP + 5;

class Reach : public ::testing::Test {
 protected:
  Reach() {
    controller_.BehaveWell();
    GiveDefaults(record_);
    record_.controllerId.Set(id_.c_str());
    device_.AttachLink(controller_.DriverEnd(), k7::kLinkSerial, L"fake");
    record_.connected = 1;
    device_.SetNotifyWindow(window_.Handle(), WM_APP + 1, WM_APP + 2, WM_APP + 3, kPosition,
                            kSurface, WM_APP + 6);
  }
  bool Sent(const std::string& line) { return controller_.WaitForLine(line); }

  const std::wstring id_ = FreshControllerId();
  FakeController controller_;
  ReachWindow window_;
  k7::Smoothieboard device_{std::make_unique<k7::DeviceState>()};
  k7::DeviceState& record_ = *device_.Record();
};

}  // namespace k7test
