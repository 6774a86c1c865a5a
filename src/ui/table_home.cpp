#include "ui/table_home.h"

namespace k7 {

std::uint64_t EnsureTableHome(DeviceState&, WindowHandle) noexcept {
  return {};
}
bool PromptTableHome(DeviceState&, WindowHandle) noexcept {
  return {};
}

}  // namespace k7
