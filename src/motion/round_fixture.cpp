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

std::uint32_t ConfiguredRoundMode(const Mechanics& mechanics) noexcept {
  return hasRoundAttachment == 1 ? mechanics.roundAxisMode : kRoundOff;
}

void KeepRoundMode(Mechanics& mechanics, std::uint32_t mode) noexcept {
  if (hasRoundAttachment == 1) mechanics.roundAxisMode = mode;
}

bool IsRoundFixtureActive(const Mechanics& mechanics) noexcept {
  return mechanics.roundAxisMode != kRoundOff;
}

void SwitchRoundMode(DeviceState& record, std::uint32_t mode) noexcept {
  if (record.mechanics.roundAxisMode == mode) return;
  SettingsFile{record.link}.WriteInt(settings::kRoundMode, static_cast<std::int32_t>(mode));
  ExchangeRoundPositions(record.mechanics, record.position, mode);
  SetAxisStepsPerMm(record.link, record.position, "X",
                    StepsPerInch(record.mechanics, Axis::X) / kMmPerInch);
  SetAxisStepsPerMm(record.link, record.position, "Y",
                    StepsPerInch(record.mechanics, Axis::Y) / kMmPerInch);
  Pause(record.link, 500);
  SendAxisMapping(record.link, record.mechanics);
  DeclarePosition(record.link, record.position,
                  {.x = record.position.last.x, .y = record.position.last.y});
  Pause(record.link, 500);
  ClearAliveTicks(record.link);
}

void SendAxisMapping(LinkState& link, const Mechanics& mechanics) noexcept {
  const std::uint32_t mode = hasRoundAttachment != 0 ? mechanics.roundAxisMode : kRoundOff;
  if (mode < std::size(commands::kAxisMappings)) {
    SendLine(link, commands::kAxisMappings[mode]);
  }
}

}  // namespace k7
