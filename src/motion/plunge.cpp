#include "motion/plunge.h"

#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/move.h"
#include "motion/probing.h"
#include "motion/spindle.h"

namespace k7 {

namespace {

std::uint32_t Plunge(DeviceState& record, CommandTag tag, bool wait) noexcept {
  return MoveCutter(record, PlungeZ(record), tag, kCutterDown, wait);
}

// The surface is found anew for every plunge; probing has its own feed.
std::uint32_t ProbeAndPlunge(DeviceState& record, CommandTag tag, bool wait) noexcept {
  ProbeSurface(record);
  SetFeedRate(record, record.tools.cutterDownSpeed);
  const std::uint32_t status = Plunge(record, tag, wait);
  // KEEP: down whether a line was sent or not. The probe has left the cutter at the surface.
  record.tools.cutterState = kCutterDown;
  return status;
}

// The semi-automatic mode's one probe: takes the surface, less the offset, for the cutter home.
void ProbeCutterHome(DeviceState& record) noexcept {
  record.tools.probeOnNextPlunge = 0;
  SetSpindle(record, kSpindleOff);
  ProbeSurface(record);
  SubtractProbeOffset(record);
}

// Lifts from the probed surface. KEEP: never waits, whatever the mode.
std::uint32_t LiftFromProbe(DeviceState& record) noexcept {
  SetFeedRate(record, record.tools.cutterUpSpeed);
  return MoveCutter(record, LiftZ(record), CommandTag::Lift, kCutterUp, false);
}

void SetSpindleForCut(DeviceState& record) noexcept {
  SetSpindle(record, record.tools.engraveType != 0 ? kSpindleEngrave : kSpindleOff);
}

// The plunge that is left when no single probe is due.
std::uint32_t PlungeByMode(DeviceState& record, CommandTag tag, bool wait) noexcept {
  if (record.tools.cutterMode == kCutterAutomatic) return ProbeAndPlunge(record, tag, wait);
  if (record.tools.cutterMode == kCutterSemiAutomatic) {
    // The spindle turns before the cutter goes down.
    SetSpindle(record, kSpindleEngrave);
    SetFeedRate(record, record.tools.cutterDownSpeed);
  }
  return Plunge(record, tag, wait);
}

bool ProbeIsDue(const DeviceState& record) noexcept {
  return record.tools.cutterMode == kCutterSemiAutomatic && record.tools.probeOnNextPlunge != 0;
}

}  // namespace

bool HasEngraveDelay(const DeviceState& record) noexcept {
  return record.tools.engraveDelayMs > 0;
}

std::uint32_t PlungeForCut(DeviceState& record) noexcept {
  const bool wait = HasEngraveDelay(record) || record.tools.cutterMode == kCutterAirZ;
  SetFeedRate(record, record.tools.cutterDownSpeed);
  if (ProbeIsDue(record)) {
    ProbeCutterHome(record);
    WriteCutterHome(record);
    return LiftFromProbe(record) == kStatusRefused ? kStatusRefused : kStatusProbed;
  }
  const std::uint32_t status = PlungeByMode(record, CommandTag::Plunge, wait);
  if (status == kStatusRefused) return status;
  SetSpindleForCut(record);
  return kStatusSent;
}

std::uint32_t PlungeForHost(DeviceState& record, bool probeIsAll) noexcept {
  const bool probed = ProbeIsDue(record);
  SetFeedRate(record, record.tools.cutterDownSpeed);
  if (probed) {
    // KEEP: the settings file keeps its cutter home here, and a refused lift goes unreported.
    ProbeCutterHome(record);
    LiftFromProbe(record);
    if (probeIsAll) return kStatusProbed;
  }
  // KEEP: the pneumatic head alone is no reason to wait here; only a dwell is.
  const std::uint32_t status = PlungeByMode(record, CommandTag::LoneDwell, HasEngraveDelay(record));
  // KEEP: behind a probe a refusal is not handed on: the user has seen it, and the host hears that
  // the probe has been.
  if (status == kStatusRefused && !probed) return status;
  SetSpindleForCut(record);
  return probed ? kStatusSent : status;
}

}  // namespace k7
