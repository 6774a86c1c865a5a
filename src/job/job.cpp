#include "job/job.h"

#include "device/module_state.h"
#include "device/polling.h"
#include "link/link.h"
#include "motion/homing.h"
#include "motion/proximity.h"

namespace k7 {

namespace {

constexpr std::uint32_t kPollMs = 50;
constexpr std::int64_t kAirZDrainMs = 5000;  // and the engrave delay on top

// The modes that probe cannot start with the probe already touched.
bool ProximityIsTriggered(DeviceState& record) noexcept {
  if (record.cutterMode != kCutterAutomatic && record.cutterMode != kCutterSemiAutomatic) {
    return false;
  }
  // Stays open on a machine that is not fitted with all the switches: the query is refused there.
  std::uint8_t proximity = 0;
  QuerySwitches(record, nullptr, nullptr, nullptr, &proximity);
  return proximity == 1;
}

void ArmFirstMove(DeviceState& record) noexcept {
  if (record.plungeHold == 0) {
    record.firstMove = 1;
  } else if (record.jogActive == 0) {
    record.firstMove = 0;
    record.plungeHold = 0;
  }
  // KEEP: a hold during a jog leaves both as they are, for the job that follows.
}

void ClearJobCounters(DeviceState& record) noexcept {
  if (const RecordLock<ringMutex> lock{record}) {
    record.ackRingIndex = 0;
    record.queuedIndex = record.startedIndex = record.finishedIndex = 0;
  }
  record.resetMarkX = 0;
  record.resetMarkY = 0;
  record.resetCountX = 0;
  record.resetCountY = 0;
  record.zMoveCount = 0;
}

// Waits until every move has been carried out: without bound, but for the pneumatic head, whose
// wait ends after a while and forgets what is still counted.
void DrainMoves(DeviceState& record) noexcept {
  const std::uint32_t start = TickMs();
  const std::int64_t boundMs = kAirZDrainMs + record.engraveDelayMs;
  std::uint32_t noted = start;
  while (MovesRemain(record) && !WorkerAskedToStop()) {
    Pause(kPollMs);
    if (record.cutterMode != kCutterAirZ) continue;
    // KEEP: the time is noted after the comparison, so the deadline is seen one pause late.
    if (static_cast<std::int64_t>(noted - start) < boundMs) {
      noted = TickMs();
    } else {
      ForgetMoves(record);
    }
  }
}

}  // namespace

bool BeginJob(DeviceState& record) noexcept {
  if (record.connected != 1) return true;
  if (ProximityIsTriggered(record)) {
    LiftFromProximity(record);
    return false;
  }
  record.cutterState = kCutterUp;
  ArmFirstMove(record);
  ClearJobCounters(record);
  SendLine(record, "M106\n");
  SendLine(record, "SendBlockMessagesOn\n");
  // No bound: a controller that never confirms holds the host here.
  PollUntil(kPollMs, [&] { return JobOpen(record) != 0; });
  if (const RecordLock<aliveMutex> lock{record}) {
    record.lastCheckTick = 0;
    record.lastAnswerTick = 0;
  }
  jobAbortRequest = 0;
  return true;
}

void EndJob(DeviceState& record) noexcept {
  if (record.connected != 1) return;
  DrainMoves(record);
  SendLine(record, "SendBlockMessagesOff\n");
  // No bound while the controller does not confirm; a mutex that cannot be taken ends it.
  PollUntil(kPollMs, [&] { return JobOpen(record) != 1; });
  SendLine(record, "M107\n");
  ClearAliveTicks(record);
  record.firstMove = 0;
}

}  // namespace k7
