// HostCall: a call of the host that may have to wait, on a thread of its own.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdio>
#include <thread>

#include "support/wait_until.h"

namespace k7test {

// Makes the call at once. At the end of the scope the call must have returned: one that never does
// ends the test process, so that a dead-lock is a failed run instead of one that never ends.
class HostCall {
 public:
  template <typename Call>
  explicit HostCall(Call call)
      : thread_{[this, call] {
          call();
          returned_ = true;
        }} {}
  ~HostCall() {
    if (!Returns()) {
      std::fprintf(stderr, "HostCall: the call never returned\n");
      TerminateProcess(GetCurrentProcess(), 99);
    }
    thread_.join();
  }
  HostCall(const HostCall&) = delete;
  HostCall& operator=(const HostCall&) = delete;

  // Has returned by the deadline.
  bool Returns() const {
    return WaitUntil([&] { return returned_.load(); });
  }
  // Is still waiting after this time.
  bool Waits(std::chrono::milliseconds time = std::chrono::milliseconds{150}) const {
    return !WaitUntil([&] { return returned_.load(); }, time);
  }

 private:
  std::atomic<bool> returned_{false};  // before the thread that sets it
  std::thread thread_;
};

}  // namespace k7test
