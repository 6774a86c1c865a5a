// The user's side of a command. The command runs on a thread of its own, which alone calls the
// driver (but for what may be called from any thread) and owns the window that the driver reports
// to. The program's first thread watches it: it tells the user when the machine says nothing, and
// ends the program at the second Ctrl-C whatever a call to the driver does.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

#include "core/progress.h"
#include "core/watch.h"
#include "k7/driver.h"

namespace k7host {

// What the two threads tell each other. One for the program. [any]
class Watch {
 public:
  // The machine has said something; it has also reported something done.
  void Word();
  void Progress();

  Waiting Now() const { return waiting_; }
  Waiting Exchange(Waiting waiting);

  // How far the job is, and the counters that go on while a call to the driver waits.
  void ShowJob(const ProgressView& view, const MoveCounters* counters);

  // The device to ask for signs of life; null: none. Not after this has returned null.
  void SetDevice(k7::IEngraver* device);

  // What to do before the program ends in the middle of a job; empty: nothing. Returns with the old
  // one no longer running.
  void SetLastWords(std::function<void()> lastWords);

  // Asks the machine for a sign of life; whether one comes within a second. [host]
  bool Answers();

  // The window that is told of the machine's signs of life, and its message.
  HWND Window() const { return window_; }
  static constexpr UINT kMsgAlive = WM_APP + 100;

 private:
  friend class Watcher;

  std::atomic<Waiting> waiting_{Waiting::Nothing};
  std::atomic<std::uint64_t> wordMs_{0};
  std::atomic<std::uint32_t> signsOfLife_{0};
  std::atomic<std::uint64_t> progressMs_{0};
  std::atomic<HWND> window_{nullptr};
  std::mutex deviceMutex_;
  k7::IEngraver* device_ = nullptr;  // [deviceMutex_]
  std::mutex jobMutex_;
  ProgressView view_;                       // [jobMutex_]
  const MoveCounters* counters_ = nullptr;  // [jobMutex_]
  std::mutex lastWordsMutex_;
  std::function<void()> lastWords_;  // [lastWordsMutex_]
};

Watch& TheWatch();

// Says for the length of a scope what the program waits for. [host]
class WaitingFor {
 public:
  explicit WaitingFor(Waiting waiting) : before_(TheWatch().Exchange(waiting)) {}
  ~WaitingFor() { TheWatch().Exchange(before_); }
  WaitingFor(const WaitingFor&) = delete;
  WaitingFor& operator=(const WaitingFor&) = delete;

 private:
  Waiting before_;
};

// Runs the command on a thread of its own and watches it; its exit code. Once, from the first
// thread.
int RunWatched(const std::function<int()>& command);

}  // namespace k7host
