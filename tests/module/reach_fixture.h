// Reach: a device object on a fake controller, with a window of the host that keeps its messages.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>

#include "module/smoothieboard.h"
#include "support/attached_device.h"
#include "support/controller_id.h"
#include "support/host_window.h"

namespace k7test {

inline constexpr UINT kPosition = WM_APP + 4;
inline constexpr UINT kSurface = WM_APP + 5;

class Reach : public ::testing::Test {
 protected:
  Reach() {
    controller_.BehaveWell();
    GiveDefaults(record_);
    record_.link.controllerId.Set(id_.c_str());
    device_.AttachLink(controller_.DriverEnd(), k7::kLinkSerial, L"fake");
    record_.link.connected = 1;
    device_.SetNotifyWindow(window_.Handle(), WM_APP + 1, WM_APP + 2, WM_APP + 3, kPosition,
                            kSurface, WM_APP + 6);
  }
  bool Sent(const std::string& line) { return controller_.WaitForLine(line); }

  const std::wstring id_ = FreshControllerId();
  FakeController controller_;
  HostWindow window_{HostWindow::Lives::OnThisThread};
  k7::Smoothieboard device_{std::make_unique<k7::DeviceState>()};
  k7::DeviceState& record_ = *device_.Record();
};

}  // namespace k7test
