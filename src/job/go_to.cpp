#include "job/go_to.h"

#include "device/module_state.h"
#include "job/job.h"
#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/move.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "settings/current_location.h"

namespace k7 {

void GoTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  if (record.link.connected != 1) return;
  const MachinePlace place = GoToPlace(record.mechanics, record.position, hostX, hostY);
  const std::int32_t lift = record.job.plungeHold == 1 ? 0 : LiftZ(record);
  SetFeedRate(record, record.tools.cutterUpSpeed);
  MoveCutter(record, lift, CommandTag::Lift, kCutterUp, HasPneumaticHead(record.tools));
  SetFeedRate(record, record.tools.traverseSpeed);
  SendMove(record, {.x = place.x, .y = place.y}, CommandTag::Move);
  KeepXyPosition(record);
}

void GoToAsJob(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY,
               std::uint8_t roundFlag) noexcept {
  const std::uint32_t roundMode = record.mechanics.roundAxisMode;
  const bool switchOff = roundFlag == 1 && hasRoundAttachment != 0;
  if (switchOff) SwitchRoundMode(record, kRoundOff);
  record.job.quietMoves = 1;
  // A job that cannot begin has lifted the cutter; the head does not travel.
  if (BeginJob(record)) {
    SetSpindle(record, kSpindleFull);
    GoTo(record, hostX, hostY);
    SetSpindle(record, kSpindleOff);
    EndJob(record);
  }
  record.job.quietMoves = 0;
  if (switchOff) SwitchRoundMode(record, roundMode);
}

}  // namespace k7
