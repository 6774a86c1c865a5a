#include "motion/plunge.h"

#include "motion/move.h"
#include "motion/probing.h"
#include "motion/spindle.h"
#include "motion/tool_wait.h"
#include "motion/units.h"

namespace k7 {

namespace {

std::uint32_t Plunge(DeviceState& record, CommandTag tag, bool wait) noexcept {
  return MoveCutter(record, PlungeZ(record), tag, kCutterDown, wait);
}

// The surface is found anew for every plunge; probing has its own feed.
std::uint32_t ProbeAndPlunge(DeviceState& record, CommandTag tag, bool wait) noexcept {
  ProbeSurface(record);
  SetFeedRate(record, record.cutterDownSpeed);
  const std::uint32_t status = Plunge(record, tag, wait);
  // KEEP: down whether a line was sent or not. The probe has left the cutter at the surface.
  record.cutterState = kCutterDown;
  return status;
}

// The semi-automatic mode's one probe: takes the surface, less the offset, for the cutter home.
void ProbeCutterHome(DeviceState& record) noexcept {
  record.probeOnNextPlunge = 0;
  SetSpindle(record, kSpindleOff);
  ProbeSurface(record);
  SubtractProbeOffset(record);
}

// Lifts from the probed surface. KEEP: never waits, whatever the mode.
std::uint32_t LiftFromProbe(DeviceState& record) noexcept {
  SetFeedRate(record, record.cutterUpSpeed);
  return MoveCutter(record, LiftZ(record), CommandTag::Lift, kCutterUp, false);
}

void SetSpindleForCut(DeviceState& record) noexcept {
  SetSpindle(record, record.engraveType != 0 ? kSpindleEngrave : kSpindleOff);
}

// The semi-automatic mode has the spindle turning before the cutter goes down.
void PrepareSemiAutomaticPlunge(DeviceState& record) noexcept {
  SetSpindle(record, kSpindleEngrave);
  SetFeedRate(record, record.cutterDownSpeed);
}

}  // namespace

bool HasEngraveDelay(const DeviceState& record) noexcept {
  return record.engraveDelayMs > 0;
}

std::uint32_t PlungeForCut(DeviceState& record) noexcept {
  const bool wait = HasEngraveDelay(record) || record.cutterMode == kCutterAirZ;
  SetFeedRate(record, record.cutterDownSpeed);
  std::uint32_t status = kStatusNothing;
  if (record.cutterMode == kCutterAutomatic) {
    status = ProbeAndPlunge(record, CommandTag::Plunge, wait);
  } else {
    if (record.cutterMode == kCutterSemiAutomatic) {
      if (record.probeOnNextPlunge != 0) {
        ProbeCutterHome(record);
        WriteCutterHome(record);
        return LiftFromProbe(record) == kStatusRefused ? kStatusRefused : kStatusProbed;
      }
      PrepareSemiAutomaticPlunge(record);
    }
    status = Plunge(record, CommandTag::Plunge, wait);
  }
  if (status == kStatusRefused) return status;
  SetSpindleForCut(record);
  return kStatusSent;
}

std::uint32_t PlungeForHost(DeviceState& record, bool probeIsAll) noexcept {
  // KEEP: the pneumatic head alone is no reason to wait here; only a dwell is.
  const bool wait = HasEngraveDelay(record);
  bool probed = false;
  SetFeedRate(record, record.cutterDownSpeed);
  std::uint32_t status = kStatusNothing;
  if (record.cutterMode == kCutterAutomatic) {
    status = ProbeAndPlunge(record, CommandTag::LoneDwell, wait);
  } else {
    if (record.cutterMode == kCutterSemiAutomatic) {
      if (record.probeOnNextPlunge != 0) {
        // KEEP: the settings file keeps its cutter home here, and a refused lift goes unreported.
        ProbeCutterHome(record);
        LiftFromProbe(record);
        if (probeIsAll) return kStatusProbed;
        probed = true;
      }
      PrepareSemiAutomaticPlunge(record);
    }
    status = Plunge(record, CommandTag::LoneDwell, wait);
  }
  // KEEP: behind a probe a refusal is not handed on: the user has seen it, and the host hears that
  // the probe has been.
  if (status == kStatusRefused && !probed) return status;
  SetSpindleForCut(record);
  return probed ? kStatusSent : status;
}

}  // namespace k7
