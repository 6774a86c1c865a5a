#include "motion/jog.h"

#include "device/polling.h"
#include "device/worker.h"
#include "job/job.h"
#include "motion/homing.h"
#include "motion/host_messages.h"
#include "motion/jog_plan.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/proximity.h"
#include "motion/units.h"
#include "settings/current_location.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

namespace {

// A touched proximity switch: lifts the cutter and tells the user.
bool ProximityForbids(DeviceState& record) noexcept {
  std::uint8_t proximity = 0;
  QuerySwitches(record, nullptr, nullptr, nullptr, &proximity);
  Pause(100);
  if (proximity != 1 || record.cutterMode == kCutterAirZ || WorkerAskedToStop()) return false;
  LiftFromProximity(record);
  return true;
}

Polled<std::int32_t>& LastOf(DeviceState& record, JogAxis axis) noexcept {
  if (axis == JogAxis::X) return record.lastX;
  return axis == JogAxis::Y ? record.lastY : record.lastZ;
}

std::uint32_t EmitStep(DeviceState& record, JogAxis axis, std::int32_t position) noexcept {
  const std::int32_t* const x = axis == JogAxis::X ? &position : nullptr;
  const std::int32_t* const y = axis == JogAxis::Y ? &position : nullptr;
  const std::int32_t* const z = axis == JogAxis::Z ? &position : nullptr;
  return EmitMove(record, x, y, z, 1, CommandTag::JogStep);
}

void ReportStep(DeviceState& record, JogAxis axis) noexcept {
  if (axis == JogAxis::Z) {
    SendReport(record, HostReport::JogZ, record.lastZ, 0);
  } else {
    ReportPosition(record, nullptr, nullptr);
  }
}

void StepWhileKeyIsHeld(DeviceState& record, const JogPlan& plan) noexcept {
  while (!WorkerAskedToStop()) {
    const std::int32_t position = WrapAdd(LastOf(record, plan.axis), plan.stepSteps);
    if (!JogMayReach(plan, position)) return;
    // A step too small to move anything: the key alone ends this, at a bearable pace.
    if (EmitStep(record, plan.axis, position) != kStatusSent) Pause(10);
    WaitForFewerInFlight(record, plan.maxOutstanding);
    ReportStep(record, plan.axis);
    if (!WorkerKeyHeld(record.jogKey)) return;
  }
}

void MoveOneAxis(DeviceState& record) noexcept {
  if (record.jogDirection > kJogZDown || ProximityForbids(record)) return;
  record.jogActive = 1;
  const JogPlan plan = PlanJog(record);
  if (!plan.possible || WorkerAskedToStop()) return;
  SetFeedRate(record, plan.feedInchesPerSecond);
  if (!BeginJob(record)) return;
  StepWhileKeyIsHeld(record, plan);
  EndJob(record);
}

void Jog(DeviceState& record) noexcept {
  MoveOneAxis(record);
  record.jogActive = 0;
  SavePosition(record);
  SettingsFile{record}.WriteInt(keys::kCurrentLocation, keys::kZAxis, record.lastZ);
  // The host may answer the message with the next jog: nothing of this one may be needed any more.
  const WindowHandle window = record.ownerWindow;
  const std::uint32_t message = record.jogEndMessage;
  record.jogBusy = 0;
  SendToHost(window, message, 0, 0);
}

}  // namespace

void StartJog(DeviceState& record, std::uint32_t direction, std::uint32_t speedMode,
              std::uint32_t key, std::uint32_t endMessage) noexcept {
  if (record.stopWorkers != 0 || record.jogActive != 0 || JobOpen(record) != 0) return;
  if (record.jogBusy.Exchange(1) != 0) return;
  record.jogDirection = direction;
  record.jogSpeedMode = speedMode;
  record.jogKey = key;
  record.jogEndMessage = endMessage;
  if (!StartWorker(record, record.jogThread, &Jog)) record.jogBusy = 0;
}

void EndWorkers(DeviceState& record) noexcept {
  record.stopWorkers = 1;
  AwaitWorker(record.jogThread);
  AwaitWorker(record.rampThread);
  record.stopWorkers = 0;
}

}  // namespace k7
