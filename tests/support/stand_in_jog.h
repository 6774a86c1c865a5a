// StandInJog: a worker as a jog's, for what stops a jog.
#pragma once

#include <windows.h>

#include "device/device_state.h"

namespace k7test {

inline constexpr std::int32_t kLastXOfStandInJog = 999;

// Starts a thread as the record's jog: it runs until it is asked to stop and still uses the record
// a moment later, when it leaves kLastXOfStandInJog in lastX, if the record is still attached.
// False: the system refused.
inline bool StartStandInJog(k7::DeviceState& record) {
  record.jog.jogThread = CreateThread(
      nullptr, 0,
      [](void* context) -> DWORD {
        auto& state = *static_cast<k7::DeviceState*>(context);
        while (state.stopWorkers == 0) Sleep(1);
        Sleep(100);
        if (const auto lock = state.job.linesInFlight.Lock()) {
          state.position.last.x = kLastXOfStandInJog;
        }
        return 0;
      },
      &record, 0, nullptr);
  return record.jog.jogThread != nullptr;
}

}  // namespace k7test
