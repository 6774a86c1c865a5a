#include "motion/drain.h"

#include "device/polling.h"

namespace k7 {

void DrainQueue(DeviceState& record, std::uint8_t hold) noexcept {
  PollUntil(50, [&] { return !MovesRemain(record); });
  ClearAliveTicks(record);
  record.plungeHold = hold;
}

}  // namespace k7
