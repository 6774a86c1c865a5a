#include "device/worker.h"

#include <process.h>
#include <windows.h>

#include <memory>
#include <new>

#include "base/handles.h"
#include "device/polling.h"

namespace k7 {

namespace {

constexpr std::uint32_t kQuitMs = 5;  // from one request to quit to the next

struct Start {
  DeviceState& record;
  WorkerBody body;
  const char* role;
  UniqueHandle previous;
};

unsigned __stdcall Run(void* argument) noexcept {
  const std::unique_ptr<Start> start{static_cast<Start*>(argument)};
  const WorkerScope worker{start->record.stopWorkers};
  const TracedThread traced{start->role, start->record.link.linkHandle};
  start->body(start->record);
  if (start->previous) WaitForSingleObject(start->previous.Get(), INFINITE);
  return 0;
}

// Waits, without bound but letting sent messages through, until the worker of `slot` has ended, and
// closes its handle.
void AwaitWorker(void*& slot) noexcept {
  if (slot == nullptr) return;
  // The host may be releasing the device from within a message of this very worker.
  if (InSendMessage()) ReplyMessage(0);
  TracedWait traced{awaited::kWorker};
  for (std::uint32_t waitMs = 0; !AwaitHandle(slot, waitMs); waitMs = kQuitMs) {
    traced.Look();
    // Closes a message box that the worker shows, now or later.
    PostThreadMessageW(GetThreadId(slot), WM_QUIT, 0, 0);
  }
  CloseHandle(slot);
  slot = nullptr;
}

}  // namespace

bool StartWorker(DeviceState& record, void*& slot, WorkerBody body, const char* role) noexcept {
  std::unique_ptr<Start> start{new (std::nothrow) Start{record, body, role, {}}};
  if (start == nullptr) return false;
  UniqueHandle thread{reinterpret_cast<HANDLE>(
      _beginthreadex(nullptr, 0, &Run, start.get(), CREATE_SUSPENDED, nullptr))};
  if (!thread) return false;
  start.release()->previous.Reset(slot);
  slot = thread.Release();
  ResumeThread(slot);
  return true;
}

void EndWorkers(DeviceState& record) noexcept {
  record.stopWorkers = 1;
  AwaitWorker(record.jog.jogThread);
  AwaitWorker(record.spindle.rampThread);
  record.stopWorkers = 0;
}

bool WorkerKeyHeld(std::uint32_t virtualKey) noexcept {
  if (WorkerAskedToStop()) return false;
  return (GetAsyncKeyState(static_cast<int>(virtualKey)) & 0x8000) != 0;
}

}  // namespace k7
