// ShortLock: a lock for a few statements, without a system call while nobody else holds it.
#pragma once

namespace k7 {

// Not recursive. Owns no object of the operating system, so it needs no destructor. [any]
class ShortLock {
 public:
  constexpr ShortLock() noexcept = default;
  ShortLock(const ShortLock&) = delete;
  ShortLock& operator=(const ShortLock&) = delete;

  void Acquire() noexcept;
  // False: another thread holds it.
  [[nodiscard]] bool TryAcquire() noexcept;
  void Release() noexcept;

 private:
  void* state_ = nullptr;
};

// Holds a ShortLock to the end of the scope.
class [[nodiscard]] ShortLockScope {
 public:
  explicit ShortLockScope(ShortLock& lock) noexcept : lock_(lock) { lock_.Acquire(); }
  ~ShortLockScope() { lock_.Release(); }
  ShortLockScope(const ShortLockScope&) = delete;
  ShortLockScope& operator=(const ShortLockScope&) = delete;

 private:
  ShortLock& lock_;
};

}  // namespace k7
