// What the end-to-end tests stand on: the driver and the reference host as programs under Wine,
// simulated controllers, golden transcripts.
#pragma once

#include <string>
#include <vector>

#include "controller.h"
#include "process.h"
#include "settings_files.h"

namespace k7test {

// k7_slots.exe: the driver, one command and one answer a line. It can also do what a person at the
// desk does, with the keyboard and with a dialog of another program.
class Slots {
 public:
  Slots();
  // Sends a command and returns its answer; "no answer" after the deadline.
  std::string Ask(const std::string& command, int deadlineSeconds = 60);
  // The same, asked again (five times in all) until the answer is `wanted`, as a user would who
  // searches once more: on a busy machine a controller's answer can miss the driver's 200 ms.
  std::string AskUntil(const std::string& wanted, const std::string& command,
                       int deadlineSeconds = 60);
  // Sends a command whose answer comes later; Answer waits for it.
  void Tell(const std::string& command);
  std::string Answer(int deadlineSeconds = 60);
  int Quit();
  // The exit code of a process that ends by itself within the time; kRuns: it does not.
  static constexpr int kRuns = -2;
  int EndedBy(int seconds);
  // Resident memory of the driver's process in KiB; 0 when it cannot be read.
  long long ResidentKiB() const { return StatusNumber("VmRSS:"); }
  // Its threads; 0 when it cannot be read.
  long long Threads() const { return StatusNumber("Threads:"); }

 private:
  long long StatusNumber(const std::string& key) const;

  Process process_;
};

// A controller on COM7 whose settings are the only ones there are.
class FreshController : public Controller {
 public:
  FreshController(const std::string& id, const Settings& settings,
                  const std::vector<std::string>& arguments);
};

// The same with the driver connected to it. `window` is the command that makes the host's window.
struct ConnectedMachine {
  ConnectedMachine(const std::string& id, const Settings& settings,
                   const std::vector<std::string>& arguments, const std::string& window = "window");

  FreshController controller;
  Slots slots;
};

// Runs k7host.exe: exit code and everything it printed, line ends as "\n".
struct HostRun {
  int exitCode = -1;
  std::string output;
};
HostRun RunHost(const std::vector<std::string>& arguments, int deadlineSeconds = 120);

// Compares with tests/golden/<name>; a missing file fails. With K7_UPDATE_GOLDEN set (by
// tests/golden/update.sh alone) writes it instead.
void ExpectGolden(const std::string& name, const std::string& text);

}  // namespace k7test
