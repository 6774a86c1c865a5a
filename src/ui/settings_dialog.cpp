#include "ui/settings_dialog.h"

namespace k7 {

std::int64_t ShowSettingsDialog(DeviceState&, WindowHandle, std::uint32_t, std::uint32_t,
                                std::uint64_t, std::uint32_t) noexcept {
  return {};
}

}  // namespace k7
