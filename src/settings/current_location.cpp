#include "settings/current_location.h"

namespace k7 {

void SavePosition(const DeviceState&) noexcept {}
void WriteCurrentLocation(const DeviceState&) noexcept {}

}  // namespace k7
