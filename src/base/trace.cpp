#include "base/trace.h"

#include <windows.h>

#include <atomic>

#include "base/arithmetic.h"
#include "base/short_lock.h"
#include "base/trace_file.h"
#include "base/trace_text.h"
#include "k7_version.h"

namespace k7 {

namespace {

constexpr std::size_t kTimeWidth = 14;
constexpr std::size_t kThreadColumn = 30;
constexpr std::size_t kKindColumn = 36;
constexpr std::size_t kRestColumn = 43;

// Everything that a trace keeps. The lock is held for one write: records stand in the file in the
// order of their times.
struct State {
  ShortLock guard;
  TraceFile file;
  DWORD roleIndex = TLS_OUT_OF_INDEXES;
  std::uint64_t startUs = 0;
  std::uint64_t lost = 0;  // records that could not be written since the last one that could
  FILETIME startDate{};
};
constinit State state;

std::uint64_t ClockNowUs() noexcept {
  LARGE_INTEGER frequency, now;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&now);
  const auto perSecond = static_cast<std::uint64_t>(frequency.QuadPart);
  const auto ticks = static_cast<std::uint64_t>(now.QuadPart);
  return ticks / perSecond * 1000000 + ticks % perSecond * 1000000 / perSecond;
}

// The error code of the thread, which the driver looks at around these calls, stays as it was.
class KeptError {
 public:
  KeptError() noexcept : error_(GetLastError()) {}
  ~KeptError() { SetLastError(error_); }
  KeptError(const KeptError&) = delete;
  KeptError& operator=(const KeptError&) = delete;

 private:
  const DWORD error_;
};

const trace::Thread* OwnThread() noexcept {
  return static_cast<const trace::Thread*>(TlsGetValue(state.roleIndex));
}

// What stands before the rest of a record: time, process, thread, link, kind.
TraceText Begun(const void* link, const char* kind) noexcept {
  const trace::Thread* const thread = OwnThread();
  if (link == nullptr && thread != nullptr) link = thread->link;
  TraceText text;
  text.AddMillionths(static_cast<std::int64_t>(trace::NowUs() - state.startUs), kTimeWidth);
  text.Add(" ").AddNumber(GetCurrentProcessId());
  text.Add(" ").Add(thread == nullptr ? "host" : thread->role).Add(":");
  text.AddNumber(GetCurrentThreadId()).PadTo(kThreadColumn);
  if (link == nullptr) {
    text.Add("-");
  } else {
    text.AddHex(reinterpret_cast<std::uintptr_t>(link));
  }
  text.PadTo(kKindColumn).Add(kind).PadTo(kRestColumn);
  return text;
}

void AddTwoDigits(TraceText& text, const char* before, unsigned number) noexcept {
  text.Add(before);
  if (number < 10) text.Add("0");
  text.AddNumber(number);
}

// The first record of this process in each file. Its date is that of the zero of all times.
TraceText Header() noexcept {
  SYSTEMTIME date{};
  FileTimeToSystemTime(&state.startDate, &date);
  const auto ticks = (std::uint64_t{state.startDate.dwHighDateTime} << 32) |
                     state.startDate.dwLowDateTime;  // of 100 ns
  const auto us = static_cast<std::uint32_t>(ticks / 10 % 1000000);
  TraceText text = Begun(nullptr, "trace");
  text.Add("format=").AddNumber(kTraceFormat).Add(" driver=" K7_VERSION " zero=");
  text.AddNumber(date.wYear);
  AddTwoDigits(text, "-", date.wMonth);
  AddTwoDigits(text, "-", date.wDay);
  AddTwoDigits(text, "T", date.wHour);
  AddTwoDigits(text, ":", date.wMinute);
  AddTwoDigits(text, ":", date.wSecond);
  text.Add(".");
  for (std::uint32_t digit = 100000; digit > 0; digit /= 10) text.AddNumber(us / digit % 10);
  wchar_t program[512] = L"";
  GetModuleFileNameW(nullptr, program, 512);
  program[511] = L'\0';
  text.Add("Z program=").AddName(program).End();
  return text;
}

// With the lock held.
void WriteRecord(std::string_view text) noexcept {
  if (state.file.MakeRoom(text.size())) state.file.Write(Header().Text());
  if (state.lost != 0) {
    TraceText gap = Begun(nullptr, "gap");
    gap.AddNumber(static_cast<std::int64_t>(state.lost)).End();
    if (state.file.Write(gap.Text())) state.lost = 0;
  }
  if (!state.file.Write(text)) ++state.lost;
}

// `add` puts the rest of the record behind what Begun has written. The time is taken under the
// lock, so that times never go back in the file.
template <typename Add>
void Record(const void* link, const char* kind, Add add) noexcept {
  const KeptError kept;
  const ShortLockScope lock{state.guard};
  if (!Tracing()) return;  // it has just ended
  TraceText text = Begun(link, kind);
  add(text);
  WriteRecord(text.End().Text());
}

// With the lock held.
void Close() noexcept {
  WriteRecord(Begun(nullptr, "end").End().Text());
  trace::isOn = false;
  TlsFree(state.roleIndex);
  state.file.Close();
}

// The end of the module, or of the process: then other threads have been stopped where they were,
// one of them perhaps with the lock.
struct AtTheEnd {
  ~AtTheEnd() {
    if (Tracing() && state.guard.TryAcquire()) Close();
  }
};
AtTheEnd atTheEnd;

}  // namespace

void BeginTraceIfWanted() noexcept {
  static constinit std::atomic<bool> looked{false};
  if (looked.exchange(true)) return;
  const KeptError kept;
  wchar_t path[1024] = L"";
  const DWORD length = GetEnvironmentVariableW(L"K7_TRACE", path, 1024);
  if (length > 0 && length < 1024) BeginTrace(path);
}

void BeginTrace(const wchar_t* path) noexcept {
  const ShortLockScope lock{state.guard};
  if (Tracing() || !state.file.Open(path)) return;
  state.roleIndex = TlsAlloc();
  state.startUs = ClockNowUs();
  state.lost = 0;
  GetSystemTimePreciseAsFileTime(&state.startDate);
  state.file.MakeRoom(TraceText::kCapacity);
  WriteRecord(Header().Text());
  trace::isOn = true;
}

void EndTrace() noexcept {
  const ShortLockScope lock{state.guard};
  if (Tracing()) Close();
}

namespace trace {

std::uint64_t NowUs() noexcept {
  return ClockNowUs();
}

void NameThread(const Thread* thread) noexcept {
  TlsSetValue(state.roleIndex, const_cast<Thread*>(thread));
}

void Event(const void* link, const char* kind, const char* rest) noexcept {
  Record(link, kind, [&](TraceText& text) { text.Add(rest); });
}

void Name(const void* link, const char* kind, const char* what, const wchar_t* name) noexcept {
  Record(link, kind, [&](TraceText& text) { text.Add(what).Add(" ").AddName(name); });
}

void Failure(const void* link, const char* what, std::uint32_t error,
             const wchar_t* name) noexcept {
  Record(link, "fail", [&](TraceText& text) {
    text.Add(what).Add(" ").AddNumber(error);
    if (name != nullptr) text.Add(" ").AddName(name);
  });
}

void Sent(const void* link, const char* tag, const char* line) noexcept {
  Record(link, "send", [&](TraceText& text) { text.Add(tag).Add(" ").AddBytes(line); });
}

void Received(std::string_view line) noexcept {
  Record(nullptr, "recv", [&](TraceText& text) { text.AddBytes(line); });
}

void Pass(const void* link, std::uint32_t number, std::uint32_t count, float inches) noexcept {
  Record(link, "job", [&](TraceText& text) {
    text.Add("pass ").AddNumber(number).Add(" of ").AddNumber(count).Add(" depth ");
    text.AddMillionths(RoundToSteps(inches * 1000000.0f));
  });
}

void Told(const char* by, std::uint32_t message, std::int32_t wParam,
          std::int32_t lParam) noexcept {
  Record(nullptr, "tell", [&](TraceText& text) {
    text.Add(by).Add(" ").AddNumber(message).Add(" ").AddNumber(wParam).Add(" ").AddNumber(lParam);
  });
}

void Returned(std::uint64_t us) noexcept {
  Record(nullptr, "told",
         [&](TraceText& text) { text.AddMillionths(static_cast<std::int64_t>(us)); });
}

void Waits(const Awaited& awaited, std::uint64_t us) noexcept {
  Record(nullptr, "wait", [&](TraceText& text) {
    text.AddMillionths(static_cast<std::int64_t>(us)).Add(" \"").Add(awaited.what);
    text.Add("\" until \"").Add(awaited.end).Add("\"");
  });
}

void Waited(const Awaited& awaited, std::uint64_t us) noexcept {
  Record(nullptr, "waited", [&](TraceText& text) {
    text.AddMillionths(static_cast<std::int64_t>(us)).Add(" \"").Add(awaited.what).Add("\"");
  });
}

}  // namespace trace

}  // namespace k7
