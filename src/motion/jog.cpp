#include "motion/jog.h"

namespace k7 {

void StartJog(DeviceState&, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) noexcept {}
void EndWorkers(DeviceState&) noexcept {}

}  // namespace k7
