// Multi-pass runs.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 86: begins pass `pass` (1-based) of a run whose first point is (hostX, hostY). Waits,
// without bound, until every move of the pass before has been carried out; then takes the depth of
// pass `pass` from the pass table (a number outside the table keeps the depth). When the cutter is
// down and already at the first point, it is plunged to the new depth here; otherwise the first
// stroke plunges it. Writes the status line into `status` of `size` characters (null allowed).
// Always 0; without a connection nothing happens. [host]
std::uint32_t StartPass(DeviceState& record, std::uint32_t pass, std::uint32_t hostX,
                        std::uint32_t hostY, wchar_t* status, std::int32_t size) noexcept;

}  // namespace k7
