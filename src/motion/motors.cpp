#include "motion/motors.h"

namespace k7 {

void SetMotors(DeviceState&, std::uint8_t) noexcept {}

}  // namespace k7
