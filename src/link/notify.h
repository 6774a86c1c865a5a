// Telling the host how far its commands are.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Whether anybody is to be told: a callback or a window is registered. [any]
bool HasListener(const DeviceState& record) noexcept;

// Whether the host is not to be told of moves at present: quiet moves, or a jog. [any]
bool IsSilent(const DeviceState& record) noexcept;

// Tells the host `message`: by the callback when one is stored, else by a message sent to the owner
// window (returns when its procedure has), else nothing. [reader]
void NotifyHost(const DeviceState& record, std::uint32_t message) noexcept;

}  // namespace k7
