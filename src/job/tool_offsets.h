// The bead insert tool and the diode pointer beside the cutter.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slots 74 and 90: ask the user to confirm an offset; 1 when kept. [host]
std::uint32_t SetBeadToolOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept;
std::uint32_t SetDiodeOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept;
// Slots 75 and 91: travel so that the accessory arrives over the point; result of MoveTo. [host]
std::uint32_t MoveBeadToolTo(DeviceState& record, std::uint32_t hostX,
                             std::uint32_t hostY) noexcept;
std::uint32_t MoveDiodeTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;

}  // namespace k7
