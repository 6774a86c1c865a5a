#include "device/polling.h"

#include <windows.h>

#include <atomic>

namespace k7 {

namespace {

constexpr std::uint64_t kUsPerSecond = 1000000;

// Runs the window procedures of messages that other threads have sent; leaves posted ones queued.
void DeliverSentMessages() noexcept {
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

// Blocks until `handle` (null: nothing) is signalled or a message has been sent to this thread, at
// most `ms`. True: the handle is signalled.
bool Block(HANDLE handle, DWORD ms) noexcept {
  const DWORD count = handle == nullptr ? 0 : 1;
  const DWORD result =
      MsgWaitForMultipleObjectsEx(count, &handle, ms, QS_SENDMESSAGE, MWMO_INPUTAVAILABLE);
  DeliverSentMessages();
  if (result == WAIT_FAILED) Sleep(ms);  // no message queue to be had: plain sleep
  return count == 1 && result == WAIT_OBJECT_0;
}

// Which threads are workers, and what asks each to stop. A thread-local variable would cost the
// host an index and a handle each time that it loads the module, and never give them back.
struct WorkerEntry {
  std::atomic<DWORD> thread{0};  // 0: free
  std::atomic<const Polled<std::uint8_t>*> stop{nullptr};
};
constexpr int kMostWorkers = 64;  // two a controller, and some that are still in their last message
constinit WorkerEntry workers[kMostWorkers];

WorkerEntry* EntryOf(DWORD thread) noexcept {
  for (WorkerEntry& entry : workers) {
    if (entry.thread == thread) return &entry;
  }
  return nullptr;
}

std::uint64_t TicksPerSecond() noexcept {
  static constinit std::atomic<std::uint64_t> ticks{0};
  if (ticks == 0) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    ticks = static_cast<std::uint64_t>(frequency.QuadPart);
  }
  return ticks;
}

// How long a pause sleeps before it looks whether it is still wanted.
constexpr std::uint32_t kLookMs = 50;

}  // namespace

bool WorkerAskedToStop() noexcept {
  const WorkerEntry* const own = EntryOf(GetCurrentThreadId());
  return own != nullptr && *own->stop.load() != 0;
}

WorkerScope::WorkerScope(const Polled<std::uint8_t>& stop) noexcept {
  for (WorkerEntry& entry : workers) {
    DWORD free = 0;
    if (!entry.thread.compare_exchange_strong(free, GetCurrentThreadId())) continue;
    entry.stop = &stop;  // nobody but this thread looks at the entry
    return;
  }
}

WorkerScope::~WorkerScope() {
  if (WorkerEntry* const own = EntryOf(GetCurrentThreadId())) own->thread = 0;
}

std::uint64_t ClockUs() noexcept {
  const std::uint64_t ticksPerSecond = TicksPerSecond();
  LARGE_INTEGER now;
  QueryPerformanceCounter(&now);
  const auto ticks = static_cast<std::uint64_t>(now.QuadPart);
  return ticks / ticksPerSecond * kUsPerSecond +
         ticks % ticksPerSecond * kUsPerSecond / ticksPerSecond;
}

std::uint32_t TickMs() noexcept {
  return static_cast<std::uint32_t>(ClockUs() / 1000);
}

bool AwaitHandle(void* handle, std::uint32_t ms) noexcept {
  const std::uint32_t start = TickMs();
  for (;;) {
    const std::uint32_t elapsed = TickMs() - start;
    if (Block(handle, elapsed < ms ? ms - elapsed : 0)) return true;
    if (elapsed >= ms) return false;
  }
}

void Pause(std::uint32_t ms) noexcept {
  AwaitHandle(nullptr, ms);
}

void Pause(const LinkState& link, std::uint32_t ms) noexcept {
  const std::uint32_t start = TickMs();
  while (link.lost == 0) {
    const std::uint32_t elapsed = TickMs() - start;
    if (elapsed >= ms) return;
    Pause(ms - elapsed < kLookMs ? ms - elapsed : kLookMs);
  }
}

void NewsWaiter::Round() noexcept {
  Block(link_.newsEvent, kSecondLookMs);
  link_.newsTold = 0;  // before the caller looks: what changes from here on is told anew
  traced_.Look();
}

void TellNews(LinkState& link) noexcept {
  if (link.newsWaiters > 0 && link.newsTold.Exchange(1) == 0) SetEvent(link.newsEvent);
}

}  // namespace k7
