// The watching thread.
#include "app/watchdog.h"

#include <cstdlib>
#include <thread>

#include "app/console.h"
#include "app/stop_request.h"
#include "args/arguments.h"

namespace k7host {
namespace {

constexpr DWORD kLookMs = 200;
constexpr std::uint64_t kFirstAskMs = 3000;
constexpr std::uint64_t kAskMs = 1000;
constexpr std::uint64_t kAnswerMs = 1000;
constexpr DWORD kAnswerLookMs = 5;
constexpr char kSignOfLife[] = "SmoothieIsConnected\n";
constexpr wchar_t kClassName[] = L"K7HostSession";

// Waits in which the machine has something to say.
bool IsWatched(Waiting waiting) {
  return waiting != Waiting::Nothing && waiting != Waiting::Dialog;
}

}  // namespace

void Watch::Word() {
  wordMs_ = GetTickCount64();
  ++signsOfLife_;
}

bool Watch::Answers() {
  const std::lock_guard lock(deviceMutex_);
  if (device_ == nullptr) return false;
  const std::uint32_t before = signsOfLife_;
  device_->SendLine(kSignOfLife);
  const std::uint64_t end = GetTickCount64() + kAnswerMs;
  while (signsOfLife_ == before && GetTickCount64() < end) Sleep(kAnswerLookMs);
  return signsOfLife_ != before;
}

void Watch::Progress() {
  const std::uint64_t now = GetTickCount64();
  wordMs_ = now;
  progressMs_ = now;
}

Waiting Watch::Exchange(Waiting waiting) {
  const Waiting before = waiting_.exchange(waiting);
  // What one call has brought is nothing for the next to be measured by.
  if (before != waiting) Progress();
  return before;
}

void Watch::ShowJob(const ProgressView& view, const MoveCounters* counters) {
  const std::lock_guard lock(jobMutex_);
  view_ = view;
  counters_ = counters;
}

void Watch::SetDevice(k7::IEngraver* device) {
  const std::lock_guard lock(deviceMutex_);
  device_ = device;
}

void Watch::SetLastWords(std::function<void()> lastWords) {
  const std::lock_guard lock(lastWordsMutex_);
  lastWords_ = std::move(lastWords);
}

Watch& TheWatch() {
  static Watch watch;
  return watch;
}

class Watcher {
 public:
  explicit Watcher(Watch& watch)
      : watch_(watch), done_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    MakeWindow();
  }
  ~Watcher() {
    SetStopDeadline(nullptr);
    DestroyWindow(watch_.window_);
    CloseHandle(done_);
  }
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  int Run(const std::function<int()>& command) {
    SetStopDeadline(&EndNow);
    int code = kExitMachine;
    std::thread thread([&] {
      code = command();
      SetEvent(done_);
    });
    while (!Serve()) Look();
    thread.join();
    return code;
  }

 private:
  // Waits for something to look at and serves this thread's messages; true when the command is
  // done.
  bool Serve() {
    const HANDLE handles[] = {done_, SecondStopEvent(), StopEvent()};
    MsgWaitForMultipleObjects(saidStop_ ? 2 : 3, handles, FALSE, kLookMs, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    return WaitForSingleObject(done_, 0) == WAIT_OBJECT_0;
  }

  void Look() {
    if (WaitForSingleObject(SecondStopEvent(), 0) == WAIT_OBJECT_0) EndNow();
    if (!saidStop_ && StopRequested()) {
      saidStop_ = true;
      const Waiting waiting = watch_.Now();
      // A search has moved nothing: there is nothing to bring to an end first.
      if (waiting == Waiting::Search) EndSearch();
      if (const std::string text = StopText(waiting); !text.empty()) Notice(text);
    }
    const Waiting waiting = watch_.Now();
    if (!IsWatched(waiting)) return;
    const Silence silence = Measure(waiting);
    AskForLife(silence);
    const bool spoke = clock_.HasSpoken();
    if (clock_.IsDue(silence.stalledMs)) {
      Notice(SilenceText(silence));
      spokenOf_ = waiting;
    } else if (spoke && !clock_.HasSpoken() && waiting == spokenOf_) {
      Notice("the machine goes on");
    }
  }

  Silence Measure(Waiting waiting) {
    Silence silence;
    silence.waiting = waiting;
    const std::uint64_t word = watch_.wordMs_;
    const std::uint64_t progress = watch_.progressMs_;
    const std::uint64_t now = GetTickCount64();
    silence.silentMs = now > word ? now - word : 0;
    silence.stalledMs = now > progress ? now - progress : 0;
    silence.stopping = StopRequested();
    const std::lock_guard lock(watch_.jobMutex_);
    silence.strokesDone = watch_.view_.strokesDone;
    silence.strokesTotal = watch_.view_.strokesTotal;
    if (watch_.counters_ == nullptr) return silence;
    const MoveCounters& counters = *watch_.counters_;
    const std::uint32_t sent = watch_.view_.linesSent;
    // A call that waits has sent a line or two that the program has not counted yet.
    const auto left = [sent](std::uint32_t reported) {
      const auto lines = static_cast<std::int32_t>(sent - reported);
      return lines > 0 ? static_cast<std::uint32_t>(lines) : 0u;
    };
    silence.outstanding = left(counters.finished);
    silence.untaken = left(counters.queued);
    const auto running = static_cast<std::int32_t>(counters.started - counters.finished);
    silence.running = running > 0 ? static_cast<std::uint32_t>(running) : 0;
    return silence;
  }

  // SendLine may be called from any thread, also while a call of the other thread waits.
  void AskForLife(const Silence& silence) {
    const std::uint64_t now = GetTickCount64();
    if (silence.stalledMs < kFirstAskMs || now - askedMs_ < kAskMs) return;
    askedMs_ = now;
    const std::lock_guard lock(watch_.deviceMutex_);
    if (watch_.device_ != nullptr) watch_.device_->SendLine(kSignOfLife);
  }

  [[noreturn]] static void Leave(int code) {
    RestoreConsole();
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::abort();
  }

  [[noreturn]] static void EndSearch() {
    Fail(kExitMachine, "the search was ended by the user");
    Leave(kExitMachine);
  }

  // The other thread may be in a call that never returns: it is not waited for, and nothing of the
  // driver's is tidied up.
  [[noreturn]] static void EndNow() {
    static std::atomic<bool> ending{false};
    if (ending.exchange(true)) Sleep(INFINITE);
    Watch& watch = TheWatch();
    if (watch.Now() == Waiting::Search) EndSearch();
    const std::lock_guard lock(watch.lastWordsMutex_);
    Fail(kExitUnknown,
         "ended at once, cutter position unknown: home the machine before it is used");
    if (watch.lastWords_) watch.lastWords_();
    Leave(kExitUnknown);
  }

  void MakeWindow() {
    WNDCLASSW type{};
    type.lpfnWndProc = &Procedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = kClassName;
    RegisterClassW(&type);
    // Not a message-only window: those are not told of the end of the session.
    watch_.window_ = CreateWindowExW(0, kClassName, L"K7 Host", WS_OVERLAPPED, 0, 0, 0, 0, nullptr,
                                     nullptr, type.hInstance, nullptr);
    SetWindowLongPtrW(watch_.window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* watcher = reinterpret_cast<Watcher*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
      case Watch::kMsgAlive:
        TheWatch().Word();
        return 0;
      case WM_QUERYENDSESSION:
        return TRUE;
      case WM_ENDSESSION:
        // A console program that has windows is told of log-off and shutdown in this way alone. The
        // process may be ended as soon as this returns.
        if (first != 0 && watcher != nullptr) watcher->EndSession();
        return 0;
      default:
        return DefWindowProcW(window, message, first, second);
    }
  }

  // The job is brought to an end in the time that the system gives.
  void EndSession() {
    RequestStop();
    const std::uint64_t end = GetTickCount64() + kCloseWaitMs;
    for (;;) {
      const std::uint64_t now = GetTickCount64();
      if (now >= end) EndNow();
      // Lets messages through that are sent to this thread, as the reader's signs of life are.
      MSG message;
      PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
      const DWORD result = MsgWaitForMultipleObjects(1, &done_, FALSE,
                                                     static_cast<DWORD>(end - now), QS_SENDMESSAGE);
      if (result == WAIT_OBJECT_0) return;
    }
  }

  Watch& watch_;
  HANDLE done_;
  bool saidStop_ = false;
  std::uint64_t askedMs_ = 0;
  SilenceClock clock_;
  Waiting spokenOf_ = Waiting::Nothing;
};

int RunWatched(const std::function<int()>& command) {
  return Watcher(TheWatch()).Run(command);
}

}  // namespace k7host
