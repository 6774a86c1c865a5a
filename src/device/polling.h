// How the driver waits, and its clock.
//
// A wait that a host call can sit in lets messages *sent* to the waiting thread's windows through
// (the reader notifies by SendMessageW, and the host's window may live on this very thread); posted
// messages stay where they are. On a thread without windows this costs nothing.
#pragma once

#include <cstdint>

#include "base/polled.h"

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

}  // namespace k7
