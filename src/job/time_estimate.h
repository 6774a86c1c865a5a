// How long a drawing will take.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 119: whole seconds for `count` triples (x, y, kind). [any]
std::uint32_t EstimateJobTime(const DeviceState& record, const std::uint32_t* triples,
                              std::uint32_t count) noexcept;

}  // namespace k7
