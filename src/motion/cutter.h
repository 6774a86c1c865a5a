// Lifting and lowering the cutter, and waiting for the tool action at the end of it.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Moves Z alone, as a lift or a plunge with its tag. When the line was sent, counts it in
// zMoveCount and sets cutterState to `cutterStateAfter`.
//
// With `wait`, raises waitFlag before the line goes out and then waits, without bound,
// until the reader clears the flag. There is no wait when nothing was sent, or when the reader
// would never clear the flag: no window and no callback registered, quiet moves, a jog, no open
// job. Result: that of SendMove. [host]
std::uint32_t MoveCutter(DeviceState& record, std::int32_t z, CommandTag tag,
                         std::uint32_t cutterStateAfter, bool wait) noexcept;

// Slot 55: waits until every move has been carried out (AwaitNoMoves); then clears the liveness
// ticks and keeps `hold` in plungeHold. [host]
void DrainAndSetHold(JobState& job, LinkState& link, std::uint8_t hold) noexcept;

// For a proximity switch that is closed before the cutter has been lowered: lifts the cutter to the
// top of Z and tells the user, in a box owned by ownerWindow, to open the host's machine window
// anew. Returns when the box is closed. [host], [jog]
void LiftFromProximity(DeviceState& record) noexcept;

}  // namespace k7
