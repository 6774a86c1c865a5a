// Travelling to a point as the start of a run.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 117: lifts the cutter, raises Z to the machine's top, begins a job and hands the machine
// position of (hostX, hostY) to MoveTo; result of that. MoveTo takes it as a host position, so that
// factors and table home apply twice; the origin alone gets the home once. While a plunge is held:
// raises Z only, result 0. Result 0 too without a connection. [host]
std::uint32_t TravelTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;

}  // namespace k7
