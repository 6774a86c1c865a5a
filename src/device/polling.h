// How the driver waits for the controller, and its clock. Every wait for what the controller does
// is a line that uses one of these. The few waits for something else are in link/ (the link itself,
// the engrave delay); tests/lint/waits.py names them all.
//
// A wait blocks: it reacts at once to what ends it and takes next to no processor time meanwhile. A
// wait that a host call can sit in lets messages *sent* to the waiting thread's windows through
// (the reader notifies by SendMessageW, and the host's window may live on this very thread); posted
// messages stay where they are. It looks at its message queue every round, so that Windows does not
// take the host for hung.
#pragma once

#include <cstdint>

#include "base/polled.h"
#include "device/awaited.h"
#include "device/device_state.h"

namespace k7 {

// The millisecond clock: 32 bits, monotonic, wraps. Finer than the system's timer tick. [any]
std::uint32_t TickMs() noexcept;

// The same clock in microseconds, 64 bits. [any]
std::uint64_t ClockUs() noexcept;

// Pauses for `ms`, letting sent messages through. [any]
void Pause(std::uint32_t ms) noexcept;

// The same, for a pause that is only for the controller's sake: none, or no longer, once the link
// is lost. [host], [jog]
void Pause(const LinkState& link, std::uint32_t ms) noexcept;

// Waits until the thread or event behind `handle` is signalled, at most `ms`, letting sent messages
// through. True: it is. [any]
bool AwaitHandle(void* handle, std::uint32_t ms) noexcept;

// The calling thread is a worker (a jog, a ramp) that has been asked to stop: it has nothing more
// to wait for. Never true on the host's or the reader's thread. [any]
bool WorkerAskedToStop() noexcept;
// Makes the calling thread a worker to the end of the scope: `stop` is polled from then on. [any]
class WorkerScope {
 public:
  explicit WorkerScope(const Polled<std::uint8_t>& stop) noexcept;
  ~WorkerScope();
  WorkerScope(const WorkerScope&) = delete;
  WorkerScope& operator=(const WorkerScope&) = delete;
};

// Counts the calling thread among those that wait for the reader's news, for its life.
class NewsWaiter {
 public:
  explicit NewsWaiter(LinkState& link, const Awaited& what = awaited::kController) noexcept
      : link_(link), traced_(what) {
    link_.newsWaiters.Add(1);
  }
  ~NewsWaiter() { link_.newsWaiters.Add(-1); }
  NewsWaiter(const NewsWaiter&) = delete;
  NewsWaiter& operator=(const NewsWaiter&) = delete;

  // Blocks until there is news, at most kSecondLookMs.
  void Round() noexcept;

 private:
  static constexpr std::uint32_t kSecondLookMs = 10;

  LinkState& link_;
  TracedWait traced_;
};

// Tells the waiting threads that a count, a flag or a report has changed; nothing while nobody
// waits. After the change. [reader], and whoever ends a link
void TellNews(LinkState& link) noexcept;

// Waits, without bound, until `done()`: for what only the reader can bring. Ends as well when the
// link is lost, and on a worker when that is asked to stop: release must not hang on a controller
// that has fallen silent. `what` is for the trace. False: it ended without `done()`. [any]
template <typename Done>
bool WaitForReader(LinkState& link, Done done,
                   const Awaited& what = awaited::kController) noexcept {
  NewsWaiter waiter{link, what};
  for (;;) {
    if (done()) return true;
    if (link.lost != 0 || WorkerAskedToStop()) return false;
    waiter.Round();
  }
}

}  // namespace k7
