#include "device/guarded.h"

#ifdef K7_CHECKED
#ifdef _WIN32
#include <windows.h>
#endif

namespace k7 {

namespace {

#ifdef _WIN32

// An index of the module's own, given back when it is unloaded; a thread-local variable of this
// compiler's is not.
class ThreadMark {
 public:
  ~ThreadMark() { TlsFree(index_); }
  bool IsSet() const noexcept { return TlsGetValue(index_) != nullptr; }
  void Set(bool set) noexcept { TlsSetValue(index_, set ? this : nullptr); }

 private:
  const DWORD index_ = TlsAlloc();
};

ThreadMark held;

#else

struct ThreadMark {
  bool set = false;
  bool IsSet() const noexcept { return set; }
  void Set(bool on) noexcept { set = on; }
};

thread_local ThreadMark held;

#endif

}  // namespace

void NoteGuardTaken() noexcept {
  if (held.IsSet()) __builtin_trap();
  held.Set(true);
}

void NoteGuardReleased() noexcept {
  held.Set(false);
}

}  // namespace k7

#endif
