// Guarded<T>: a value of the record that is reached only through the lock beside it.
#pragma once

#include <utility>

#include "base/short_lock.h"

namespace k7 {

// Trap, in checked builds, when a thread takes a second guarded value while it holds one. [any]
#ifdef K7_CHECKED
void NoteGuardTaken() noexcept;
void NoteGuardReleased() noexcept;
#else
inline void NoteGuardTaken() noexcept {}
inline void NoteGuardReleased() noexcept {}
#endif

// The record has seven of them. They are open from attach to detach: a closed one gives nothing,
// and whoever asked skips his update or ends his wait. Each is held for one short access, never two
// at once on a thread (checked builds trap). [any]
template <typename T>
class Guarded {
 public:
  // The value, locked until the end of the scope. Test it before use: false while closed.
  class [[nodiscard]] Access {
   public:
    explicit Access(Guarded& guarded) noexcept : guarded_(guarded) {
      NoteGuardTaken();
      guarded_.lock_.Acquire();
    }
    ~Access() {
      guarded_.lock_.Release();
      NoteGuardReleased();
    }
    Access(const Access&) = delete;
    Access& operator=(const Access&) = delete;

    explicit operator bool() const noexcept { return guarded_.open_; }
    T& operator*() const noexcept { return guarded_.value_; }
    T* operator->() const noexcept { return &guarded_.value_; }

   private:
    Guarded& guarded_;
  };

  Guarded() noexcept = default;
  explicit Guarded(T value) noexcept : value_(std::move(value)) {}

  Access Lock() noexcept { return Access{*this}; }

  // A copy of the value; `otherwise` while closed.
  T ValueOr(T otherwise) const noexcept {
    const Access access{const_cast<Guarded&>(*this)};
    return access ? *access : otherwise;
  }

  // Stores `value`; nothing while closed.
  void Set(T value) noexcept {
    if (const Access access{*this}) *access = std::move(value);
  }

  void Open() noexcept { SetOpen(true); }
  void Close() noexcept { SetOpen(false); }

  // The value without the lock: for a record that no other thread works on, open or closed.
  T& Alone() noexcept { return value_; }
  const T& Alone() const noexcept { return value_; }

 private:
  void SetOpen(bool open) noexcept {
    const ShortLockScope scope{lock_};
    open_ = open;
  }

  ShortLock lock_;
  bool open_ = false;
  T value_{};
};

}  // namespace k7
