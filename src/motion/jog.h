// Moving one axis in small steps while a key is held.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 54: starts the jog on a thread of its own and returns. [host]
void StartJog(DeviceState& record, std::uint32_t direction, std::uint32_t speedMode,
              std::uint32_t key, std::uint32_t endMessage) noexcept;
// Asks a running jog and ramp to end and waits for their threads. Called before the link goes.
// [host]
void EndWorkers(DeviceState& record) noexcept;

}  // namespace k7
