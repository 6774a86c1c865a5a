#include "job/travel.h"

namespace k7 {

std::uint32_t TravelTo(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}

}  // namespace k7
