// The host's current directory, which the system's file dialogs change as the user browses.
#pragma once

#include <windows.h>

#include <memory>
#include <new>

namespace k7 {

// Puts the process's current directory back at the end of the scope. [host]
class KeepCurrentDirectory {
 public:
  KeepCurrentDirectory() noexcept {
    const DWORD capacity = GetCurrentDirectoryW(0, nullptr);
    if (capacity == 0) return;
    path_.reset(new (std::nothrow) wchar_t[capacity]);
    if (!path_) return;
    // Another thread may have changed it to a longer one meanwhile.
    const DWORD length = GetCurrentDirectoryW(capacity, path_.get());
    if (length == 0 || length >= capacity) path_.reset();
  }
  ~KeepCurrentDirectory() {
    if (path_) SetCurrentDirectoryW(path_.get());
  }
  KeepCurrentDirectory(const KeepCurrentDirectory&) = delete;
  KeepCurrentDirectory& operator=(const KeepCurrentDirectory&) = delete;

 private:
  std::unique_ptr<wchar_t[]> path_;
};

}  // namespace k7
