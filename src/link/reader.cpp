#include "link/reader.h"

#include <process.h>
#include <windows.h>

#include <atomic>

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

constexpr DWORD kReadWaitMs = 500;

// Ends the process as a broken bound does, without running any handler: a controller that sends 256
// bytes without a line end has lost its mind, and what it says must not reach the machine's state.
[[noreturn]] void EndProcess() noexcept {
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_STACK_BUFFER_OVERRUN));
  for (;;) Sleep(INFINITE);
}

// The read side of one link, for the life of the reader thread.
class ReadSide {
 public:
  explicit ReadSide(DeviceState& record) noexcept
      : record_(record), io_(record.link.linkHandle, record.link.linkType) {
    block_.hEvent = event_.Get();
  }
  // The kernel owns the block and the line's bytes until the read is over.
  ~ReadSide() {
    if (assembler_.IsReadOutstanding()) io_.CancelAndWait(block_);
  }
  ReadSide(const ReadSide&) = delete;
  ReadSide& operator=(const ReadSide&) = delete;

  // The text of the next line; empty when none is to be handled.
  std::string_view ReadLine() noexcept {
    Step step = assembler_.Begin();
    while (step != Step::Line) {
      if (step == Step::Fatal) EndProcess();
      step = step == Step::Read ? StartRead() : WaitForRead();
      PumpWrites(record_.link);
    }
    return assembler_.Line();
  }

 private:
  bool Run() const noexcept { return record_.link.readerRun == 1; }

  Step StartRead() noexcept {
    switch (io_.StartRead(assembler_.Target(), block_, flags_)) {
      case IoStart::Pending:
        return assembler_.Pending(Run());
      case IoStart::Completed: {
        DWORD count = 0;
        if (io_.Finish(block_, count, flags_)) return assembler_.Completed(count, Run());
        return assembler_.Failed(Run());
      }
      case IoStart::Failed:
        break;
    }
    return assembler_.Failed(Run());
  }

  // Waits for the byte, and meanwhile for writes that nobody else waits for.
  Step WaitForRead() noexcept {
    HANDLE events[] = {event_.Get(), nullptr};
    DWORD eventCount = 1;
    if (const WriteQueue* const queue = record_.link.writeQueue.Alone();
        queue != nullptr && queue->HasOutstanding()) {
      events[eventCount++] = queue->DoneEvent();
    }
    if (WaitForMultipleObjects(eventCount, events, FALSE, kReadWaitMs) != WAIT_OBJECT_0) {
      return assembler_.StillPending(Run());
    }
    DWORD count = 0;
    if (io_.Finish(block_, count, flags_)) return assembler_.WaitCompleted(count, Run());
    if (GetLastError() == ERROR_IO_INCOMPLETE) return assembler_.StillPending(Run());
    return assembler_.Failed(Run());
  }

  DeviceState& record_;
  LinkIo io_;
  UniqueHandle event_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED block_{};
  DWORD flags_ = 0x8000;  // "partial", as the first read of a TCP link has always asked for
  LineAssembler assembler_;
};

struct Start {
  DeviceState& record;
  std::atomic<bool> announced{false};
};

void RunReader(DeviceState& record, std::atomic<bool>& announced) noexcept {
  {
    ReadSide reading{record};
    record.link.readerAlive = 1;
    announced.store(true);  // from here on `announced` belongs to nobody
    do {
      const std::string_view line = reading.ReadLine();
      if (line.empty()) {
        SwitchToThread();  // KEEP: an idle serial link is polled without sleeping
      } else {
        HandleLine(record, line);
      }
    } while (record.link.readerRun == 1);
  }
  record.link.readerAlive = 0;
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
  PollUntil(0, [&] { return start.announced.load(); });
}

void JoinReader(DeviceState& record) noexcept {
  if (record.link.readerThread == nullptr) return;
  PollUntil(1, [&] { return WaitForSingleObject(record.link.readerThread, 0) != WAIT_TIMEOUT; });
  CloseHandle(record.link.readerThread);
  record.link.readerThread = nullptr;
}

}  // namespace k7
