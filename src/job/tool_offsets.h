// The bead insert tool and the diode pointer beside the cutter.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slots 74 and 90: proposes as the accessory's offset the distance from the cutter's present place
// to (x, y), the place under the accessory in thousandths of an inch from the table home, and asks
// the user. Yes keeps it in the record and the settings file: 1. Otherwise 0, and without asking:
// not connected, a job open, or no helper library of the host. [host]
std::uint32_t SetBeadToolOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept;
std::uint32_t SetDiodeOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept;

// Slots 75 and 91: travels, by MoveTo, so that the accessory arrives over the host position; result
// of MoveTo. [host]
std::uint32_t MoveBeadToolTo(DeviceState& record, std::uint32_t hostX,
                             std::uint32_t hostY) noexcept;
std::uint32_t MoveDiodeTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;

}  // namespace k7
