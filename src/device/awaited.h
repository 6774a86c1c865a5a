// What the driver waits for, as a trace says it of a wait that takes long.
#pragma once

#include "base/trace.h"

namespace k7::awaited {

inline constexpr Awaited kController{"the controller", "a line from it"};
inline constexpr Awaited kRoom{"room among the moves that have not begun", "BX for one of them"};
inline constexpr Awaited kNoMoves{"every move to be carried out", "EX for each of them"};
inline constexpr Awaited kJobBegun{"the job to begin", "the answer that block messages are on"};
inline constexpr Awaited kJobEnded{"the job to end", "the answer that block messages are off"};
inline constexpr Awaited kTool{"the tool at the end of a plunge or lift", "EX for that move"};
inline constexpr Awaited kSwitchReached{"an axis at its switch", "X_Limit, Y_Limit or Z_Limit"};
inline constexpr Awaited kSwitches{"the state of the switches", "a line with min_x:"};
inline constexpr Awaited kTouch{"the probe to touch", "Z_Probe"};
inline constexpr Awaited kReader{"the reader to start or end",
                                 "the return of what it tells the host"};
inline constexpr Awaited kWorker{"a jog or ramp to end", "the return of what it tells the host"};
inline constexpr Awaited kEngraveDelay{"the engrave delay", "its time"};
inline constexpr Awaited kUser{"the user", "a button of the message box"};

}  // namespace k7::awaited
