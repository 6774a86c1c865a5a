#include "motion/motors.h"

#include "link/link.h"

namespace k7 {

void SetMotors(DeviceState& record, std::uint8_t on) noexcept {
  if (record.connected != 1 || record.linkHandle.Get() == nullptr) return;
  SendLine(record, on == 1 ? "M17\n" : "M18\n");
}

}  // namespace k7
