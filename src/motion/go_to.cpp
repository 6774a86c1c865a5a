#include "motion/go_to.h"

#include "device/module_state.h"
#include "job/job.h"
#include "motion/move.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "motion/tool_wait.h"
#include "motion/units.h"
#include "settings/current_location.h"

namespace k7 {

void GoTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY, std::uint8_t) noexcept {
  if (record.connected != 1) return;
  const MachinePlace place = GoToPlace(record, hostX, hostY);
  const std::int32_t lift = record.plungeHold == 1 ? 0 : LiftZ(record);
  SetFeedRate(record, record.cutterUpSpeed);
  MoveCutter(record, lift, CommandTag::Lift, kCutterUp, record.cutterMode == kCutterAirZ);
  SetFeedRate(record, record.traverseSpeed);
  EmitMove(record, &place.x, &place.y, nullptr, 1, CommandTag::Move);
  WriteCurrentLocation(record);
}

void GoToAsJob(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
               std::uint8_t roundFlag) noexcept {
  const std::uint32_t roundMode = record.roundAxisMode;
  const bool switchOff = roundFlag == 1 && hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);
  record.quietMoves = 1;
  // A refused job leaves the head where the refusal has lifted it.
  if (BeginJob(record)) {
    SetSpindle(record, kSpindleFull);
    GoTo(record, hostX, hostY, 1);
    SetSpindle(record, kSpindleOff);
    EndJob(record);
  }
  record.quietMoves = 0;
  if (switchOff) SwitchRoundMode(record, roundMode);
}

}  // namespace k7
