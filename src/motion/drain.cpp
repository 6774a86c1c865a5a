#include "motion/drain.h"

#include "device/polling.h"

namespace k7 {

void DrainQueue(DeviceState& record, std::uint8_t hold) noexcept {
  PollUntil(50, [&] {
    // Outside a job the controller reports no blocks: nothing would ever end the wait.
    if (JobOpen(record) == 0) return true;
    return LinesInFlight(record) <= 0 && BlocksRunning(record) < 1;
  });
  ClearAliveTicks(record);
  record.plungeHold = hold;
}

}  // namespace k7
