#include "job/tool_offsets.h"

namespace k7 {

std::uint32_t SetBeadToolOffset(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}
std::uint32_t SetDiodeOffset(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}
std::uint32_t MoveBeadToolTo(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}
std::uint32_t MoveDiodeTo(DeviceState&, std::uint32_t, std::uint32_t) noexcept {
  return {};
}

}  // namespace k7
