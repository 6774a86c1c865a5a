// Multi-pass runs.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 86: begins pass `pass` (1-based) of a run whose first point is (hostX, hostY). Waits,
// without bound, until every move of the pass before has been carried out; then takes that pass's
// depth. A cutter that is down and stands on the first point already is plunged to the new depth;
// anywhere else the strokes themselves plunge. The status line goes into `status` of `size`
// characters (null allowed). Always 0; without a connection nothing happens. A number outside the
// pass table keeps the depth. [host]
std::uint32_t StartPass(DeviceState& record, std::uint32_t pass, std::uint32_t hostX,
                        std::uint32_t hostY, wchar_t* status, std::int32_t size) noexcept;

}  // namespace k7
