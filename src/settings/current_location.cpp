#include "settings/current_location.h"

#include "device/module_state.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

void SavePosition(const DeviceState& record) noexcept {
  const SettingsFile file{record};  // makes the folders, also when no key is written below
  const std::uint32_t mode = hasRoundAttachment == 1 ? record.roundAxisMode : kRoundOff;
  if (mode > kRoundReplacesY) return;
  // The linear axis that a fixture has replaced keeps the position with which it was left.
  file.WriteInt(keys::kCurrentLocation, mode == kRoundReplacesX ? keys::kRAxis : keys::kXAxis,
                record.lastX);
  file.WriteInt(keys::kCurrentLocation, mode == kRoundReplacesY ? keys::kRAxis : keys::kYAxis,
                record.lastY);
}

void WriteCurrentLocation(const DeviceState& record) noexcept {
  const SettingsFile file{record};
  file.WriteInt(keys::kCurrentLocation, keys::kXAxis, record.lastX);
  file.WriteInt(keys::kCurrentLocation, keys::kYAxis, record.lastY);
}

}  // namespace k7
