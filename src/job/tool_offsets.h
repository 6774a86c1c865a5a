// The bead insert tool and the diode pointer beside the cutter.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slots 74 and 90: proposes an offset of the accessory in a Yes/No box: the distance from the
// cutter's present position to (x, y), the point under the accessory in thousandths of an inch from
// the table home. On Yes keeps it in the record and the settings file; result 1. On No: 0. Without
// a connection, with a job open or without the host's helper library: 0, and no box. [host]
std::uint32_t ProposeBeadToolOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept;
std::uint32_t ProposeDiodeOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept;

// Slots 75 and 91: travels, by MoveTo, so that the accessory arrives over the host position; result
// of MoveTo. [host]
std::uint32_t MoveBeadToolTo(DeviceState& record, std::uint32_t hostX,
                             std::uint32_t hostY) noexcept;
std::uint32_t MoveDiodeTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;

}  // namespace k7
