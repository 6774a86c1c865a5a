#include "motion/cutter.h"

#include <windows.h>

#include "base/arithmetic.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/notify.h"
#include "motion/move.h"

namespace k7 {

namespace {

// The reader carries out tool actions, and ends a wait, only for a host that listens, outside quiet
// moves and jogs, and while block messages are on. Without them a wait would never end.
bool ReaderWillAct(const DeviceState& record) noexcept {
  return HasListener(record.notify) && !IsSilent(record) && record.link.readerRun == 1 &&
         JobOpen(record.job) != 0;
}

// Waits, without bound, until the reader clears the flag; a reader that has been stopped by a
// broken link never will.
void WaitForTool(DeviceState& record) noexcept {
  AwaitReader(record,
              [&] { return record.job.waitFlag.ValueOr(0) != 1 || record.link.readerRun != 1; });
}

}  // namespace

std::uint32_t MoveCutter(DeviceState& record, std::int32_t z, CommandTag tag,
                         std::uint32_t cutterStateAfter, bool wait) noexcept {
  const bool waits = wait && ReaderWillAct(record);
  // Raised before the line goes out: its end can be answered before SendMove returns.
  if (waits) record.job.waitFlag.Set(1);
  const std::uint32_t status = SendMove(record, {.z = z}, tag);
  if (status != kStatusSent) {
    if (waits) record.job.waitFlag.Set(0);
    return status;
  }
  record.job.zMoveCount = WrapAdd(record.job.zMoveCount, 1);
  record.tools.cutterState = cutterStateAfter;
  if (waits) WaitForTool(record);
  return status;
}

void DrainQueue(DeviceState& record, std::uint8_t hold) noexcept {
  AwaitNoMoves(record);
  ClearAliveTicks(record.link);
  record.job.plungeHold = hold;
}

void LiftFromProximity(DeviceState& record) noexcept {
  SetFeedRate(record, record.tools.cutterUpSpeed);
  SendMove(record, {.z = 0});
  MessageBoxW(static_cast<HWND>(record.notify.ownerWindow.Get()),
              L"Prox was triggered. Close JFZ then reopen", L"Error", MB_OK);
}

}  // namespace k7
