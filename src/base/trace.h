// The trace: what the driver says and hears, waits for and tells, written to a file as it happens.
//
// It is on when the environment variable K7_TRACE names a file; docs/trace.md has its format. Each
// function below costs one branch while it is off. While it is on it writes one record, by one call
// of the system, and changes nothing: no order, no error code of the thread, no memory.
#pragma once

#include <atomic>
#include <cstdint>
#include <string_view>

namespace k7 {

// What a wait is for, and what would end it.
struct Awaited {
  const char* what;
  const char* end;
};

namespace trace {

inline constinit std::atomic<bool> isOn{false};

// The thread that calls is the driver's own, and works for this link.
struct Thread {
  const char* role;  // "reader"
  const void* link;
};

void NameThread(const Thread* thread) noexcept;
void Event(const void* link, const char* kind, const char* rest) noexcept;
void Name(const void* link, const char* kind, const char* what, const wchar_t* name) noexcept;
void Failure(const void* link, const char* what, std::uint32_t error, const wchar_t* name) noexcept;
void Sent(const void* link, const char* tag, const char* line) noexcept;
void Received(std::string_view line) noexcept;
void Pass(const void* link, std::uint32_t number, std::uint32_t count, float inches) noexcept;
void Told(const char* by, std::uint32_t message, std::int32_t wParam, std::int32_t lParam) noexcept;
void Returned(std::uint64_t us) noexcept;
void Waits(const Awaited& awaited, std::uint64_t us) noexcept;
void Waited(const Awaited& awaited, std::uint64_t us) noexcept;
std::uint64_t NowUs() noexcept;

}  // namespace trace

// Begins a trace, once in the life of the module, when K7_TRACE names a file or a folder. [host]
void BeginTraceIfWanted() noexcept;
// Begins one in that file, and ends it; the end of the module does that, too. [host]
void BeginTrace(const wchar_t* path) noexcept;
void EndTrace() noexcept;

// Whether a trace is being written. [any]
inline bool Tracing() noexcept {
  return trace::isOn.load(std::memory_order_relaxed);
}

// Names the calling thread, in the records that it writes, to the end of the scope. [any]
class TracedThread {
 public:
  TracedThread(const char* role, const void* link) noexcept : thread_{role, link} {
    if (Tracing()) trace::NameThread(&thread_);
  }
  ~TracedThread() {
    if (Tracing()) trace::NameThread(nullptr);
  }
  TracedThread(const TracedThread&) = delete;
  TracedThread& operator=(const TracedThread&) = delete;

 private:
  const trace::Thread thread_;
};

// A link is attached or detached, a job begins or ends. `link` is its handle. [any]
inline void TraceEvent(const void* link, const char* kind, const char* rest = "") noexcept {
  if (Tracing()) [[unlikely]]
    trace::Event(link, kind, rest);
}
// The same of something that has a name: a port, a file. [any]
inline void TraceName(const void* link, const char* kind, const char* what,
                      const wchar_t* name) noexcept {
  if (Tracing()) [[unlikely]]
    trace::Name(link, kind, what, name);
}
// The system has refused `what` with `error`. [any]
inline void TraceFailure(const void* link, const char* what, std::uint32_t error,
                         const wchar_t* name = nullptr) noexcept {
  if (Tracing()) [[unlikely]]
    trace::Failure(link, what, error, name);
}
// A line is about to be written to the link. [any]
inline void TraceSent(const void* link, const char* tag, const char* line) noexcept {
  if (Tracing()) [[unlikely]]
    trace::Sent(link, tag, line);
}
// A line has been read. [reader]
inline void TraceReceived(std::string_view line) noexcept {
  if (Tracing()) [[unlikely]]
    trace::Received(line);
}
// A pass begins, so deep. [host]
inline void TracePass(const void* link, std::uint32_t number, std::uint32_t count,
                      float inches) noexcept {
  if (Tracing()) [[unlikely]]
    trace::Pass(link, number, count, inches);
}

// The host is told something, by "callback" or "window", to the end of the scope. Two records, so
// that a host that never returns is seen. [any]
class TracedMessage {
 public:
  TracedMessage(const char* by, std::uint32_t message, std::int32_t wParam = 0,
                std::int32_t lParam = 0) noexcept {
    if (!Tracing()) [[likely]]
      return;
    trace::Told(by, message, wParam, lParam);
    sinceUs_ = trace::NowUs();
  }
  ~TracedMessage() {
    if (sinceUs_ != 0) trace::Returned(trace::NowUs() - sinceUs_);
  }
  TracedMessage(const TracedMessage&) = delete;
  TracedMessage& operator=(const TracedMessage&) = delete;

 private:
  std::uint64_t sinceUs_ = 0;  // 0: no trace
};

// A wait, to the end of the scope: it is told of when it has lasted for a second, by Look, and when
// such a one has ended. [any]
class TracedWait {
 public:
  explicit TracedWait(const Awaited& awaited) noexcept : awaited_(awaited) {
    if (Tracing()) [[unlikely]]
      sinceUs_ = trace::NowUs();
  }
  ~TracedWait() {
    if (sinceUs_ == 0) [[likely]]
      return;
    const std::uint64_t us = trace::NowUs() - sinceUs_;
    if (us >= kLongUs) trace::Waited(awaited_, us);
  }
  TracedWait(const TracedWait&) = delete;
  TracedWait& operator=(const TracedWait&) = delete;

  // To be called again and again while the wait goes on.
  void Look() noexcept {
    if (sinceUs_ == 0 || told_) [[likely]]
      return;
    const std::uint64_t us = trace::NowUs() - sinceUs_;
    if (us < kLongUs) return;
    told_ = true;
    trace::Waits(awaited_, us);
  }

 private:
  static constexpr std::uint64_t kLongUs = 1000000;

  const Awaited& awaited_;
  std::uint64_t sinceUs_ = 0;  // 0: no trace
  bool told_ = false;
};

// A wait of which nobody looks how long it lasts: it is told of at once. [any]
class TracedStandstill {
 public:
  explicit TracedStandstill(const Awaited& awaited) noexcept : awaited_(awaited) {
    if (!Tracing()) [[likely]]
      return;
    trace::Waits(awaited, 0);
    sinceUs_ = trace::NowUs();
  }
  ~TracedStandstill() {
    if (sinceUs_ != 0) trace::Waited(awaited_, trace::NowUs() - sinceUs_);
  }
  TracedStandstill(const TracedStandstill&) = delete;
  TracedStandstill& operator=(const TracedStandstill&) = delete;

 private:
  const Awaited& awaited_;
  std::uint64_t sinceUs_ = 0;  // 0: no trace
};

}  // namespace k7
