// Waiting has one home: every wait of the driver is a line that uses one of these.
//
// A wait that a host call can sit in lets messages *sent* to the waiting thread's windows through
// (the reader notifies by SendMessageW, and the host's window may live on this very thread); posted
// messages stay where they are. On a thread without windows this costs nothing.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "device/record_lock.h"

namespace k7 {

// The millisecond clock: 32 bits, monotonic, wraps. [any]
std::uint32_t TickMs() noexcept;

// Pauses for `ms`, letting sent messages through. [any]
void Pause(std::uint32_t ms) noexcept;

// Lets sent messages through and gives up the rest of the time slice: one round of a spinning
// wait. [any]
void SpinOnce() noexcept;

// The calling thread is a worker (a jog, a ramp) that has been asked to stop: it has nothing more
// to wait for. Never true on the host's or the reader's thread. [any]
bool WorkerAskedToStop() noexcept;
// Makes the calling thread a worker for as long as it lives: `stop` is polled from then on. [any]
void BecomeWorker(const Polled<std::uint8_t>& stop) noexcept;

// Polls `done()` until it is true: without bound, `everyMs` apart, 0 = spinning. On a worker also
// until that is asked to stop: release must not hang on a controller that has fallen silent. [any]
template <typename Done>
void PollUntil(std::uint32_t everyMs, Done done) noexcept {
  while (!done() && !WorkerAskedToStop()) {
    if (everyMs == 0) {
      SpinOnce();
    } else {
      Pause(everyMs);
    }
  }
}

// Reads a guarded value: `read()` under the mutex, `otherwise` when the mutex could not be taken.
template <RecordMutex kWhich, typename T, typename Read>
T ReadLocked(const DeviceState& record, T otherwise, Read read) noexcept {
  const RecordLock<kWhich> lock{record};
  return lock ? static_cast<T>(read()) : otherwise;
}

// linesInFlight under flightMutex; 0 when the mutex cannot be taken. [any]
std::int32_t LinesInFlight(const DeviceState& record) noexcept;
// blocksRunning under runMutex; 0 when the mutex cannot be taken. [any]
std::int32_t BlocksRunning(const DeviceState& record) noexcept;
// jobOpen under jobMutex; 0 when the mutex cannot be taken. [any]
std::uint8_t JobOpen(const DeviceState& record) noexcept;
// Connected and no job open. [any]
bool IsIdle(const DeviceState& record) noexcept;
// A line has not begun, or a begun one has not ended. A mutex that cannot be taken says no. [any]
bool MovesRemain(const DeviceState& record) noexcept;
// Spins, without bound, until fewer than `lines` are in flight; a mutex that cannot be taken, or
// that its holder abandoned, ends the wait. So does the end of the job: outside one the controller
// reports no block, and what was sent counts until the next job begins. [any]
void WaitForFewerInFlight(const DeviceState& record, std::int32_t lines) noexcept;
// Sets both counts to 0: nothing will be reported of what they still count. [any]
void ForgetMoves(DeviceState& record) noexcept;
// Clears both liveness ticks (under aliveMutex; also when it cannot be taken), so that the next
// liveness check starts afresh after a call that kept the host's thread for long. [any]
void ClearAliveTicks(DeviceState& record) noexcept;

}  // namespace k7
