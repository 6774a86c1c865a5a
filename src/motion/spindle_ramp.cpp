#include "motion/spindle_ramp.h"

namespace k7 {

bool StartSpindleRamp(DeviceState&, std::int32_t, WindowHandle, std::uint32_t,
                      std::uint32_t) noexcept {
  return {};
}

}  // namespace k7
