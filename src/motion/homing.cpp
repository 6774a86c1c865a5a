#include "motion/homing.h"

#include <windows.h>

#include <algorithm>

#include "device/module_state.h"
#include "device/polling.h"
#include "link/link.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/probing.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "motion/units.h"
#include "settings/current_location.h"

namespace k7 {

namespace {

void WarnOfRoundFixture(const DeviceState& record) noexcept {
  const auto owner = static_cast<HWND>(record.ownerWindow.Get());
  if (record.roundAxisMode == kRoundOff || owner == nullptr) return;
  MessageBoxW(owner, L"Cannot mechanical home while roundy is activated.", L"Roundy is activated",
              MB_OK);
}

// Moves a pneumatic head off whatever it may be standing at.
void StepAside(DeviceState& record) noexcept {
  // KEEP: by the screw of X, whatever the round mode.
  const std::int32_t aside = TruncateToInt32(LinearStepsPerInchX(record) * -0.125f);
  const std::int32_t x = WrapSubtract(record.lastX, aside);
  EmitMove(record, &x, nullptr, nullptr, 1);
  Pause(1000);
}

// KEEP: without a time-out; a table may be long and slow.
void HomeAxis(DeviceState& record, Polled<std::uint8_t>& reached, const char* line) noexcept {
  reached = 0;
  SendLine(record, line);
  PollUntil(100, [&] { return reached != 0; });
}

}  // namespace

bool HasAllSwitches(const DeviceState& record) noexcept {
  return record.limitSwitchX == 1 && record.limitSwitchY == 1 && record.limitSwitchZ == 1 &&
         record.proxSwitch == 1;
}

void MechanicalHome(DeviceState& record) noexcept {
  if (!HasAllSwitches(record)) {
    WarnOfRoundFixture(record);
    return;
  }
  if (!IsIdle(record)) return;
  ClearAliveTicks(record);
  const bool airZ = record.cutterMode == kCutterAirZ;
  if (airZ) StepAside(record);
  QuerySwitches(record, nullptr, nullptr, nullptr, nullptr);
  SetFeedRate(record, 5.0f);
  const std::uint32_t roundMode = record.roundAxisMode;
  const bool switchOff = hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);

  // Z first: nothing may move sideways with the cutter down.
  if (!airZ) {
    SetSpindle(record, kSpindleFull);
    HomeAxis(record, record.switchZ, "G28 Z0\n");
    SetSpindle(record, kSpindleOff);
  }
  HomeAxis(record, record.switchY, "G28 Y0\n");
  HomeAxis(record, record.switchX, "G28 X0\n");

  // KEEP: the fixture comes back before the position is declared, so it is what becomes 0.
  if (switchOff) SwitchRoundMode(record, roundMode);
  SendLine(record, "SetTableHomed\n");
  Pause(200);
  const std::int32_t zero = 0;
  SetPosition(record, &zero, &zero, &zero);
  WriteCurrentLocation(record);
  ReportPosition(record, nullptr, nullptr);
  ReportSurface(record);
}

void QuerySwitches(DeviceState& record, std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                   std::uint8_t* prox) noexcept {
  if (!HasAllSwitches(record) || !IsIdle(record)) return;
  SendLine(record, "M119\n");
  // KEEP: never cleared, so that after the first report ever the states are those of the last.
  PollUntil(10, [&] { return record.switchesRead != 0; });
  if (x != nullptr) *x = record.switchX;
  if (y != nullptr) *y = record.switchY;
  if (z != nullptr) *z = record.switchZ;
  if (prox != nullptr) *prox = record.switchProbe;
}

bool SetCutterHomeHere(DeviceState& record) noexcept {
  if (!IsIdle(record)) return false;
  // KEEP: truncated, not rounded, here alone.
  const std::int32_t least =
      TruncateToInt32(StepsPerInchZ(record) * std::max(record.cutterLift, record.engraveDepth));
  record.cutterHome = std::max(least, record.lastZ.Get());
  WriteCutterHome(record);
  const std::int32_t lift = LiftZ(record);
  if (lift < 1) return false;
  SetFeedRate(record, record.cutterUpSpeed);
  return EmitMove(record, nullptr, nullptr, &lift, 1) == kStatusSent;
}

}  // namespace k7
