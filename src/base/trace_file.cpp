#include "base/trace_file.h"

#include <windows.h>

#include "base/bounded_copy.h"
#include "base/handles.h"

namespace k7 {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// A process looks what others have appended whenever it has appended so much itself; the margin is
// what they may append meanwhile.
constexpr std::int64_t kLookBytes = std::int64_t{16} << 10;
constexpr std::int64_t kFullBytes = TraceFile::kMostBytes - (std::int64_t{256} << 10);

bool IsFolder(const wchar_t* path) noexcept {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::int64_t SizeOf(HANDLE file) noexcept {
  LARGE_INTEGER size{};
  return GetFileSizeEx(file, &size) != FALSE ? size.QuadPart : 0;
}

// Held for as long as one of the processes that share a trace renames its file. Never waited for:
// who finds it taken goes on with the file that he has.
class RotationMark {
 public:
  RotationMark() noexcept : mark_(CreateMutexW(nullptr, FALSE, L"Local\\K7TraceRotation")) {
    if (GetLastError() == ERROR_ALREADY_EXISTS) mark_.Reset(nullptr);
  }
  bool IsOurs() const noexcept { return static_cast<bool>(mark_); }

 private:
  UniqueHandle mark_;
};

}  // namespace

bool TraceFile::Open(const wchar_t* path) noexcept {
  wchar_t full[kPathCapacity] = L"";
  const DWORD length = GetFullPathNameW(path, kPathCapacity, full, nullptr);
  if (length == 0 || length >= kPathCapacity) return false;
  CopyText(path_, full);
  if (IsFolder(full)) {
    wchar_t name[48] = L"";
    wsprintfW(name, L"%sk7trace-%lu.txt", full[length - 1] == L'\\' ? L"" : L"\\",
              GetCurrentProcessId());
    AppendText(path_, name);
  }
  CopyText(olderPath_, path_);
  AppendText(olderPath_, kOlder);
  return OpenFile();
}

bool TraceFile::OpenFile() noexcept {
  // The right to append, and none to write elsewhere: the system finds the end at each write.
  const HANDLE file = CreateFileW(path_, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES, kShareAll,
                                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  Close();
  file_ = file;
  size_ = SizeOf(file);
  lookAt_ = NextLook();
  return true;
}

void TraceFile::Close() noexcept {
  if (file_ != nullptr) CloseHandle(file_);
  file_ = nullptr;
}

bool TraceFile::IsStillOfThatName() const noexcept {
  const UniqueFile named{CreateFileW(path_, FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr)};
  BY_HANDLE_FILE_INFORMATION here{}, there{};
  return named && GetFileInformationByHandle(file_, &here) != FALSE &&
         GetFileInformationByHandle(named.Get(), &there) != FALSE &&
         here.dwVolumeSerialNumber == there.dwVolumeSerialNumber &&
         here.nFileIndexHigh == there.nFileIndexHigh && here.nFileIndexLow == there.nFileIndexLow;
}

bool TraceFile::MakeRoom(std::size_t bytes) noexcept {
  const auto more = static_cast<std::int64_t>(bytes);
  if (size_ + more <= lookAt_) return false;
  size_ = SizeOf(file_);
  if (size_ + more > kFullBytes && Rotate()) return true;
  lookAt_ = NextLook();
  return false;
}

// The size at which this process looks again; of a file that could not be renamed, a while later.
std::int64_t TraceFile::NextLook() const noexcept {
  const std::int64_t next = size_ + kLookBytes;
  return size_ < kFullBytes && next > kFullBytes ? kFullBytes : next;
}

bool TraceFile::Rotate() noexcept {
  const RotationMark mark;
  if (!mark.IsOurs()) return false;
  // Another process may have renamed it already.
  if (IsStillOfThatName() && MoveFileExW(path_, olderPath_, MOVEFILE_REPLACE_EXISTING) == FALSE) {
    return false;
  }
  return OpenFile();
}

bool TraceFile::Write(std::string_view text) noexcept {
  const auto size = static_cast<std::int64_t>(text.size());
  size_ += size;  // also of what is dropped, so that the file is looked at again
  if (size_ > kMostBytes) return false;
  DWORD written = 0;
  return WriteFile(file_, text.data(), static_cast<DWORD>(size), &written, nullptr) != FALSE;
}

}  // namespace k7
