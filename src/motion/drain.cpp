#include "motion/drain.h"

namespace k7 {

void DrainQueue(DeviceState&, std::uint8_t) noexcept {}

}  // namespace k7
