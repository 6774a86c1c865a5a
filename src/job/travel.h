// Travelling to a point as the beginning of a job.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 117: lifts the cutter, raises Z to the top, begins a job and travels, by MoveTo, to
// (hostX, hostY); result of MoveTo. The point is converted to machine steps twice, once here and
// once in MoveTo, so that axis factors and table home apply twice; only (0, 0) gets the home once.
// While a plunge is held: raises Z only, result 0. Without a connection: 0. [host]
std::uint32_t TravelTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;

}  // namespace k7
