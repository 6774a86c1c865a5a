// The four stroke operations of a drawing: travel, cut, and two that lower the cutter.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Results are kStatus numbers: kStatusSent; kStatusNothing (already there, no connection, no open
// job); kStatusRefused (a lift or plunge would go below the table surface, and nothing further is
// sent); and those named at each operation. Lifts, plunges and moves wait while 32 lines are
// outstanding. [host]

// Slot 6: travels with the cutter up. The first travel of a job waits until the head stands still
// in two modes: the semi-automatic one answers kStatusArmed, the manual one kStatusOneShot.
std::uint32_t MoveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
// Slot 7: cuts with the cutter down. kStatusProbed: the surface was probed instead, the cutter is
// up.
std::uint32_t EngraveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
// Slot 33: plunges at the present position when the cutter is up. Where the semi-automatic mode
// probes first, it ends there with kStatusProbed.
std::uint32_t LowerCutter(DeviceState& record) noexcept;
// Slot 34: the same, but after such a probe it continues with the plunge and answers kStatusSent.
std::uint32_t LowerCutterContinue(DeviceState& record) noexcept;

}  // namespace k7
