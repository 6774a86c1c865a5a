// The four stroke operations of a drawing.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Results are kStatus numbers: kStatusSent, kStatusNothing (already there; no connection; no open
// job), kStatusRefused (a lift or plunge below the table surface; nothing further is sent), and
// those named below. Lifts, plunges and moves wait while 32 lines are outstanding. [host]

// Slot 6: travels with the cutter up. The first of a job: kStatusArmed in the semi-automatic,
// kStatusOneShot in the manual mode, once the head stands still there.
std::uint32_t MoveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
// Slot 7: cuts with the cutter down. kStatusProbed: the surface was probed instead, the cutter is
// up.
std::uint32_t EngraveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
// Slots 33 and 34: plunge where the head stands, a raised cutter only. Behind the one probe of the
// semi-automatic mode the first ends with kStatusProbed, the second goes on, with kStatusSent.
std::uint32_t LowerCutter(DeviceState& record) noexcept;
std::uint32_t LowerCutterContinue(DeviceState& record) noexcept;

}  // namespace k7
