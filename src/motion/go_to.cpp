#include "motion/go_to.h"

namespace k7 {

void GoTo(DeviceState&, std::uint32_t, std::uint32_t, std::uint8_t) noexcept {}
void GoToAsJob(DeviceState&, std::uint32_t, std::uint32_t, std::uint8_t) noexcept {}

}  // namespace k7
