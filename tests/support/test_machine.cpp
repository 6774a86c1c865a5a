#include "support/test_machine.h"

#include "device/polling.h"
#include "device/record_lock.h"
#include "job/job.h"
#include "link/link.h"
#include "support/controller_id.h"

namespace k7test {

TestMachine::TestMachine() : device_{controller} {
  controller.BehaveWell();
  k7::DeviceState& record = *device_;
  GiveDefaults(record);
  record.controllerId.Set(FreshControllerId().c_str());
  record.traverseSpeed = 1.0f;
  record.cutterDownSpeed = 0.5f;
  record.cutterUpSpeed = 0.25f;
  record.engraveSpeed = 2.0f;
  record.gridSpeed = 4.0f;
  record.msgQueued = kQueued;
  record.msgStarted = kStarted;
  record.msgFinished = kFinished;
  record.notifyContext = reinterpret_cast<std::uint64_t>(this);
  record.notifyCallback = &TestMachine::Notify;
}

void TestMachine::Notify(std::uint32_t message, std::uint64_t context) {
  auto& machine = *reinterpret_cast<TestMachine*>(context);
  const std::lock_guard lock{machine.guard_};
  machine.told_.push_back(message);
}

void TestMachine::FitSwitches() {
  k7::DeviceState& record = *device_;
  record.limitSwitchX = record.limitSwitchY = record.limitSwitchZ = record.proxSwitch = 1;
}

void TestMachine::FitSpindle() {
  device_->spindlePresent = 1;
}

void TestMachine::OpenJob() {
  k7::BeginJob(*device_);
  device_->firstMove = 0;
  Sent();
}

// A line of the test's own marks the end: lines keep their order, so everything before it is here.
std::string TestMachine::Sent() {
  const std::string mark = ";" + std::to_string(++marks_) + "\n";
  k7::SendLine(*device_, mark.c_str());
  if (!controller.WaitForLine(mark)) return "the mark was never received";
  std::string sent = controller.Transcript();
  sent.erase(sent.find(mark));
  controller.Clear();
  return sent;
}

std::vector<int> TestMachine::Tags() {
  std::vector<int> tags;
  const k7::RecordLock<k7::ringMutex> lock{*device_};
  for (int i = 0; i < device_->ackRingIndex; ++i)
    tags.push_back(static_cast<int>(device_->ackRing[i]));
  return tags;
}

bool TestMachine::WaitUntilIdle() {
  return WaitUntil(
      [&] { return k7::LinesInFlight(*device_) == 0 && k7::BlocksRunning(*device_) == 0; });
}

std::vector<std::uint32_t> TestMachine::Told() {
  const std::lock_guard lock{guard_};
  return told_;
}

void TestMachine::StandAt(std::int32_t x, std::int32_t y, std::int32_t z,
                          std::uint32_t cutterState) {
  device_->lastX = x;
  device_->lastY = y;
  device_->lastZ = z;
  device_->cutterState = cutterState;
}

}  // namespace k7test
