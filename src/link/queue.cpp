#include "link/queue.h"

#include <cstring>
#include <new>

#include "device/polling.h"

namespace k7 {

namespace {

// A line that is broken off more often than this is not getting through.
constexpr int kMostAborted = 10;

}  // namespace

WriteQueue::WriteQueue(LinkHandle link, std::uint32_t linkType) noexcept
    : io_(link, linkType), done_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

WriteQueue::~WriteQueue() {
  if (first_ && first_->started && !io_.Cancel(first_->block, LinkIo::Direction::Write)) {
    std::unique_ptr<Line> rest = std::move(first_->next);
    static_cast<void>(first_.release());
    static_cast<void>(done_.Release());  // the block signals it
    first_ = std::move(rest);
  }
  while (first_) PopFirst();
}

WriteQueue::Line* WriteQueue::Append(const char* bytes, std::size_t size) noexcept {
  std::unique_ptr<Line> line{new (std::nothrow) Line};
  if (!line) return nullptr;
  line->bytes.reset(new (std::nothrow) char[size]);
  if (!line->bytes) return nullptr;
  std::memcpy(line->bytes.get(), bytes, size);
  line->size = static_cast<DWORD>(size);
  LinkIo::SetEventOf(line->block, done_.Get());
  Line* const added = line.get();
  (first_ ? last_->next : first_) = std::move(line);
  last_ = added;
  return added;
}

void WriteQueue::PopFirst() noexcept {
  first_ = std::move(first_->next);
  if (!first_) last_ = nullptr;
}

// Works the queue off as far as it goes without waiting. The result is about `own` (null: about
// nothing), which is no longer in the queue unless it is Outstanding.
WriteResult WriteQueue::Advance(const Line* own) noexcept {
  while (first_) {
    Line& line = *first_;
    bool lost = false;
    if (line.started) {
      DWORD count = 0;
      DWORD flags = 0;
      if (!io_.Finish(line.block, count, flags)) {
        const DWORD error = GetLastError();
        if (error == ERROR_IO_INCOMPLETE) break;
        // Windows breaks off the writes of a thread that ends (a jog's, for one), and those of a
        // port on which another program had left fAbortOnError on. The rest of the line is started
        // again, by the thread that is here now.
        if (error == ERROR_OPERATION_ABORTED && line.aborted < kMostAborted) {
          io_.ClearError();
          ++line.aborted;
          line.written += count;
          line.started = false;
          continue;
        }
        lost = true;
        io_.TraceFailed("write", error);
      }
    } else {
      const IoStart start =
          io_.StartWrite(line.bytes.get() + line.written, line.size - line.written, line.block);
      if (start == IoStart::Pending) {
        line.started = true;
        break;
      }
      if (start == IoStart::Failed && GetLastError() == ERROR_OPERATION_ABORTED &&
          line.aborted < kMostAborted) {
        io_.ClearError();
        ++line.aborted;
        continue;
      }
      if (start == IoStart::Failed) io_.TraceFailed("write", GetLastError());
    }
    const bool wasOwn = &line == own;
    PopFirst();
    // KEEP: a line that fails after its sender stopped waiting is not reported to anybody.
    if (wasOwn && lost) {
      outstanding_.store(false);  // it was the last
      return WriteResult::Lost;
    }
  }
  outstanding_.store(first_ != nullptr);
  if (own == nullptr) return WriteResult::Gone;
  // Lines go out in order and `own` is the last: it is in the queue for as long as the queue is not
  // empty.
  return first_ ? WriteResult::Outstanding : WriteResult::Gone;
}

WriteResult WriteQueue::Write(const char* bytes, std::size_t size, DWORD waitMs) noexcept {
  const Line* const own = Append(bytes, size);
  if (own == nullptr) return WriteResult::Gone;
  const std::uint32_t start = TickMs();
  WriteResult result = Advance(own);
  while (result == WriteResult::Outstanding) {
    const std::uint32_t elapsedMs = TickMs() - start;
    // Sent messages are not let through here: a window procedure that sends a line would do so in
    // the middle of this one.
    if (elapsedMs >= waitMs ||
        WaitForSingleObject(done_.Get(), waitMs - elapsedMs) != WAIT_OBJECT_0) {
      break;
    }
    result = Advance(own);
  }
  return result;
}

void WriteQueue::Pump() noexcept {
  Advance(nullptr);
}

}  // namespace k7
