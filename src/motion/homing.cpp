#include "motion/homing.h"

#include <windows.h>

#include <algorithm>

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/axes.h"
#include "motion/cutter_mode.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/probing.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "settings/current_location.h"

namespace k7 {

namespace {

void WarnOfRoundFixture(const Mechanics& mechanics, const NotifyState& notify) noexcept {
  const auto owner = static_cast<HWND>(notify.ownerWindow.Get());
  if (!IsRoundFixtureActive(mechanics) || owner == nullptr) return;
  const TracedStandstill traced{awaited::kUser};
  MessageBoxW(owner, L"Cannot mechanical home while roundy is activated.", L"Roundy is activated",
              MB_OK);
}

// Moves a pneumatic head an eighth of an inch along X, away from a switch that it may be closing.
void StepAside(DeviceState& record) noexcept {
  // KEEP: the screw of X measures the distance, also while a round fixture replaces X.
  const std::int32_t aside =
      TruncateToInt32(LinearStepsPerInch(record.mechanics, Axis::X) * -0.125f);
  SendMove(record, {.x = WrapSubtract(record.position.last.x, aside)});
  Pause(record.link, 1000);
}

// KEEP: there is no time-out, because a table may be long and slow.
void HomeAxis(LinkState& link, JobState& job, SwitchStates& switches, Axis axis) noexcept {
  Polled<std::uint8_t>& reached = switches.closed[axis];
  reached = 0;
  SendLine(link, commands::kHomeAxis[axis]);
  AwaitReader(
      link, job, [&] { return reached != 0; }, awaited::kSwitchReached);
}

}  // namespace

bool HasAllSwitches(const Mechanics& mechanics) noexcept {
  return mechanics.axis.x.limitSwitch == 1 && mechanics.axis.y.limitSwitch == 1 &&
         mechanics.axis.z.limitSwitch == 1 && mechanics.proxSwitch == 1;
}

void HomeToSwitches(DeviceState& record) noexcept {
  if (!HasAllSwitches(record.mechanics)) {
    WarnOfRoundFixture(record.mechanics, record.notify);
    return;
  }
  if (!IsIdle(record)) return;
  ClearAliveTicks(record.link);
  const bool airZ = HasPneumaticHead(record.tools);
  if (airZ) StepAside(record);
  QuerySwitches(record, nullptr, nullptr, nullptr, nullptr);
  SetFeedRate(record, 5.0f);
  const std::uint32_t roundMode = record.mechanics.roundAxisMode;
  const bool switchOff = hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);

  // Z first, so that no axis moves sideways while the cutter is in the work.
  if (!airZ) {
    SetSpindle(record, kSpindleFull);
    HomeAxis(record.link, record.job, record.switches, Axis::Z);
    SetSpindle(record, kSpindleOff);
  }
  HomeAxis(record.link, record.job, record.switches, Axis::Y);
  HomeAxis(record.link, record.job, record.switches, Axis::X);

  // KEEP: the fixture is switched on again before the position is declared, so the declared 0 is
  // that of the fixture.
  if (switchOff) SwitchRoundMode(record, roundMode);
  // The head did not get to its switches: where it stands is not 0, and the file is not to say so.
  if (record.link.lost != 0) return;
  SendLine(record.link, commands::kTableHomed);
  Pause(record.link, 200);
  DeclarePosition(record.link, record.position, {.x = 0, .y = 0, .z = 0});
  KeepXyPosition(record);
  ReportPosition(record, nullptr, nullptr);
  ReportSurface(record.notify, record.position);
}

void QuerySwitches(DeviceState& record, std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                   std::uint8_t* prox) noexcept {
  if (!HasAllSwitches(record.mechanics) || !IsIdle(record)) return;
  SendLine(record.link, commands::kAskSwitches);
  // KEEP: switchesRead is never cleared, so only the first query waits. Later queries give the
  // states of the last report received.
  const auto read = [&] { return record.switches.switchesRead != 0; };
  AwaitReader(record.link, record.job, read, awaited::kSwitches);
  if (x != nullptr) *x = record.switches.closed.x;
  if (y != nullptr) *y = record.switches.closed.y;
  if (z != nullptr) *z = record.switches.closed.z;
  if (prox != nullptr) *prox = record.switches.switchProbe;
}

bool SetCutterHomeHere(DeviceState& record) noexcept {
  if (!IsIdle(record)) return false;
  // KEEP: this conversion truncates, where all others round.
  const std::int32_t least =
      TruncateToInt32(StepsPerInch(record.mechanics, Axis::Z) *
                      std::max(record.tools.cutterLift, record.tools.engraveDepth));
  record.position.cutterHome = std::max(least, record.position.last.z.Get());
  KeepCutterHome(record);
  const std::int32_t lift = LiftZ(record);
  if (lift < 1) return false;
  SetFeedRate(record, record.tools.cutterUpSpeed);
  return SendMove(record, {.z = lift}) == kStatusSent;
}

}  // namespace k7
