#include "motion/move.h"

namespace k7 {

std::uint32_t EmitMove(DeviceState&, const std::int32_t*, const std::int32_t*, const std::int32_t*,
                       std::uint8_t, CommandTag) noexcept {
  return {};
}
void SetFeedRate(DeviceState&, float) noexcept {}
void SetMaxSpeeds(DeviceState&, float, float, float) noexcept {}

}  // namespace k7
