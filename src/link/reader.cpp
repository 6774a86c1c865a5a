#include "link/reader.h"

#include <process.h>
#include <windows.h>

#include <atomic>
#include <memory>
#include <new>

#include "base/handles.h"
#include "device/polling.h"
#include "link/line_assembler.h"
#include "link/link.h"
#include "link/link_io.h"
#include "link/queue.h"
#include "link/reply_actions.h"

namespace k7 {

namespace {

using Step = LineAssembler::Step;

// How long a wait for the link goes on before the reader looks around.
constexpr DWORD kReadWaitMs = 500;
// How long a begun line waits for its next byte before it is handled as it stands: on a real port
// the bytes of one line come apart, and a progress reply that is lost strands the machine.
constexpr std::uint32_t kBegunLineMs = 20;
// Reads that have failed for so long will not succeed again.
constexpr std::uint32_t kLostMs = 2000;
// Between two reads of which the first failed, or brought nothing on a link that has no event for
// the arrival of a byte.
constexpr DWORD kRetryMs = 5;
// A port that does not tell of a byte's arrival, or tells late, is looked at so often.
constexpr DWORD kArrivalMs = 10;

// Ends the process as a broken bound does, without running any handler. What sends 256 bytes
// without a line end is no controller, and nothing that it says may reach the machine's state.
[[noreturn]] void EndProcess() noexcept {
  TraceEvent(nullptr, "fail", "overlong 256");
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_STACK_BUFFER_OVERRUN));
  for (;;) Sleep(INFINITE);
}

// One operation on the link, with its block and its event. On the heap: a driver that ignores
// cancellation keeps it, and it is left to that driver then.
struct Operation {
  Operation() noexcept { LinkIo::SetEventOf(block, event.Get()); }

  UniqueHandle event{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED block{};
  DWORD flags = 0x8000;  // "partial", as the first read of a TCP link has always asked for
  DWORD events = 0;      // of a wait for the arrival of a byte
  char bytes[256];       // of a read
  bool outstanding = false;
};

// The read side of one link, for the life of the reader thread.
class ReadSide {
 public:
  explicit ReadSide(DeviceState& record) noexcept
      : record_(record),
        io_(record.link.linkHandle, record.link.linkType),
        read_(new (std::nothrow) Operation),
        arrival_(new (std::nothrow) Operation) {}
  ~ReadSide() {
    TakeBack(read_);
    if (arrival_ != nullptr && arrival_->outstanding) io_.EndWaitForByte();
    TakeBack(arrival_);
  }
  ReadSide(const ReadSide&) = delete;
  ReadSide& operator=(const ReadSide&) = delete;

  // Memory for it could be had.
  bool IsReady() const noexcept { return read_ != nullptr && arrival_ != nullptr; }

  // The text of the next line; empty when none is to be handled.
  std::string_view ReadLine() noexcept {
    Step step = assembler_.Begin();
    while (step != Step::Line) {
      if (step == Step::Fatal) EndProcess();
      step = step == Step::Read ? NextByte() : AwaitRead();
      PumpWrites(record_.link);
    }
    return assembler_.Line();
  }

 private:
  bool Run() const noexcept { return record_.link.readerRun == 1; }

  void TakeBack(std::unique_ptr<Operation>& operation) noexcept {
    if (operation == nullptr || !operation->outstanding) return;
    if (!io_.Cancel(operation->block, LinkIo::Direction::Read))
      static_cast<void>(operation.release());
  }

  // Of the bytes that were read ahead, else of the link.
  Step NextByte() noexcept {
    if (next_ == have_) return StartRead();
    *assembler_.Target() = read_->bytes[next_++];
    return assembler_.Completed(1, Run());
  }

  Step StartRead() noexcept {
    for (;;) {
      DWORD count = 0;
      switch (Start(count)) {
        case IoStart::Pending:
          return assembler_.Pending(Run());
        case IoStart::Failed:
          return assembler_.Failed(Run());
        case IoStart::Completed:
          break;
      }
      if (count > 0) {
        Take(count);
        return NextByte();
      }
      // An idle serial port has nothing to read: its event says when there is. A begun line is only
      // waited for so long.
      const DWORD wait = assembler_.IsBegun() ? MsLeftOfBegunLine() : kReadWaitMs;
      if (wait > 0) AwaitArrival(wait);
      if (!Run() || !assembler_.IsBegun() || wait == 0) {
        silent_ = false;
        return assembler_.Completed(0, Run());
      }
    }
  }

  // Starts a read; `count` is what it brought when it has completed. Keeps the account of failures.
  IoStart Start(DWORD& count) noexcept {
    IoStart start = io_.StartRead(read_->bytes, sizeof read_->bytes, read_->block, read_->flags);
    DWORD error = GetLastError();
    if (start == IoStart::Completed && !io_.Finish(read_->block, count, read_->flags)) {
      start = IoStart::Failed;
      error = GetLastError();
    }
    read_->outstanding = start == IoStart::Pending;
    const bool closed = start == IoStart::Completed && count == 0 && !io_.IsSerial();
    if (start == IoStart::Failed || closed) {
      OnFailure(error);
    } else if (start == IoStart::Completed) {
      OnSuccess();
    }
    return start;
  }

  // Waits for an outstanding read, and meanwhile for writes that nobody else waits for.
  Step AwaitRead() noexcept {
    const bool bounded = silent_ && assembler_.IsBegun();
    const DWORD wait = bounded ? MsLeftOfBegunLine() : kReadWaitMs;
    if (!AwaitEvent(read_->event.Get(), wait)) {
      if (timedOut_) OnSuccess();  // it stays pending, as on a link that works
      if (!bounded || MsLeftOfBegunLine() > 0) return assembler_.StillPending(Run());
      silent_ = false;
      return Step::Line;
    }
    DWORD count = 0;
    if (!io_.Finish(read_->block, count, read_->flags)) {
      const DWORD error = GetLastError();
      if (error == ERROR_IO_INCOMPLETE) return assembler_.StillPending(Run());
      read_->outstanding = false;
      OnFailure(error);
      return assembler_.Failed(Run());
    }
    read_->outstanding = false;
    if (count > 0) {
      OnSuccess();
      Take(count);
      *assembler_.Target() = read_->bytes[next_++];
      return assembler_.WaitCompleted(1, Run());
    }
    return OnWaitBroughtNothing();
  }

  // A connection that was closed, or a serial port whose driver ends idle reads by itself.
  Step OnWaitBroughtNothing() noexcept {
    if (!io_.IsSerial()) {
      OnFailure(ERROR_SUCCESS);
      return assembler_.WaitCompleted(0, Run());
    }
    OnSuccess();
    const DWORD wait = assembler_.IsBegun() ? MsLeftOfBegunLine() : kReadWaitMs;
    if (wait > 0) AwaitArrival(wait);
    if (!Run() || wait == 0 || !assembler_.IsBegun()) {
      silent_ = false;
      return assembler_.WaitCompleted(0, Run());
    }
    DWORD count = 0;
    switch (Start(count)) {
      case IoStart::Pending:
        return assembler_.StillPending(Run());
      case IoStart::Failed:
        return assembler_.Failed(Run());
      case IoStart::Completed:
        break;
    }
    if (count == 0) return OnWaitBroughtNothing();
    Take(count);
    *assembler_.Target() = read_->bytes[next_++];
    return assembler_.WaitCompleted(1, Run());
  }

  void Take(DWORD count) noexcept {
    next_ = 0;
    have_ = count;
    silent_ = false;
  }

  // From the first read that brought nothing, so that a thread that was held up reads once more.
  DWORD MsLeftOfBegunLine() noexcept {
    const std::uint32_t now = TickMs();
    if (!silent_) silentSinceMs_ = now;
    silent_ = true;
    const std::uint32_t silentMs = now - silentSinceMs_;
    return silentMs < kBegunLineMs ? kBegunLineMs - silentMs : 0;
  }

  // A link that works again is no longer lost, unless a failed write has stopped this reader.
  void OnSuccess() noexcept {
    if (failing_) TraceEvent(record_.link.linkHandle, "back");
    failing_ = false;
    if (record_.link.lost != 0 && Run()) record_.link.lost = 0;
  }

  void OnFailure(DWORD error) noexcept {
    // Somebody has broken off the port's operations (another program had left fAbortOnError on).
    if (error == ERROR_OPERATION_ABORTED && Run()) io_.ClearError();
    const std::uint32_t now = TickMs();
    if (!failing_) {
      io_.TraceFailed("read", error);
      failingSinceMs_ = now;
    }
    failing_ = true;
    if (now - failingSinceMs_ >= kLostMs && record_.link.lost == 0) {
      record_.link.lost = 1;
      TraceEvent(record_.link.linkHandle, "lost", "read");
      TellNews(record_.link);
    }
    AwaitEvent(nullptr, kRetryMs);
  }

  // Waits until a byte has arrived at an idle port, at most `ms`.
  void AwaitArrival(DWORD ms) noexcept {
    if (ms > kArrivalMs) ms = kArrivalMs;
    if (!arrival_->outstanding) {
      const IoStart start = io_.StartWaitForByte(arrival_->events, arrival_->block);
      if (start == IoStart::Completed) return;
      if (start == IoStart::Failed) {
        AwaitEvent(nullptr, ms < kRetryMs ? ms : kRetryMs);
        return;
      }
      arrival_->outstanding = true;
    }
    if (AwaitEvent(arrival_->event.Get(), ms)) arrival_->outstanding = false;
  }

  // Waits for the event (null: for none), at most `ms`; less when the reader is to stop, or when a
  // write has to go on. True: it is signalled.
  bool AwaitEvent(HANDLE event, DWORD ms) noexcept {
    HANDLE events[3];
    DWORD count = 0;
    if (event != nullptr) events[count++] = event;
    events[count++] = record_.link.readerWake;
    if (const WriteQueue* const queue = record_.link.writeQueue.Alone();
        queue != nullptr && queue->HasOutstanding()) {
      events[count++] = queue->DoneEvent();
    }
    const DWORD result = WaitForMultipleObjects(count, events, FALSE, ms);
    timedOut_ = result == WAIT_TIMEOUT;
    return event != nullptr && result == WAIT_OBJECT_0;
  }

  DeviceState& record_;
  LinkIo io_;
  std::unique_ptr<Operation> read_, arrival_;
  DWORD next_ = 0, have_ = 0;  // of the bytes read ahead: the next to hand out, and their end
  bool silent_ = false;        // a read has brought nothing since the last byte
  std::uint32_t silentSinceMs_ = 0;
  bool timedOut_ = false;  // the last wait
  bool failing_ = false;
  std::uint32_t failingSinceMs_ = 0;
  LineAssembler assembler_;
};

struct Start {
  DeviceState& record;
  std::atomic<bool> announced{false};
};

void RunReader(DeviceState& record, std::atomic<bool>& announced) noexcept {
  {
    const TracedThread traced{"reader", record.link.linkHandle};
    ReadSide reading{record};
    record.link.readerAlive = 1;
    announced.store(true);  // from here on `announced` belongs to nobody
    TellNews(record.link);
    if (reading.IsReady()) {
      do {
        if (const std::string_view line = reading.ReadLine(); !line.empty()) {
          TraceReceived(line);
          HandleLine(record, line);
        }
      } while (record.link.readerRun == 1);
    }
  }
  record.link.readerAlive = 0;
  TellNews(record.link);
}

unsigned __stdcall ReaderMain(void* argument) noexcept {
  auto& start = *static_cast<Start*>(argument);
  RunReader(start.record, start.announced);
  return 0;
}

}  // namespace

void StartReader(DeviceState& record) noexcept {
  Start start{record};
  record.link.readerThread =
      reinterpret_cast<void*>(_beginthreadex(nullptr, 0, ReaderMain, &start, 0, nullptr));
  if (record.link.readerThread == nullptr) return;
  // Not WaitForReader: `start` must outlive the announcement, whatever becomes of the link.
  NewsWaiter waiter{record.link, awaited::kReader};
  while (!start.announced.load()) waiter.Round();
}

void JoinReader(DeviceState& record) noexcept {
  if (record.link.readerThread == nullptr) return;
  TracedWait traced{awaited::kReader};
  while (!AwaitHandle(record.link.readerThread, kReadWaitMs)) traced.Look();
  CloseHandle(record.link.readerThread);
  record.link.readerThread = nullptr;
}

}  // namespace k7
