#include "motion/probing.h"

namespace k7 {

void ProbeSurface(DeviceState&) noexcept {}
void SubtractProbeOffset(DeviceState&) noexcept {}
void ProbeAndLift(DeviceState&, std::int32_t) noexcept {}
void SetTableSurface(DeviceState&, float, std::int32_t) noexcept {}

}  // namespace k7
