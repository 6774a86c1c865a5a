#include "motion/cutter_mode.h"

namespace k7 {

bool HasPneumaticHead(const Tools& tools) noexcept {
  return tools.cutterMode == kCutterAirZ;
}

bool ProbesTheSurface(const Tools& tools) noexcept {
  const std::uint32_t mode = tools.cutterMode;
  return mode == kCutterAutomatic || mode == kCutterSemiAutomatic;
}

bool HasEngraveDelay(const Tools& tools) noexcept {
  return tools.engraveDelayMs > 0;
}

}  // namespace k7
