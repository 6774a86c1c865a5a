#include "motion/strokes.h"

#include "device/progress.h"
#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/move.h"
#include "motion/plunge.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

namespace {

bool InJob(const DeviceState& record) noexcept {
  return record.link.connected == 1 && JobOpen(record.job) == 1;
}

std::uint32_t Traverse(DeviceState& record, const MachinePlace& place) noexcept {
  SetFeedRate(record, record.tools.traverseSpeed);
  return SendMove(record, {.x = place.x, .y = place.y}, CommandTag::Move);
}

// The first traverse of a job: the modes that need the user or a probe stop here, with the head
// standing still over the place.
std::uint32_t FirstTraverse(DeviceState& record, const MachinePlace& place) noexcept {
  record.job.firstMove = 0;
  const std::uint32_t status = Traverse(record, place);
  if (record.tools.cutterMode == kCutterSemiAutomatic) {
    DrainQueue(record, 1);
    record.tools.probeOnNextPlunge = 1;
    return kStatusArmed;
  }
  if (record.tools.cutterMode == kCutterManual) {
    DrainQueue(record, 1);
    record.tools.cutterMode = kCutterNone;
    SettingsFile{record.link}.WriteInt(settings::kCutterMode,
                                       static_cast<std::int32_t>(kCutterNone));
    return kStatusOneShot;
  }
  return status;
}

}  // namespace

std::uint32_t MoveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (!InJob(record)) return kStatusNothing;
  const MachinePlace place = MachinePosition(record, hostX, hostY);
  if (record.job.firstMove == 1) return FirstTraverse(record, place);

  if (CheckMove(record, {.x = place.x, .y = place.y}) != kStatusSent) return kStatusNothing;
  if (record.tools.cutterState == kCutterDown) {
    SetFeedRate(record, record.tools.cutterUpSpeed);
    const std::uint32_t status = MoveCutter(record, LiftZ(record), CommandTag::Lift, kCutterUp,
                                            record.tools.cutterMode == kCutterAirZ);
    // A traverse with the cutter down would cut across the work.
    if (status == kStatusRefused) return status;
  }
  return Traverse(record, place);
}

std::uint32_t EngraveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (!InJob(record)) return kStatusNothing;
  const MachinePlace place = MachinePosition(record, hostX, hostY);
  const std::uint32_t dryRun = CheckMove(record, {.x = place.x, .y = place.y});
  if (dryRun != kStatusSent) return dryRun;

  if (record.tools.cutterState == kCutterUp) {
    const std::uint32_t status = PlungeForCut(record);
    if (status != kStatusSent) return status;
  }
  if (record.tools.cutterState == kCutterDown && record.tools.cutterMode != kCutterAirZ) {
    // Nothing is sent while Z is where it should be; a new pass depth takes effect here.
    // KEEP: at the feed in force.
    const std::uint32_t status = MoveCutter(record, PlungeZ(record), CommandTag::Plunge,
                                            kCutterDown, HasEngraveDelay(record));
    if (status == kStatusRefused) return status;
  }
  SetFeedRate(record, record.host.gridMode == kRunGrid ? record.tools.gridSpeed
                                                       : record.tools.engraveSpeed);
  return SendMove(record, {.x = place.x, .y = place.y}, CommandTag::Move);
}

std::uint32_t LowerCutter(DeviceState& record) noexcept {
  if (!InJob(record) || record.tools.cutterState != kCutterUp) return kStatusNothing;
  return PlungeForHost(record, true);
}

std::uint32_t LowerCutterContinue(DeviceState& record) noexcept {
  if (!InJob(record) || record.tools.cutterState != kCutterUp) return kStatusNothing;
  return PlungeForHost(record, false);
}

}  // namespace k7
