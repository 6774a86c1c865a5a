// Travelling to a point as the start of a run.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 117: result of MoveTo, 0 when held or not connected. [host]
std::uint32_t TravelTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;

}  // namespace k7
