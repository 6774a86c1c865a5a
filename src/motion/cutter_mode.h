// What the machine's kind of head and its cutter mode mean for lifts and plunges.
#pragma once

#include "device/device_state.h"

namespace k7 {

// The machine has a pneumatic head (air Z), which knows up and down but no depth. [any]
bool HasPneumaticHead(const Tools& tools) noexcept;

// The cutter mode finds the work surface with the proximity switch. [any]
bool ProbesTheSurface(const Tools& tools) noexcept;

// The cutter dwells at the end of a plunge, so the plunge has to be waited for. [any]
bool HasEngraveDelay(const Tools& tools) noexcept;

}  // namespace k7
