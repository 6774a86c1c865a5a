// Waiting until the controller has carried out every move.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 55: waits, in a job without bound, until every move has been carried out; clears the
// liveness ticks, stores plungeHold = hold. [host]
void DrainQueue(DeviceState& record, std::uint8_t hold) noexcept;

}  // namespace k7
