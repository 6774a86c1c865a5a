#include "link/queue.h"

#include <cstring>
#include <new>

#include "device/polling.h"

namespace k7 {

WriteQueue::WriteQueue(LinkHandle link, std::uint32_t linkType) noexcept
    : io_(link, linkType), done_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

WriteQueue::~WriteQueue() {
  if (first_ && first_->started) io_.CancelAndWait(first_->block);
  while (first_) PopFirst();
}

WriteQueue::Line* WriteQueue::Append(const char* bytes, std::size_t size) noexcept {
  std::unique_ptr<Line> line{new (std::nothrow) Line};
  if (!line) return nullptr;
  line->bytes.reset(new (std::nothrow) char[size]);
  if (!line->bytes) return nullptr;
  std::memcpy(line->bytes.get(), bytes, size);
  line->size = static_cast<DWORD>(size);
  line->block.hEvent = done_.Get();
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
        // Windows breaks off the writes of a thread that ends (a jog's, for one). The rest of the
        // line is started again, by the thread that is here now.
        if (error == ERROR_OPERATION_ABORTED && &line != own) {
          line.written += count;
          line.started = false;
          continue;
        }
        lost = true;
      }
    } else {
      ResetEvent(done_.Get());
      const IoStart start =
          io_.StartWrite(line.bytes.get() + line.written, line.size - line.written, line.block);
      if (start == IoStart::Pending) {
        line.started = true;
        break;
      }
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

WriteResult WriteQueue::Write(const char* bytes, std::size_t size) noexcept {
  const Line* const own = Append(bytes, size);
  if (own == nullptr) return WriteResult::Gone;
  const std::uint32_t start = TickMs();
  WriteResult result = Advance(own);
  while (result == WriteResult::Outstanding) {
    const std::uint32_t elapsedMs = TickMs() - start;
    // Sent messages stay out: a window procedure that sent a line would do so inside this one.
    if (elapsedMs >= kWaitMs ||
        WaitForSingleObject(done_.Get(), kWaitMs - elapsedMs) != WAIT_OBJECT_0) {
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
