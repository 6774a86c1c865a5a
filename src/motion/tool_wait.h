// Waiting until the reader has carried out a tool action.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// One lift or plunge of Z alone, with its tag, and with waitFlag raised before the line goes out
// when `wait` is set; counts it in zMoveCount and sets cutterState to `cutterStateAfter` when it
// was sent. Then, with `wait`, waits (spinning, without bound) until the reader clears the flag;
// the wait is skipped when nothing was sent or nothing would ever end it (no window and no callback
// registered, quiet moves, a jog, or no open job). Result: that of EmitMove. [host]
std::uint32_t MoveCutter(DeviceState& record, std::int32_t z, CommandTag tag,
                         std::uint32_t cutterStateAfter, bool wait) noexcept;

}  // namespace k7
