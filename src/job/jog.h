// Moving one axis in small steps while a key is held.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 54: starts the jog of a kJog direction and speed on a thread of its own and returns. It goes
// on while the key (a virtual-key code) is held, one step at least, and ends with "Current
// Location" written and one `endMessage` (0, 0) to ownerWindow, also when it could not move.
// Nothing while a jog is starting or running, or a job is open. [host]
void StartJog(DeviceState& record, std::uint32_t direction, std::uint32_t speedMode,
              std::uint32_t key, std::uint32_t endMessage) noexcept;

}  // namespace k7
