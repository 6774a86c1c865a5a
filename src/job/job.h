// The begin and the end of a job.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Slot 4: switches the job output and the block messages on and waits, without bound, until the
// controller confirms. False when a cutter mode that probes finds the proximity switch closed
// already: the cutter has been lifted, the user told, and no job has begun. True without a
// connection. [host], [jog]
bool BeginJob(DeviceState& record) noexcept;
// Slot 9: waits until every move has been carried out, then switches both off. The wait has no
// bound, except with a pneumatic head: moves that have not been reported after 5 s and the engrave
// delay are no longer counted. Without a connection: nothing. [host], [jog]
void EndJob(DeviceState& record) noexcept;

}  // namespace k7
