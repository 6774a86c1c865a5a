#include "settings/current_location.h"

#include "device/module_state.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

void KeepPosition(const DeviceState& record) noexcept {
  const SettingsFile file{record.link};  // makes the folders, also when no key is written below
  const std::uint32_t mode = hasRoundAttachment == 1 ? record.mechanics.roundAxisMode : kRoundOff;
  if (mode > kRoundReplacesY) return;
  // The linear axis that a fixture has replaced keeps the position with which it was left.
  file.WriteInt(mode == kRoundReplacesX ? settings::kLocationRound : settings::kLocationX,
                record.position.last.x);
  file.WriteInt(mode == kRoundReplacesY ? settings::kLocationRound : settings::kLocationY,
                record.position.last.y);
}

void KeepXyPosition(const DeviceState& record) noexcept {
  const SettingsFile file{record.link};
  file.WriteInt(settings::kLocationX, record.position.last.x);
  file.WriteInt(settings::kLocationY, record.position.last.y);
}

}  // namespace k7
