#include "motion/round_fixture.h"

namespace k7 {

void SwitchRoundMode(DeviceState&, std::uint32_t) noexcept {}
void SendAxisMapping(DeviceState&) noexcept {}

}  // namespace k7
