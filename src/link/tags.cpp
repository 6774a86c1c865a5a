#include "link/tags.h"

namespace k7 {

void PushTag(DeviceState&, CommandTag) noexcept {}
void TakeBackTag(DeviceState&) noexcept {}

}  // namespace k7
