// AttachedDevice: a state record whose link is a FakeController.
#pragma once

#include <string>

#include "device/device_state.h"
#include "device/worker.h"
#include "link/link.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"

namespace k7test {

// Attaches a record to the fake for its life. Nothing is sent; `connected` is set when asked, since
// most operations need it. Detaches at the end.
class AttachedDevice {
 public:
  explicit AttachedDevice(FakeController& controller, bool connected = true)
      : controller_(controller) {
    k7::AttachLink(record_, controller.DriverEnd(), controller.LinkType(), L"fake");
    record_.link.connected = connected ? 1 : 0;
  }
  ~AttachedDevice() {
    k7::EndWorkers(record_);
    // Detach would do all of this itself, half a second later.
    record_.link.readerRun = 0;
    controller_.Nudge();
    WaitUntil([&] { return record_.link.readerAlive == 0; }, std::chrono::milliseconds{100});
    k7::DetachLink(record_, k7::kLinkNone);
  }
  AttachedDevice(const AttachedDevice&) = delete;
  AttachedDevice& operator=(const AttachedDevice&) = delete;

  // Has the controller say `bytes` and waits until the reader has carried them out: lines go in
  // order, and the one that is put behind them, which leaves tableHomed 1, is seen. False:
  // deadline.
  bool Hear(const std::string& bytes) {
    record_.position.tableHomed = 77;
    controller_.Say(bytes + "TableIsHomedTRUE\r\n");
    return WaitUntil([&] { return record_.position.tableHomed == 1; });
  }

  k7::DeviceState& operator*() { return record_; }
  k7::DeviceState* operator->() { return &record_; }

 private:
  FakeController& controller_;
  k7::DeviceState record_;
};

// Gives the record the mechanics of a machine without a settings file: 4000 steps per inch on every
// axis, a 25 x 16 x 2 inch table, speeds of 1 in/s, 0.125 in lift, 0.0625 in depth, and the steps
// per millimetre as if they had been sent. Home positions 0, cutter home 4000, deep table surface.
void GiveDefaults(k7::DeviceState& record);

}  // namespace k7test
