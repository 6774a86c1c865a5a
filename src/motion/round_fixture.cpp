#include "motion/round_fixture.h"

#include <iterator>

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/axes.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/round_positions.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

void SwitchRoundMode(DeviceState& record, std::uint32_t mode) noexcept {
  if (record.mechanics.roundAxisMode == mode) return;
  SettingsFile{record.link}.WriteInt(settings::kRoundMode, static_cast<std::int32_t>(mode));
  ExchangeRoundPositions(record, mode);
  SetAxisStepsPerMm(record, "X", StepsPerInch(record.mechanics, Axis::X) / kMmPerInch);
  SetAxisStepsPerMm(record, "Y", StepsPerInch(record.mechanics, Axis::Y) / kMmPerInch);
  Pause(record.link, 500);
  SendAxisMapping(record);
  SetPosition(record, {.x = record.position.last.x, .y = record.position.last.y});
  Pause(record.link, 500);
  ClearAliveTicks(record.link);
}

void SendAxisMapping(DeviceState& record) noexcept {
  const std::uint32_t mode = hasRoundAttachment != 0 ? record.mechanics.roundAxisMode : kRoundOff;
  if (mode < std::size(commands::kAxisMappings)) {
    SendLine(record.link, commands::kAxisMappings[mode]);
  }
}

}  // namespace k7
