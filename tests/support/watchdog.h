// Watchdog: turns a dead-lock into a failed run instead of one that never ends.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <thread>

#include "support/wait_until.h"

namespace k7test {

// Ends the test process when it still lives at the deadline.
class Watchdog {
 public:
  Watchdog() : thread_([this] { Watch(); }) {}
  ~Watchdog() {
    {
      const std::lock_guard lock{guard_};
      over_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

 private:
  void Watch() {
    std::unique_lock lock{guard_};
    if (changed_.wait_for(lock, kDeadline, [this] { return over_; })) return;
    std::fprintf(stderr, "Watchdog: dead-lock\n");
    TerminateProcess(GetCurrentProcess(), 99);
  }

  std::mutex guard_;
  std::condition_variable changed_;
  bool over_ = false;
  std::thread thread_;
};

}  // namespace k7test
