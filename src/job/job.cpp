#include "job/job.h"

#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/homing.h"

namespace k7 {

namespace {

constexpr std::uint32_t kLookMs = 50;
constexpr std::int64_t kAirZDrainMs = 5000;  // the engrave delay is added to it

// A mode that probes finds the proximity switch closed, so that a probe would end at once.
bool ProximityIsTriggered(DeviceState& record) noexcept {
  if (!ProbesTheSurface(record.tools)) return false;
  // Counts as open on a machine without all switches, where the query is refused.
  std::uint8_t proximity = 0;
  QuerySwitches(record, nullptr, nullptr, nullptr, &proximity);
  return proximity == 1;
}

void ArmFirstMove(JobState& job, const JogState& jog) noexcept {
  if (job.plungeHold == 0) {
    job.firstMove = 1;
  } else if (jog.jogActive == 0) {
    job.firstMove = 0;
    job.plungeHold = 0;
  }
  // KEEP: with a hold during a jog both stay as they are, for the job that follows the jog.
}

void ClearJobCounters(JobState& job) noexcept {
  if (const auto ring = job.tagRing.Lock()) {
    ring->ackRingIndex = 0;
    ring->queuedIndex = ring->startedIndex = ring->finishedIndex = 0;
  }
  job.resetMarkX = 0;
  job.resetMarkY = 0;
  job.resetCountX = 0;
  job.resetCountY = 0;
  job.zMoveCount = 0;
}

// Waits until every move has been carried out. Without bound, except with a pneumatic head: there
// the wait ends after a time and the moves that are still counted are forgotten.
void DrainMoves(LinkState& link, JobState& job, const Tools& tools) noexcept {
  const std::uint32_t start = TickMs();
  const std::int64_t boundMs = kAirZDrainMs + tools.engraveDelayMs;
  std::uint32_t noted = start;
  std::uint32_t nextLook = start + kLookMs;
  const auto drained = [&] {
    if (!MovesRemain(job)) return true;
    const std::uint32_t now = TickMs();
    if (!HasPneumaticHead(tools) || now - nextLook >= 0x80000000u) return false;
    // KEEP: the time is taken after the comparison, so the deadline is noticed one look late.
    if (static_cast<std::int64_t>(noted - start) >= boundMs) ForgetMoves(job);
    noted = now;
    nextLook = now + kLookMs;
    return false;
  };
  AwaitReader(link, job, drained, awaited::kNoMoves);
}

}  // namespace

bool BeginJob(DeviceState& record) noexcept {
  if (record.link.connected != 1) return true;
  TraceEvent(record.link.linkHandle, "job", "begin");
  if (ProximityIsTriggered(record)) {
    LiftFromProximity(record);
    TraceEvent(record.link.linkHandle, "job", "refused");
    return false;
  }
  record.tools.cutterState = kCutterUp;
  ArmFirstMove(record.job, record.jog);
  ClearJobCounters(record.job);
  SendLine(record.link, commands::kJobOutputOn);
  SendLine(record.link, commands::kBlockMessagesOn);
  // No bound: without the confirmation nothing may be sent, so the host waits here.
  const auto begun = [&] { return JobOpen(record.job) != 0; };
  AwaitReader(record.link, record.job, begun, awaited::kJobBegun);
  record.link.alive.Set({});
  jobAbortRequest = 0;
  TraceEvent(record.link.linkHandle, "job", "begun");
  return true;
}

void EndJob(DeviceState& record) noexcept {
  if (record.link.connected != 1) return;
  TraceEvent(record.link.linkHandle, "job", "end");
  DrainMoves(record.link, record.job, record.tools);
  SendLine(record.link, commands::kBlockMessagesOff);
  // No bound while the controller does not confirm; a lost link ends the wait.
  const auto ended = [&] { return JobOpen(record.job) != 1; };
  AwaitReader(record.link, record.job, ended, awaited::kJobEnded);
  SendLine(record.link, commands::kJobOutputOff);
  ClearAliveTicks(record.link);
  record.job.firstMove = 0;
  TraceEvent(record.link.linkHandle, "job", "ended");
}

}  // namespace k7
