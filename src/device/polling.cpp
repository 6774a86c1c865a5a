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

std::int32_t LinesInFlight(const DeviceState& record) noexcept {
  return ReadLocked<flightMutex>(record, 0, [&] { return record.linesInFlight; });
}

std::int32_t BlocksRunning(const DeviceState& record) noexcept {
  return ReadLocked<runMutex>(record, 0, [&] { return record.blocksRunning; });
}

std::uint8_t JobOpen(const DeviceState& record) noexcept {
  return ReadLocked<jobMutex>(record, std::uint8_t{0}, [&] { return record.jobOpen; });
}

bool IsIdle(const DeviceState& record) noexcept {
  return record.connected == 1 && JobOpen(record) == 0;
}

bool MovesRemain(const DeviceState& record) noexcept {
  return LinesInFlight(record) > 0 || BlocksRunning(record) >= 1;
}

void WaitForFewerInFlight(const DeviceState& record, std::int32_t lines) noexcept {
  PollUntil(0, [&] {
    if (JobOpen(record) == 0) return true;
    const RecordLock<flightMutex> lock{record};
    return !lock || lock.WasAbandoned() || record.linesInFlight < lines;
  });
}

void ForgetMoves(DeviceState& record) noexcept {
  if (const RecordLock<flightMutex> lock{record}) record.linesInFlight = 0;
  if (const RecordLock<runMutex> lock{record}) record.blocksRunning = 0;
}

void ClearAliveTicks(DeviceState& record) noexcept {
  const RecordLock<aliveMutex> lock{record};
  record.lastCheckTick = 0;
  record.lastAnswerTick = 0;
}

}  // namespace k7
