// WriteQueue: the write side of one attached link, lines in the order in which they were sent.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>
#include <memory>

#include "base/handles.h"
#include "link/link_io.h"

namespace k7 {

// What became of a line within the time that its sender waits.
enum class WriteResult {
  Gone,         // written, or refused at once: nobody is told of a refusal
  Outstanding,  // not over yet; the queue keeps its bytes and goes on with it
  Lost,         // its completion reported failure: the link is lost
};

// One line at a time is in the kernel's hands; the others wait behind it, each with its own bytes
// and its own OVERLAPPED block, so that none can overtake another whatever the port's driver does.
// Used under sendMutex, but for what is marked [any].
class WriteQueue {
 public:
  // How long the sender of a line waits for it.
  static constexpr DWORD kWaitMs = 100;

  WriteQueue(LinkHandle link, std::uint32_t linkType) noexcept;
  // Cancels what is outstanding and drops the rest. A line of which a driver does not let go stays
  // in memory for ever.
  ~WriteQueue();
  WriteQueue(const WriteQueue&) = delete;
  WriteQueue& operator=(const WriteQueue&) = delete;

  // Takes a copy of the bytes, puts it behind the lines before it, and waits up to `waitMs` for it.
  // Without memory for the copy the line is dropped (Gone).
  WriteResult Write(const char* bytes, std::size_t size, DWORD waitMs = kWaitMs) noexcept;

  // Takes finished lines out and starts the next.
  void Pump() noexcept;

  // Whether a line is outstanding, so that somebody has to call Pump when DoneEvent is signalled.
  // [any]
  bool HasOutstanding() const noexcept { return outstanding_.load(); }
  HANDLE DoneEvent() const noexcept { return done_.Get(); }

 private:
  struct Line {
    OVERLAPPED block{};
    std::unique_ptr<char[]> bytes;
    DWORD size = 0;
    DWORD written = 0;  // by earlier starts that were broken off
    bool started = false;
    int aborted = 0;  // starts that somebody broke off
    std::unique_ptr<Line> next;
  };

  Line* Append(const char* bytes, std::size_t size) noexcept;
  void PopFirst() noexcept;
  WriteResult Advance(const Line* own) noexcept;

  LinkIo io_;
  UniqueHandle done_;  // manual reset; of every block, since one is in use at a time
  std::unique_ptr<Line> first_;
  Line* last_ = nullptr;
  std::atomic<bool> outstanding_{false};
};

}  // namespace k7
