// The move emitter and the feeds: the only writers of "G0" lines.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// One "G0" line with the axes that change, of up to three machine positions in steps (null: leave
// the axis). `send` 1 sends it and counts it in linesInFlight, in a job once fewer than 32 lines
// are outstanding (a wait without bound); otherwise a dry run. `tag`, when not None, stands in the
// ring before the line goes out; without a line there is no tag. Result: 1 sent (or would be), 0
// nothing changed or not connected, 100 refused by the surface check. [host], [jog]
std::uint32_t EmitMove(DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                       const std::int32_t* z, std::uint8_t send,
                       CommandTag tag = CommandTag::None) noexcept;

// The feed of the lines that follow, from inches per second; sends "G0 F" only when its text
// changes. Without a connection: nothing. [host], [jog]
void SetFeedRate(DeviceState& record, float inchesPerSecond) noexcept;

// The controller's maximum speeds, from inches per second: one "M203" line. [host]
void SetMaxSpeeds(DeviceState& record, float x, float y, float z) noexcept;

}  // namespace k7
