#include "job/passes.h"

namespace k7 {

std::uint32_t StartPass(DeviceState&, std::uint32_t, std::uint32_t, std::uint32_t, wchar_t*,
                        std::int32_t) noexcept {
  return {};
}

}  // namespace k7
