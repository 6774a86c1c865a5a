// Taking the cutter down: what the cutter modes do before a cut.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// A plunge wants to be waited for when something happens at its end: a dwell.
bool HasEngraveDelay(const DeviceState& record) noexcept;

// Lowers the raised cutter to PlungeZ before a cut, as the cutter mode has it, waits for the dwell
// and switches the spindle as the engrave type wants it. Result: kStatusSent when the cut can
// follow (also when Z was there already), kStatusProbed when the semi-automatic mode probed instead
// (the new cutter home is in the settings file, the cutter is up), kStatusRefused when plunge or
// lift were refused. Without a connection: kStatusSent. [host]
std::uint32_t PlungeForCut(DeviceState& record) noexcept;

// Lowers the raised cutter for the host at the present place. With `probeIsAll` a probe of the
// semi-automatic mode ends the operation with kStatusProbed; otherwise the plunge follows it and
// the result is kStatusSent, also when that was refused. Else kStatusSent when the plunge was sent,
// kStatusNothing when Z was there already, kStatusRefused when it was refused. [host]
std::uint32_t PlungeForHost(DeviceState& record, bool probeIsAll) noexcept;

}  // namespace k7
