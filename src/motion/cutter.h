// Lifting and lowering the cutter, and waiting for what the tool does then.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// One lift or plunge of Z alone, with its tag, and with waitFlag raised before the line goes out
// when `wait` is set; counts it in zMoveCount and sets cutterState to `cutterStateAfter` when it
// was sent. Then, with `wait`, waits without bound until the reader clears the flag;
// the wait is skipped when nothing was sent or nothing would ever end it (no window and no callback
// registered, quiet moves, a jog, or no open job). Result: that of SendMove. [host]
std::uint32_t MoveCutter(DeviceState& record, std::int32_t z, CommandTag tag,
                         std::uint32_t cutterStateAfter, bool wait) noexcept;

// Slot 55: waits until every move has been carried out (AwaitNoMoves); clears the liveness ticks,
// stores plungeHold = hold. [host]
void DrainQueue(DeviceState& record, std::uint8_t hold) noexcept;

// The proximity switch is touched before anything should touch it: lifts the cutter to the top of Z
// and tells the user, in a box owned by ownerWindow, to open the device interface anew; returns
// when the box is closed. [host], [jog]
void LiftFromProximity(DeviceState& record) noexcept;

}  // namespace k7
