#include "motion/position.h"

namespace k7 {

void SetPosition(DeviceState&, const std::int32_t*, const std::int32_t*,
                 const std::int32_t*) noexcept {}
void GetCurrentLocation(DeviceState&, std::int32_t*, std::int32_t*, std::int32_t*) noexcept {}
void GetDisplayLocation(DeviceState&, std::int32_t*, std::int32_t*, std::int32_t*) noexcept {}
void ReportPosition(DeviceState&, std::int32_t*, std::int32_t*) noexcept {}
void ReportSurface(DeviceState&) noexcept {}

}  // namespace k7
