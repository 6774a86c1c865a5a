#include "motion/strokes.h"

#include "device/progress.h"
#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/move.h"
#include "motion/plunge.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

namespace {

bool InJob(const LinkState& link, const JobState& job) noexcept {
  return link.connected == 1 && JobOpen(job) == 1;
}

std::uint32_t Traverse(DeviceState& record, const MachinePlace& place) noexcept {
  SetFeedRate(record, record.tools.traverseSpeed);
  return SendMove(record, {.x = place.x, .y = place.y}, CommandTag::Move);
}

// The first travel of a job. In the modes that need the user or a probe before the first plunge it
// waits until the head stands still.
std::uint32_t FirstTraverse(DeviceState& record, const MachinePlace& place) noexcept {
  record.job.firstMove = 0;
  const std::uint32_t status = Traverse(record, place);
  if (record.tools.cutterMode == kCutterSemiAutomatic) {
    DrainAndSetHold(record.job, record.link, 1);
    record.tools.probeOnNextPlunge = 1;
    return kStatusArmed;
  }
  if (record.tools.cutterMode == kCutterManual) {
    DrainAndSetHold(record.job, record.link, 1);
    record.tools.cutterMode = kCutterNone;
    SettingsFile{record.link}.WriteInt(settings::kCutterMode,
                                       static_cast<std::int32_t>(kCutterNone));
    return kStatusOneShot;
  }
  return status;
}

}  // namespace

std::uint32_t MoveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (!InJob(record.link, record.job)) return kStatusNothing;
  const MachinePlace place = MachinePlaceOf(record.mechanics, record.position, hostX, hostY);
  if (record.job.firstMove == 1) return FirstTraverse(record, place);

  if (CheckMove(record, {.x = place.x, .y = place.y}) != kStatusSent) return kStatusNothing;
  if (record.tools.cutterState == kCutterDown) {
    SetFeedRate(record, record.tools.cutterUpSpeed);
    const std::uint32_t status = MoveCutter(record, LiftZ(record), CommandTag::Lift, kCutterUp,
                                            HasPneumaticHead(record.tools));
    // To travel with the cutter down would cut across the work.
    if (status == kStatusRefused) return status;
  }
  return Traverse(record, place);
}

std::uint32_t EngraveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (!InJob(record.link, record.job)) return kStatusNothing;
  const MachinePlace place = MachinePlaceOf(record.mechanics, record.position, hostX, hostY);
  const std::uint32_t dryRun = CheckMove(record, {.x = place.x, .y = place.y});
  if (dryRun != kStatusSent) return dryRun;

  if (record.tools.cutterState == kCutterUp) {
    const std::uint32_t status = PlungeForCut(record);
    if (status != kStatusSent) return status;
  }
  if (record.tools.cutterState == kCutterDown && !HasPneumaticHead(record.tools)) {
    // A new pass depth takes effect here; nothing is sent while Z is at that depth.
    // KEEP: no feed is set for this plunge; it goes at the feed in force.
    const std::uint32_t status = MoveCutter(record, PlungeZ(record), CommandTag::Plunge,
                                            kCutterDown, HasEngraveDelay(record.tools));
    if (status == kStatusRefused) return status;
  }
  SetFeedRate(record, record.host.gridMode == kRunGrid ? record.tools.gridSpeed
                                                       : record.tools.engraveSpeed);
  return SendMove(record, {.x = place.x, .y = place.y}, CommandTag::Move);
}

std::uint32_t LowerCutter(DeviceState& record) noexcept {
  if (!InJob(record.link, record.job) || record.tools.cutterState != kCutterUp)
    return kStatusNothing;
  return PlungeForHost(record, true);
}

std::uint32_t LowerCutterContinue(DeviceState& record) noexcept {
  if (!InJob(record.link, record.job) || record.tools.cutterState != kCutterUp)
    return kStatusNothing;
  return PlungeForHost(record, false);
}

}  // namespace k7
