// How far the controller is with what it has been sent, and waiting for it.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "device/polling.h"

namespace k7 {

// Each of these is 0 while no link is attached. [any]
std::int32_t LinesInFlight(const JobState& job) noexcept;
std::int32_t BlocksRunning(const JobState& job) noexcept;
std::uint8_t JobOpen(const JobState& job) noexcept;

// Connected and no job open. [any]
bool IsIdle(const DeviceState& record) noexcept;
// A line has not begun, or a begun one has not ended. [any]
bool MovesRemain(const JobState& job) noexcept;
// Waits, without bound, until `done()`: for what only the reader can bring. A lost link ends it,
// with both counts 0, and a worker that is asked to stop does not go on with it. `what` is for the
// trace. False: it ended without `done()`. [any]
template <typename Done>
bool AwaitReader(LinkState& link, JobState& job, Done done,
                 const Awaited& what = awaited::kController) noexcept;

// Waits until the controller has taken so many lines that fewer than `lines` are in flight, and
// until it has carried out every move. Without bound in a job; outside one, where a controller need
// not report anything, until nothing has been reported for 2 s, with both counts 0 then. Ends as
// AwaitReader does. [any]
void AwaitFewerInFlight(LinkState& link, JobState& job, std::int32_t lines) noexcept;
void AwaitNoMoves(LinkState& link, JobState& job) noexcept;
// Sets both counts to 0: nothing will be reported of what they still count. [any]
void ForgetMoves(JobState& job) noexcept;
// Clears both liveness ticks, also while no link is attached, so that the next liveness check
// starts afresh after a call that kept the host's thread for long. [any]
void ClearAliveTicks(LinkState& link) noexcept;

template <typename Done>
bool AwaitReader(LinkState& link, JobState& job, Done done, const Awaited& what) noexcept {
  if (WaitForReader(link, done, what)) return true;
  if (link.lost != 0) ForgetMoves(job);
  return false;
}

}  // namespace k7
