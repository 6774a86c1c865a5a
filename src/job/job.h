// The begin and the end of a job.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Slot 4: block messages and the job's output on; waits without bound until the controller
// confirms. False when the probe of a mode that probes is touched already: the cutter has been
// lifted, the user told, and nothing begun. True without a connection. [host], [jog]
bool BeginJob(DeviceState& record) noexcept;
// Slot 9: waits until every move has been carried out, then switches both off. Without bound, but
// for the pneumatic head: what is not reported 5 s and the engrave delay later is forgotten.
// Without a connection: nothing. [host], [jog]
void EndJob(DeviceState& record) noexcept;

}  // namespace k7
