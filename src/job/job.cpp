#include "job/job.h"

#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/cutter.h"
#include "motion/homing.h"

namespace k7 {

namespace {

constexpr std::uint32_t kLookMs = 50;
constexpr std::int64_t kAirZDrainMs = 5000;  // and the engrave delay on top

// The modes that probe cannot start with the probe already touched.
bool ProximityIsTriggered(DeviceState& record) noexcept {
  if (record.tools.cutterMode != kCutterAutomatic &&
      record.tools.cutterMode != kCutterSemiAutomatic) {
    return false;
  }
  // Stays open on a machine that is not fitted with all the switches: the query is refused there.
  std::uint8_t proximity = 0;
  QuerySwitches(record, nullptr, nullptr, nullptr, &proximity);
  return proximity == 1;
}

void ArmFirstMove(DeviceState& record) noexcept {
  if (record.job.plungeHold == 0) {
    record.job.firstMove = 1;
  } else if (record.jog.jogActive == 0) {
    record.job.firstMove = 0;
    record.job.plungeHold = 0;
  }
  // KEEP: a hold during a jog leaves both as they are, for the job that follows.
}

void ClearJobCounters(DeviceState& record) noexcept {
  if (const auto ring = record.job.tagRing.Lock()) {
    ring->ackRingIndex = 0;
    ring->queuedIndex = ring->startedIndex = ring->finishedIndex = 0;
  }
  record.job.resetMarkX = 0;
  record.job.resetMarkY = 0;
  record.job.resetCountX = 0;
  record.job.resetCountY = 0;
  record.job.zMoveCount = 0;
}

// Waits until every move has been carried out: without bound, but for the pneumatic head, whose
// wait ends after a while and forgets what is still counted.
void DrainMoves(DeviceState& record) noexcept {
  const std::uint32_t start = TickMs();
  const std::int64_t boundMs = kAirZDrainMs + record.tools.engraveDelayMs;
  std::uint32_t noted = start;
  std::uint32_t nextLook = start + kLookMs;
  AwaitReader(record, [&] {
    if (!MovesRemain(record.job)) return true;
    const std::uint32_t now = TickMs();
    if (record.tools.cutterMode != kCutterAirZ || now - nextLook >= 0x80000000u) return false;
    // KEEP: the time is noted after the comparison, so the deadline is seen one look late.
    if (static_cast<std::int64_t>(noted - start) >= boundMs) ForgetMoves(record.job);
    noted = now;
    nextLook = now + kLookMs;
    return false;
  });
}

}  // namespace

bool BeginJob(DeviceState& record) noexcept {
  if (record.link.connected != 1) return true;
  if (ProximityIsTriggered(record)) {
    LiftFromProximity(record);
    return false;
  }
  record.tools.cutterState = kCutterUp;
  ArmFirstMove(record);
  ClearJobCounters(record);
  SendLine(record.link, commands::kJobOutputOn);
  SendLine(record.link, commands::kBlockMessagesOn);
  // No bound: a controller that never confirms holds the host here.
  AwaitReader(record, [&] { return JobOpen(record.job) != 0; });
  record.link.alive.Set({});
  jobAbortRequest = 0;
  return true;
}

void EndJob(DeviceState& record) noexcept {
  if (record.link.connected != 1) return;
  DrainMoves(record);
  SendLine(record.link, commands::kBlockMessagesOff);
  // No bound while the controller does not confirm; a mutex that cannot be taken ends it.
  AwaitReader(record, [&] { return JobOpen(record.job) != 1; });
  SendLine(record.link, commands::kJobOutputOff);
  ClearAliveTicks(record.link);
  record.job.firstMove = 0;
}

}  // namespace k7
