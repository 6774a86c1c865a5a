// TestMachine: a whole machine for the tests of moves and jobs, with a host that listens.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "support/attached_device.h"
#include "support/fake_controller.h"

namespace k7test {

// A healthy controller, a record with default mechanics and a settings file of its own, and a
// callback that keeps what the host is told. Speeds differ, so that the feed tells which was used:
// traverse F1524.000, cutter down F762.000, cutter up F381.000, engrave F3048.000, grid F6096.000.
// The lift is Z22.225000 (3500 steps), the plunge Z26.987499 (4250 steps).
class TestMachine {
 public:
  static constexpr std::uint32_t kQueued = 1001, kStarted = 1002, kFinished = 1003;

  TestMachine();

  k7::DeviceState& operator*() { return *device_; }
  k7::DeviceState* operator->() { return &*device_; }

  // All four switches.
  void FitSwitches();
  // A spindle of 13000 rpm, to be run at that. Its lines cost 750 ms each.
  void FitSpindle();

  // Begins a job with its first move behind it, and forgets what was sent for it.
  void OpenJob();
  // Everything that the driver has sent since the last call or OpenJob, in order.
  std::string Sent();
  // The tags that this job has pushed so far.
  std::vector<int> Tags();
  // Waits until every line has been answered; false when some never are.
  bool WaitUntilIdle();
  // What the host was told so far: message numbers, in order.
  std::vector<std::uint32_t> Told();

  // Pretends that the machine stands there (machine steps), the cutter up or down.
  void StandAt(std::int32_t x, std::int32_t y, std::int32_t z, std::uint32_t cutterState);

  FakeController controller;

 private:
  static void Notify(std::uint32_t message, std::uint64_t context);

  std::mutex guard_;  // told_
  std::vector<std::uint32_t> told_;
  int marks_ = 0;
  AttachedDevice device_;  // last: its reader tells this machine until it has been detached
};

}  // namespace k7test
