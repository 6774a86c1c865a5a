#include "device/polling.h"

#include <windows.h>

namespace k7 {

namespace {

// Runs the window procedures of messages that other threads have sent; leaves posted ones queued.
void DeliverSentMessages() noexcept {
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

// Of the worker that this thread is; null on every other thread.
thread_local const Polled<std::uint8_t>* workerStop = nullptr;

}  // namespace

bool WorkerAskedToStop() noexcept {
  return workerStop != nullptr && *workerStop != 0;
}

void BecomeWorker(const Polled<std::uint8_t>& stop) noexcept {
  workerStop = &stop;
}

std::uint32_t TickMs() noexcept {
  return GetTickCount();
}

void Pause(std::uint32_t ms) noexcept {
  const std::uint32_t start = TickMs();
  for (;;) {
    const std::uint32_t elapsed = TickMs() - start;
    if (elapsed >= ms) return;
    const DWORD result =
        MsgWaitForMultipleObjectsEx(0, nullptr, ms - elapsed, QS_SENDMESSAGE, MWMO_INPUTAVAILABLE);
    if (result != WAIT_OBJECT_0) {
      if (result != WAIT_TIMEOUT) Sleep(ms - elapsed);  // no message queue to be had: plain sleep
      return;
    }
    DeliverSentMessages();
  }
}

void SpinOnce() noexcept {
  if (MsgWaitForMultipleObjectsEx(0, nullptr, 0, QS_SENDMESSAGE, MWMO_INPUTAVAILABLE) ==
      WAIT_OBJECT_0) {
    DeliverSentMessages();
  }
  SwitchToThread();
}

}  // namespace k7
