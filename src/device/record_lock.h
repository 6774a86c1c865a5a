// RecordLock: holds one of the record's seven mutexes for one short access.
#pragma once

#include <windows.h>

#include "device/device_state.h"

namespace k7 {

#ifdef K7_CHECKED
namespace detail {
inline thread_local int recordLocksHeld = 0;
}
#endif

// Waits for the mutex without time-out and releases it at the end of the scope. Test it before use:
// false means that the wait failed (no link attached, for one) and the guarded update is to be
// skipped. An abandoned mutex is owned and counts as held; WasAbandoned tells. Checked builds trap
// when a thread takes a second mutex while it holds one.
template <RecordMutex kWhich>
class [[nodiscard]] RecordLock {
 public:
  explicit RecordLock(const DeviceState& record) noexcept
      : mutex_(static_cast<HANDLE>(record.mutexes[kWhich])) {
    Enter();
    const DWORD result = mutex_ == nullptr ? WAIT_FAILED : WaitForSingleObject(mutex_, INFINITE);
    abandoned_ = result == WAIT_ABANDONED;
    held_ = abandoned_ || result == WAIT_OBJECT_0;
  }
  ~RecordLock() {
    if (held_) ReleaseMutex(mutex_);
    Leave();
  }
  RecordLock(const RecordLock&) = delete;
  RecordLock& operator=(const RecordLock&) = delete;

  explicit operator bool() const noexcept { return held_; }
  // The thread that held it before ended without releasing it.
  bool WasAbandoned() const noexcept { return abandoned_; }

 private:
#ifdef K7_CHECKED
  static void Enter() noexcept {
    if (detail::recordLocksHeld++ != 0) __builtin_trap();
  }
  static void Leave() noexcept {
    --detail::recordLocksHeld;
  }
#else
  static void Enter() noexcept {}
  static void Leave() noexcept {}
#endif

  HANDLE mutex_;
  bool held_ = false;
  bool abandoned_ = false;
};

}  // namespace k7
