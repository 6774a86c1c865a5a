#include "settings/load.h"

namespace k7 {

void LoadSettings(DeviceState&) noexcept {}

}  // namespace k7
