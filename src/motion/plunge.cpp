#include "motion/plunge.h"

#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/move.h"
#include "motion/probing.h"
#include "motion/spindle.h"

namespace k7 {

namespace {

std::uint32_t Plunge(DeviceState& record, CommandTag tag, bool wait) noexcept {
  return MoveCutter(record, PlungeZ(record), tag, kCutterDown, wait);
}

// The automatic mode probes the surface before every plunge. The feed is set anew afterwards,
// because the probe has a feed of its own.
std::uint32_t ProbeAndPlunge(DeviceState& record, CommandTag tag, bool wait) noexcept {
  ProbeSurface(record);
  SetFeedRate(record, record.tools.cutterDownSpeed);
  const std::uint32_t status = Plunge(record, tag, wait);
  // KEEP: the cutter counts as down also when no line was sent, because the probe has left it at
  // the surface.
  record.tools.cutterState = kCutterDown;
  return status;
}

// The one probe in a job of the semi-automatic mode: takes the surface, less the probe offset, for
// the cutter home.
void ProbeCutterHome(DeviceState& record) noexcept {
  record.tools.probeOnNextPlunge = 0;
  SetSpindle(record, kSpindleOff);
  ProbeSurface(record);
  SubtractProbeOffset(record);
}

// Lifts from the probed surface. KEEP: this lift is never waited for, whatever the mode.
std::uint32_t LiftFromProbe(DeviceState& record) noexcept {
  SetFeedRate(record, record.tools.cutterUpSpeed);
  return MoveCutter(record, LiftZ(record), CommandTag::Lift, kCutterUp, false);
}

void SetSpindleForCut(DeviceState& record) noexcept {
  SetSpindle(record, record.tools.engraveType != 0 ? kSpindleEngrave : kSpindleOff);
}

// The plunge of each mode, once the semi-automatic mode has no probe to make.
std::uint32_t PlungeByMode(DeviceState& record, CommandTag tag, bool wait) noexcept {
  if (record.tools.cutterMode == kCutterAutomatic) return ProbeAndPlunge(record, tag, wait);
  if (record.tools.cutterMode == kCutterSemiAutomatic) {
    // The spindle turns before the cutter reaches the work.
    SetSpindle(record, kSpindleEngrave);
    SetFeedRate(record, record.tools.cutterDownSpeed);
  }
  return Plunge(record, tag, wait);
}

bool ProbeIsDue(const Tools& tools) noexcept {
  return tools.cutterMode == kCutterSemiAutomatic && tools.probeOnNextPlunge != 0;
}

}  // namespace

std::uint32_t PlungeForCut(DeviceState& record) noexcept {
  const bool wait = HasEngraveDelay(record.tools) || HasPneumaticHead(record.tools);
  SetFeedRate(record, record.tools.cutterDownSpeed);
  if (ProbeIsDue(record.tools)) {
    ProbeCutterHome(record);
    KeepCutterHome(record);
    return LiftFromProbe(record) == kStatusRefused ? kStatusRefused : kStatusProbed;
  }
  const std::uint32_t status = PlungeByMode(record, CommandTag::Plunge, wait);
  if (status == kStatusRefused) return status;
  SetSpindleForCut(record);
  return kStatusSent;
}

std::uint32_t PlungeForHost(DeviceState& record, bool probeIsAll) noexcept {
  const bool probed = ProbeIsDue(record.tools);
  SetFeedRate(record, record.tools.cutterDownSpeed);
  if (probed) {
    // KEEP: the probed cutter home is not written to the settings file here, and a refused lift is
    // not reported to the host.
    ProbeCutterHome(record);
    LiftFromProbe(record);
    if (probeIsAll) return kStatusProbed;
  }
  // KEEP: this plunge is waited for only when it ends with a dwell, not because of a pneumatic
  // head.
  const std::uint32_t status =
      PlungeByMode(record, CommandTag::LoneDwell, HasEngraveDelay(record.tools));
  // KEEP: a plunge that is refused after a probe is not reported to the host. The user has seen the
  // refusal, and the host is told that the operation has probed.
  if (status == kStatusRefused && !probed) return status;
  SetSpindleForCut(record);
  return probed ? kStatusSent : status;
}

}  // namespace k7
