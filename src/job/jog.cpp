#include "job/jog.h"

#include "base/arithmetic.h"
#include "device/polling.h"
#include "device/progress.h"
#include "device/worker.h"
#include "job/job.h"
#include "job/jog_plan.h"
#include "link/notify.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/homing.h"
#include "motion/move.h"
#include "motion/position.h"
#include "settings/current_location.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

namespace {

// Whether a closed proximity switch keeps the jog from starting; then lifts the cutter and tells
// the user.
bool ProximityForbids(DeviceState& record) noexcept {
  std::uint8_t proximity = 0;
  QuerySwitches(record, nullptr, nullptr, nullptr, &proximity);
  Pause(100);
  if (proximity != 1 || HasPneumaticHead(record.tools) || WorkerAskedToStop()) return false;
  LiftFromProximity(record);
  return true;
}

std::uint32_t SendStep(DeviceState& record, Axis axis, std::int32_t position) noexcept {
  AxisTargets targets;
  (axis == Axis::X ? targets.x : axis == Axis::Y ? targets.y : targets.z) = position;
  return SendMove(record, targets, CommandTag::JogStep);
}

void ReportStep(DeviceState& record, Axis axis) noexcept {
  if (axis == Axis::Z) {
    SendReport(record.notify, HostReport::JogZ, record.position.last.z, 0);
  } else {
    ReportPosition(record, nullptr, nullptr);
  }
}

void StepWhileKeyIsHeld(DeviceState& record, const JogPlan& plan) noexcept {
  while (!WorkerAskedToStop() && record.link.lost == 0) {
    const std::int32_t position = WrapAdd(record.position.last[plan.axis], plan.stepSteps);
    if (!JogMayReach(plan, position)) return;
    // A step of no machine steps sends nothing, and only the key ends the jog. The pause keeps the
    // loop from taking all of a processor.
    if (SendStep(record, plan.axis, position) != kStatusSent) Pause(10);
    AwaitFewerInFlight(record.link, record.job, plan.maxOutstanding);
    ReportStep(record, plan.axis);
    if (!WorkerKeyHeld(record.jog.jogKey)) return;
  }
}

void MoveOneAxis(DeviceState& record) noexcept {
  if (record.jog.jogDirection > kJogZDown || ProximityForbids(record)) return;
  record.jog.jogActive = 1;
  const JogPlan plan = PlanJog(record);
  if (!plan.possible || WorkerAskedToStop()) return;
  SetFeedRate(record, plan.feedInchesPerSecond);
  if (!BeginJob(record)) return;
  StepWhileKeyIsHeld(record, plan);
  EndJob(record);
}

void Jog(DeviceState& record) noexcept {
  MoveOneAxis(record);
  record.jog.jogActive = 0;
  KeepPosition(record);
  SettingsFile{record.link}.WriteInt(settings::kLocationZ, record.position.last.z);
  // The host may start the next jog while it handles the message, so everything that belongs to
  // this jog is read before the jog counts as ended.
  const WindowHandle window = record.notify.ownerWindow;
  const std::uint32_t message = record.jog.jogEndMessage;
  record.jog.jogBusy = 0;
  SendToHost(window, message, 0, 0);
}

}  // namespace

void StartJog(DeviceState& record, std::uint32_t direction, std::uint32_t speedMode,
              std::uint32_t key, std::uint32_t endMessage) noexcept {
  if (record.stopWorkers != 0 || record.jog.jogActive != 0 || JobOpen(record.job) != 0) return;
  if (record.jog.jogBusy.Exchange(1) != 0) return;
  record.jog.jogDirection = direction;
  record.jog.jogSpeedMode = speedMode;
  record.jog.jogKey = key;
  record.jog.jogEndMessage = endMessage;
  if (!StartWorker(record, record.jog.jogThread, &Jog, "jog")) record.jog.jogBusy = 0;
}

}  // namespace k7
