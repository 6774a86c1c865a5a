#include "motion/drain.h"

#include "device/polling.h"

namespace k7 {

void DrainQueue(DeviceState& record, std::uint8_t hold) noexcept {
  // With no job open the controller reports no block, so that nothing would end the wait.
  PollUntil(50, [&] { return JobOpen(record) == 0 || !MovesRemain(record); });
  ClearAliveTicks(record);
  record.plungeHold = hold;
}

}  // namespace k7
