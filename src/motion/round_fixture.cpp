#include "motion/round_fixture.h"

#include <iterator>

#include "device/module_state.h"
#include "device/polling.h"
#include "link/link.h"
#include "motion/position.h"
#include "motion/round_positions.h"
#include "motion/steps_per_mm.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

namespace {

// By roundAxisMode: which motor output drives which axis.
constexpr const char* kAxisMappings[] = {"M800 X1 Y2\n", "M800 X5 Y2\n", "M800 X1 Y5\n"};

}  // namespace

void SwitchRoundMode(DeviceState& record, std::uint32_t mode) noexcept {
  if (record.roundAxisMode == mode) return;
  SettingsFile{record}.WriteInt(keys::kAxisRound, keys::kMode, static_cast<std::int32_t>(mode));
  ExchangeRoundPositions(record, mode);
  SetAxisStepsPerMm(record, "X", StepsPerInchX(record) / 25.4f);
  SetAxisStepsPerMm(record, "Y", StepsPerInchY(record) / 25.4f);
  Pause(500);
  SendAxisMapping(record);
  const std::int32_t x = record.lastX;
  const std::int32_t y = record.lastY;
  SetPosition(record, &x, &y, nullptr);
  Pause(500);
  ClearAliveTicks(record);
}

void SendAxisMapping(DeviceState& record) noexcept {
  const std::uint32_t mode = hasRoundAttachment != 0 ? record.roundAxisMode : kRoundOff;
  if (mode < std::size(kAxisMappings)) SendLine(record, kAxisMappings[mode]);
}

}  // namespace k7
