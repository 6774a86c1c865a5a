// The few values that the whole process shares, whatever number of controllers is connected.
#pragma once

#include <cstdint>

#include "base/polled.h"

namespace k7 {

struct DeviceState;

// A round fixture is configured; written by every settings load and by the dialogs. One for all
// controllers. KEEP: one machine at a time is what the settings files assume.
inline Polled<std::uint8_t> hasRoundAttachment{0};

// A spindle is configured; written by every settings load and by the dialogs.
inline Polled<std::uint8_t> hasSpindle{0};

// Milliseconds that reader threads have spent in dwells.
inline Polled<std::uint32_t> totalDwellMs{0};

// The controller whose dialog is open; null when none. Dialogs run on the host's thread only.
inline DeviceState* dialogDevice = nullptr;

// The host's wish to abandon a job; cleared by every begun job.
inline Polled<std::uint32_t> jobAbortRequest{0};

}  // namespace k7
