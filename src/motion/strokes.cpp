#include "motion/strokes.h"

namespace k7 {

std::uint32_t MoveTo(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}
std::uint32_t EngraveTo(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}
std::uint32_t LowerCutter(DeviceState&) noexcept {
  return {};
}
std::uint32_t LowerCutterContinue(DeviceState&) noexcept {
  return {};
}

}  // namespace k7
