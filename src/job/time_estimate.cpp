#include "job/time_estimate.h"

namespace k7 {

std::uint32_t EstimateJobTime(const DeviceState&, const std::uint32_t*, std::uint32_t) noexcept {
  return {};
}

}  // namespace k7
