#include "motion/homing.h"

namespace k7 {

bool HasAllSwitches(const DeviceState&) noexcept {
  return {};
}
void MechanicalHome(DeviceState&) noexcept {}
void QuerySwitches(DeviceState&, std::uint8_t*, std::uint8_t*, std::uint8_t*,
                   std::uint8_t*) noexcept {}
bool SetCutterHomeHere(DeviceState&) noexcept {
  return {};
}

}  // namespace k7
