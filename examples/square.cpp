// A complete host in one file: finds an engraving machine, homes it, engraves a square of one inch
// whose corner lies one inch from the table home, and lets go of the machine.
//
// usage: square [IDENTITY]     without an identity: the first machine found
// Exit codes: 0 done, 1 the machine or the driver refused, 3 the link was lost.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "k7/driver.h"

namespace {

constexpr uint32_t kQueued = 1, kStarted = 2, kFinished = 3;  // our own numbers for the messages

// Moves that the machine has carried out. It outlives the device: the last message may still be
// under way when a job has ended.
std::atomic<uint32_t> finished{0};

// Runs on the driver's reader thread, which reads nothing from the machine until this returns. It
// counts and goes; a call of the driver from here could wait for an answer that nobody reads.
void OnProgress(uint32_t message, uint64_t /*context*/) {
  if (message == kFinished) ++finished;
}

// CheckAlive asks for a sign of life and tells whether the last one is recent. After a long call it
// is not, so only a second 0 counts.
bool LinkIsLost(k7::IEngraver& machine) {
  if (machine.CheckAlive() != 0) return false;
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  return machine.CheckAlive() == 0;
}

struct Point {
  uint32_t x, y;  // host steps from the table home
};

// Cuts or travels to a point and does what the status asks for. `sent` counts the moves that are
// on their way. False: the job must end.
bool Stroke(k7::IEngraver& machine, bool cut, Point to, uint32_t& sent) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    switch (cut ? machine.EngraveTo(to.x, to.y) : machine.MoveTo(to.x, to.y)) {
      case k7::kStatusSent:
        ++sent;
        return true;
      case k7::kStatusNothing:  // already there, or there is no machine any more
        return machine.IsConnected() != 0;
      case k7::kStatusOneShot:  // manual cutter: the head waits over the first point
        std::puts("Set the cutter onto the work by hand, then press Enter.");
        std::getchar();
        return true;
      case k7::kStatusArmed:  // semi-automatic: the next plunge will probe
        return true;
      case k7::kStatusProbed:  // the surface is known now and the cutter is up: the same cut again
        break;
      case k7::kStatusRefused:  // it would cut into the table; the driver has told the user
        std::puts("This cut would go into the table.");
        return false;
    }
  }
  std::puts("The surface was probed twice and the cut was not made.");
  return false;
}

int Engrave(k7::IEngraver& machine) {
  const float xPerInch = machine.GetXStepsPerUnit(), yPerInch = machine.GetYStepsPerUnit();
  std::printf("table %.3f x %.3f inches, %.0f x %.0f steps an inch, %u passes\n",
              machine.GetTableWidth() / 1000.0, machine.GetTableHeight() / 1000.0, xPerInch,
              yPerInch, machine.GetPassCount());
  if (xPerInch <= 0 || yPerInch <= 0) return std::puts("The settings make no sense."), 1;

  // Homes by the switches. A machine without them shows a dialog instead; 2: the user cancelled it.
  if (machine.EnsureTableHome(nullptr) == 2) return 1;

  // A driver that has nobody to tell makes no engrave delays and switches no air head: a host has a
  // callback, or a window, before its first job.
  machine.SetNotifyCallback(OnProgress, 0, kQueued, kStarted, kFinished);
  const auto x1 = static_cast<uint32_t>(xPerInch), y1 = static_cast<uint32_t>(yPerInch);
  const Point corners[] = {{x1, y1}, {2 * x1, y1}, {2 * x1, 2 * y1}, {x1, 2 * y1}, {x1, y1}};

  bool good = machine.BeginJob(), lost = false;
  if (!good) std::puts("The machine does not begin a job: its proximity switch is closed.");
  const bool jobOpen = good;
  uint32_t sent = 0;
  for (uint32_t pass = 1; good && !lost && pass <= machine.GetPassCount(); ++pass) {
    wchar_t status[128] = {};
    machine.StartPass(pass, corners[0].x, corners[0].y, status, 128);
    std::printf("%ls\n", status);
    good = Stroke(machine, false, corners[0], sent);
    for (int i = 1; good && !lost && i < 5; ++i) {
      good = Stroke(machine, true, corners[i], sent);
      lost = LinkIsLost(machine);
    }
  }
  if (good && !lost) good = Stroke(machine, false, {0, 0}, sent);  // lifts the cutter and parks

  // The moves are with the machine, which takes its time. EndJob would wait for them, too, but
  // without a word to the user.
  while (good && !lost && finished < sent) {
    std::printf("move %u of %u\n", finished.load(), sent);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    lost = LinkIsLost(machine);
  }
  if (jobOpen) machine.EndJob();        // on a lost link it returns at once
  machine.SetSpindle(k7::kSpindleOff);  // a job of a routing tool leaves it turning

  if (lost) return std::puts("The link was lost: home the machine before it is used again."), 3;
  if (!good) return 1;
  return std::printf("done: %u moves\n", sent), 0;
}

}  // namespace

int main(int count, char** arguments) {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  wchar_t id[k7::kNameCapacity] = {}, name[k7::kNameCapacity] = {};
  if (count > 1) {
    const char* wanted = arguments[1];  // letters and digits
    for (int i = 0; i < k7::kIdLength && wanted[i] != 0; ++i) id[i] = wanted[i];
  } else {
    if (EnumerateControllers() < 1) return std::puts("No machine found."), 1;
    GetControllerInfo(0, id, name, k7::kNameCapacity);
    std::printf("found %ls, %ls\n", id, name);
  }
  k7::IEngraver* machine = ConnectToController(id);
  if (machine == nullptr) return std::puts("The machine does not answer."), 1;
  const int result = Engrave(*machine);
  ReleaseController(machine);  // keeps the position, switches the motors off, closes the port
  return result;
}
