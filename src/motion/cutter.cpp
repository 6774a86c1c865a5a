#include "motion/cutter.h"

#include <windows.h>

#include "base/arithmetic.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/notify.h"
#include "motion/move.h"

namespace k7 {

namespace {

// Whether the reader will carry out the tool action and clear waitFlag. It does so only in an open
// job, for a host that has registered a window or a callback, and neither during quiet moves nor
// during a jog. In any other case a wait would never end.
bool ReaderWillAct(const DeviceState& record) noexcept {
  return HasListener(record.notify) && !IsSilent(record) && record.link.readerRun == 1 &&
         JobOpen(record.job) != 0;
}

// Waits, without bound, until the reader clears the flag. A write that fails stops the reader,
// which ends the wait, too.
void WaitForTool(LinkState& link, JobState& job) noexcept {
  const auto done = [&] { return job.waitFlag.ValueOr(0) != 1 || link.readerRun != 1; };
  AwaitReader(link, job, done, awaited::kTool);
}

}  // namespace

std::uint32_t MoveCutter(DeviceState& record, std::int32_t z, CommandTag tag,
                         std::uint32_t cutterStateAfter, bool wait) noexcept {
  const bool waits = wait && ReaderWillAct(record);
  // Before the line goes out, because the controller may report its end before SendMove returns.
  if (waits) record.job.waitFlag.Set(1);
  const std::uint32_t status = SendMove(record, {.z = z}, tag);
  if (status != kStatusSent) {
    if (waits) record.job.waitFlag.Set(0);
    return status;
  }
  record.job.zMoveCount = WrapAdd(record.job.zMoveCount, 1);
  record.tools.cutterState = cutterStateAfter;
  if (waits) WaitForTool(record.link, record.job);
  return status;
}

void DrainAndSetHold(JobState& job, LinkState& link, std::uint8_t hold) noexcept {
  AwaitNoMoves(link, job);
  ClearAliveTicks(link);
  job.plungeHold = hold;
}

void LiftFromProximity(DeviceState& record) noexcept {
  SetFeedRate(record, record.tools.cutterUpSpeed);
  SendMove(record, {.z = 0});
  const TracedStandstill traced{awaited::kUser};
  MessageBoxW(static_cast<HWND>(record.notify.ownerWindow.Get()),
              L"Prox was triggered. Close JFZ then reopen", L"Error", MB_OK);
}

}  // namespace k7
