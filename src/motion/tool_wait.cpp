#include "motion/tool_wait.h"

namespace k7 {

std::uint32_t MoveCutter(DeviceState&, std::int32_t, CommandTag, std::uint32_t, bool) noexcept {
  return {};
}

}  // namespace k7
