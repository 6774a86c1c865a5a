// Moving one axis in small steps while a key is held.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 54: starts the jog of a kJog direction and speed on a thread of its own and returns. The jog
// makes at least one step and continues while the key (a virtual-key code) is held. At its end,
// also when it could not move, it keeps the position in the settings file and sends `endMessage`
// (0, 0) to ownerWindow. Nothing while a jog is starting or running, or a job is open. [host]
void StartJog(DeviceState& record, std::uint32_t direction, std::uint32_t speedMode,
              std::uint32_t key, std::uint32_t endMessage) noexcept;

}  // namespace k7
