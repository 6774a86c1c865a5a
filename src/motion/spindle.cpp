#include "motion/spindle.h"

namespace k7 {

void SetSpindle(DeviceState&, std::uint32_t) noexcept {}

}  // namespace k7
