#include "support/test_machine.h"

#include "device/guarded.h"
#include "device/polling.h"
#include "device/progress.h"
#include "job/job.h"
#include "link/link.h"
#include "support/controller_id.h"

namespace k7test {

TestMachine::TestMachine() : device_{controller} {
  controller.BehaveWell();
  k7::DeviceState& record = *device_;
  GiveDefaults(record);
  record.link.controllerId.Set(FreshControllerId().c_str());
  record.tools.traverseSpeed = 1.0f;
  record.tools.cutterDownSpeed = 0.5f;
  record.tools.cutterUpSpeed = 0.25f;
  record.tools.engraveSpeed = 2.0f;
  record.tools.gridSpeed = 4.0f;
  record.notify.msgQueued = kQueued;
  record.notify.msgStarted = kStarted;
  record.notify.msgFinished = kFinished;
  record.notify.notifyContext = reinterpret_cast<std::uint64_t>(this);
  record.notify.notifyCallback = &TestMachine::Notify;
}

void TestMachine::Notify(std::uint32_t message, std::uint64_t context) {
  auto& machine = *reinterpret_cast<TestMachine*>(context);
  const std::lock_guard lock{machine.guard_};
  machine.told_.push_back(message);
}

void TestMachine::FitSwitches() {
  k7::DeviceState& record = *device_;
  record.mechanics.axis.x.limitSwitch = record.mechanics.axis.y.limitSwitch =
      record.mechanics.axis.z.limitSwitch = record.mechanics.proxSwitch = 1;
}

void TestMachine::FitSpindle() {
  device_->spindle.spindlePresent = 1;
}

void TestMachine::OpenJob() {
  k7::BeginJob(*device_);
  device_->job.firstMove = 0;
  Sent();
}

// A line of the test's own marks the end: lines keep their order, so everything before it is here.
std::string TestMachine::Sent() {
  const std::string mark = ";" + std::to_string(++marks_) + "\n";
  k7::SendLine(device_->link, mark.c_str());
  if (!controller.WaitForLine(mark)) return "the mark was never received";
  std::string sent = controller.Transcript();
  sent.erase(sent.find(mark));
  controller.Clear();
  return sent;
}

std::vector<int> TestMachine::Tags() {
  std::vector<int> tags;
  const auto lock = device_->job.tagRing.Lock();
  for (int i = 0; i < device_->job.tagRing.Alone().ackRingIndex; ++i)
    tags.push_back(static_cast<int>(device_->job.tagRing.Alone().ackRing[i]));
  return tags;
}

bool TestMachine::WaitUntilIdle() {
  return WaitUntil(
      [&] { return k7::LinesInFlight(device_->job) == 0 && k7::BlocksRunning(device_->job) == 0; });
}

std::vector<std::uint32_t> TestMachine::Told() {
  const std::lock_guard lock{guard_};
  return told_;
}

void TestMachine::StandAt(std::int32_t x, std::int32_t y, std::int32_t z,
                          std::uint32_t cutterState) {
  device_->position.last.x = x;
  device_->position.last.y = y;
  device_->position.last.z = z;
  device_->tools.cutterState = cutterState;
}

}  // namespace k7test
