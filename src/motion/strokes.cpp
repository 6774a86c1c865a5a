#include "motion/strokes.h"

#include "device/polling.h"
#include "motion/drain.h"
#include "motion/move.h"
#include "motion/plunge.h"
#include "motion/tool_wait.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

namespace {

bool InJob(const DeviceState& record) noexcept {
  return record.connected == 1 && JobOpen(record) == 1;
}

std::uint32_t Traverse(DeviceState& record, std::int32_t x, std::int32_t y) noexcept {
  SetFeedRate(record, record.traverseSpeed);
  return EmitMove(record, &x, &y, nullptr, 1, CommandTag::Move);
}

// The first traverse of a job: the modes that need the user or a probe stop here, with the head
// standing still over the place.
std::uint32_t FirstTraverse(DeviceState& record, std::int32_t x, std::int32_t y) noexcept {
  record.firstMove = 0;
  const std::uint32_t status = Traverse(record, x, y);
  if (record.cutterMode == kCutterSemiAutomatic) {
    DrainQueue(record, 1);
    record.probeOnNextPlunge = 1;
    return kStatusArmed;
  }
  if (record.cutterMode == kCutterManual) {
    DrainQueue(record, 1);
    record.cutterMode = kCutterNone;
    SettingsFile{record}.WriteInt(keys::kEngraveSettings, keys::kCutterMode,
                                  static_cast<std::int32_t>(kCutterNone));
    return kStatusOneShot;
  }
  return status;
}

}  // namespace

std::uint32_t MoveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (!InJob(record)) return kStatusNothing;
  const std::int32_t x = MachineX(record, hostX);
  const std::int32_t y = MachineY(record, hostY);
  if (record.firstMove == 1) return FirstTraverse(record, x, y);

  if (EmitMove(record, &x, &y, nullptr, 0) != kStatusSent) return kStatusNothing;
  if (record.cutterState == kCutterDown) {
    SetFeedRate(record, record.cutterUpSpeed);
    const std::uint32_t status = MoveCutter(record, LiftZ(record), CommandTag::Lift, kCutterUp,
                                            record.cutterMode == kCutterAirZ);
    // A traverse with the cutter down would cut across the work.
    if (status == kStatusRefused) return status;
  }
  return Traverse(record, x, y);
}

std::uint32_t EngraveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (!InJob(record)) return kStatusNothing;
  const std::int32_t x = MachineX(record, hostX);
  const std::int32_t y = MachineY(record, hostY);
  const std::uint32_t dryRun = EmitMove(record, &x, &y, nullptr, 0);
  if (dryRun != kStatusSent) return dryRun;

  if (record.cutterState == kCutterUp) {
    const std::uint32_t status = PlungeForCut(record);
    if (status != kStatusSent) return status;
  }
  if (record.cutterState == kCutterDown && record.cutterMode != kCutterAirZ) {
    // Nothing is sent while Z is where it should be; a new pass depth takes effect here.
    // KEEP: at the feed in force.
    const std::uint32_t status = MoveCutter(record, PlungeZ(record), CommandTag::Plunge,
                                            kCutterDown, HasEngraveDelay(record));
    if (status == kStatusRefused) return status;
  }
  SetFeedRate(record, record.gridMode == kRunGrid ? record.gridSpeed : record.engraveSpeed);
  return EmitMove(record, &x, &y, nullptr, 1, CommandTag::Move);
}

std::uint32_t LowerCutter(DeviceState& record) noexcept {
  if (!InJob(record) || record.cutterState != kCutterUp) return kStatusNothing;
  return PlungeForHost(record, true);
}

std::uint32_t LowerCutterContinue(DeviceState& record) noexcept {
  if (!InJob(record) || record.cutterState != kCutterUp) return kStatusNothing;
  return PlungeForHost(record, false);
}

}  // namespace k7
