#include "settings/current_location.h"

#include "device/module_state.h"
#include "settings/file.h"
#include "settings/keys.h"

namespace k7 {

void KeepPosition(const DeviceState& record) noexcept {
  const SettingsFile file{record.link};  // makes the folders, also when no key is written below
  const std::uint32_t mode = hasRoundAttachment == 1 ? record.mechanics.roundAxisMode : kRoundOff;
  if (mode > kRoundReplacesY) return;
  // The linear axis that a fixture has replaced keeps the position with which it was left.
  file.WriteInt(keys::kCurrentLocation, mode == kRoundReplacesX ? keys::kRAxis : keys::kXAxis,
                record.position.last.x);
  file.WriteInt(keys::kCurrentLocation, mode == kRoundReplacesY ? keys::kRAxis : keys::kYAxis,
                record.position.last.y);
}

void KeepXyPosition(const DeviceState& record) noexcept {
  const SettingsFile file{record.link};
  file.WriteInt(keys::kCurrentLocation, keys::kXAxis, record.position.last.x);
  file.WriteInt(keys::kCurrentLocation, keys::kYAxis, record.position.last.y);
}

}  // namespace k7
