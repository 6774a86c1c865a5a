// The reader thread: receives the controller's bytes and carries out what its lines mean.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Starts the reader of an attached record; returns once it has announced itself in readerAlive, or
// could not be started. It runs while readerRun is 1. [host]
void StartReader(DeviceState& record) noexcept;

// Waits until the thread of a reader that has been asked to stop is gone; without bound, but
// letting sent messages through: it may be telling a window of this very thread. Without one:
// returns at once. [host]
void JoinReader(DeviceState& record) noexcept;

}  // namespace k7
