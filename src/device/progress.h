// How far the controller is with what it has been sent, and waiting for it.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Each of these is 0 while no link is attached. [any]
std::int32_t LinesInFlight(const JobState& job) noexcept;
std::int32_t BlocksRunning(const JobState& job) noexcept;
std::uint8_t JobOpen(const JobState& job) noexcept;

// Connected and no job open. [any]
bool IsIdle(const DeviceState& record) noexcept;
// A line has not begun, or a begun one has not ended. [any]
bool MovesRemain(const JobState& job) noexcept;
// Spins, without bound, until fewer than `lines` are in flight; a link that is detached ends the
// wait. So does the end of the job: outside one the controller reports no block, and what was sent
// counts until the next job begins. [any]
void WaitForFewerInFlight(JobState& job, std::int32_t lines) noexcept;
// Sets both counts to 0: nothing will be reported of what they still count. [any]
void ForgetMoves(JobState& job) noexcept;
// Clears both liveness ticks, also while no link is attached, so that the next liveness check
// starts afresh after a call that kept the host's thread for long. [any]
void ClearAliveTicks(LinkState& link) noexcept;

}  // namespace k7
