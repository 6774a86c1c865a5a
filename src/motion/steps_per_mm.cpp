#include "motion/steps_per_mm.h"

namespace k7 {

void SetAxisStepsPerMm(DeviceState&, const char*, float) noexcept {}

}  // namespace k7
