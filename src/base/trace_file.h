// The file that a trace is appended to, and its one predecessor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace k7 {

// A file of at most kMostBytes. When it is full it is renamed to its name with ".1" behind it, over
// an older one, and a new one is begun. Several processes may append to it: each write is one call
// of the system, at the end as it stands then, and gone from this process when it returns. The
// caller locks.
class TraceFile {
 public:
  static constexpr std::int64_t kMostBytes = std::int64_t{16} << 20;

  constexpr TraceFile() noexcept = default;

  // Makes the file, or opens it to go on. An existing folder stands for a file in it that is named
  // after the process. False: neither can be had.
  bool Open(const wchar_t* path) noexcept;

  // Sees to it that `bytes` more fit. True: another file than before is open now.
  bool MakeRoom(std::size_t bytes) noexcept;

  // False: nothing has been written, because the disk or the file is full.
  bool Write(std::string_view text) noexcept;

  void Close() noexcept;

 private:
  static constexpr int kPathCapacity = 1024;
  static constexpr wchar_t kOlder[] = L".1";

  bool OpenFile() noexcept;
  bool IsStillOfThatName() const noexcept;
  bool Rotate() noexcept;
  std::int64_t NextLook() const noexcept;

  void* file_ = nullptr;  // made by OpenFile, closed by Close; null: none
  wchar_t path_[kPathCapacity] = L"";
  wchar_t olderPath_[kPathCapacity + 2] = L"";
  std::int64_t size_ = 0;    // as far as this process knows
  std::int64_t lookAt_ = 0;  // the size at which it looks again
};

}  // namespace k7
