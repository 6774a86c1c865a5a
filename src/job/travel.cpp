#include "job/travel.h"

#include "device/module_state.h"
#include "job/job.h"
#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/move.h"
#include "motion/spindle.h"
#include "motion/strokes.h"

namespace k7 {

namespace {

constexpr std::int32_t kMachineTop = 0;
constexpr int kEarlyTags = 4;

void RunSpindleUp(DeviceState& record) {
  if (hasSpindle != 0) SetSpindle(record, kSpindleFull);
}

// The controller may report the lifts that were sent before the job when the job is already open;
// the reader then takes these tags for them and treats them as moves.
void MarkEarlyTagsAsMoves(JobState& job) {
  const auto ring = job.tagRing.Lock();
  if (!ring) return;
  for (int i = 0; i < kEarlyTags; ++i) ring->ackRing[i] = CommandTag::Move;
}

}  // namespace

std::uint32_t TravelTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (record.link.connected != 1) return kStatusNothing;
  const MachinePlace place = GoToPlace(record.mechanics, record.position, hostX, hostY);
  const std::int32_t lift = LiftZ(record);

  if (record.job.plungeHold == 1) {
    RunSpindleUp(record);
    SetFeedRate(record, record.tools.cutterUpSpeed);
    MoveCutter(record, kMachineTop, CommandTag::Lift, kCutterUp, false);
    return kStatusNothing;
  }
  if (record.tools.cutterState == kCutterDown) {
    RunSpindleUp(record);
    SetFeedRate(record, record.tools.cutterUpSpeed);
    MoveCutter(record, lift, CommandTag::Lift, kCutterUp, false);
  }
  RunSpindleUp(record);
  SetFeedRate(record, record.tools.traverseSpeed);
  SendMove(record, {.z = kMachineTop});
  BeginJob(record);
  // KEEP: MoveTo takes host steps, so axis factor and table home apply a second time there. For
  // (0, 0) the home applies in MoveTo alone.
  const std::uint32_t status =
      MoveTo(record, static_cast<std::uint32_t>(place.x), static_cast<std::uint32_t>(place.y));
  MarkEarlyTagsAsMoves(record.job);
  return status;
}

}  // namespace k7
