#include "base/short_lock.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <atomic>
#endif

namespace k7 {

// Not std::mutex: in this compiler's library every mutex that was ever contended keeps memory and
// an event of the operating system, and never frees them.
#ifdef _WIN32

static_assert(sizeof(SRWLOCK) == sizeof(void*));

void ShortLock::Acquire() noexcept {
  AcquireSRWLockExclusive(reinterpret_cast<SRWLOCK*>(&state_));
}

bool ShortLock::TryAcquire() noexcept {
  return TryAcquireSRWLockExclusive(reinterpret_cast<SRWLOCK*>(&state_)) != FALSE;
}

void ShortLock::Release() noexcept {
  ReleaseSRWLockExclusive(reinterpret_cast<SRWLOCK*>(&state_));
}

#else

void ShortLock::Acquire() noexcept {
  std::atomic_ref<void*> state{state_};
  while (!TryAcquire()) state.wait(this);
}

bool ShortLock::TryAcquire() noexcept {
  void* free = nullptr;
  return std::atomic_ref<void*>{state_}.compare_exchange_strong(free, this);
}

void ShortLock::Release() noexcept {
  std::atomic_ref<void*> state{state_};
  state.store(nullptr);
  state.notify_one();
}

#endif

}  // namespace k7
