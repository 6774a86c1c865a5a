// Owners of Win32 handles. There are two types because Win32 has two values for "no handle".
#pragma once

#include <windows.h>

namespace k7 {

// Owns one handle whose "none" is kNone (as an integer); closes it at the end of the scope.
template <long long kNone>
class BasicHandle {
 public:
  BasicHandle() noexcept = default;
  explicit BasicHandle(HANDLE handle) noexcept : handle_(handle) {}
  BasicHandle(BasicHandle&& other) noexcept : handle_(other.Release()) {}
  BasicHandle& operator=(BasicHandle&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  ~BasicHandle() { Reset(None()); }

  static HANDLE None() noexcept { return reinterpret_cast<HANDLE>(kNone); }
  HANDLE Get() const noexcept { return handle_; }
  explicit operator bool() const noexcept { return handle_ != None(); }
  HANDLE Release() noexcept {
    const HANDLE handle = handle_;
    handle_ = None();
    return handle;
  }
  void Reset(HANDLE handle) noexcept {
    if (handle_ != None()) CloseHandle(handle_);
    handle_ = handle;
  }

 private:
  HANDLE handle_ = None();
};

using UniqueHandle = BasicHandle<0>;  // events, mutexes, threads: none is null
using UniqueFile = BasicHandle<-1>;   // files, ports, pipes: none is INVALID_HANDLE_VALUE

}  // namespace k7
