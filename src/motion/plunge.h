// Lowering the cutter: what each cutter mode does before a cut.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Lowers the raised cutter to PlungeZ before a cut, by the rule of the cutter mode, waits for the
// dwell and switches the spindle as the engrave type wants it. Result:
// - kStatusSent: the cut can follow, also when Z was there already, and without a connection.
// - kStatusProbed: the semi-automatic mode has probed instead; the new cutter home is in the
//   settings file and the cutter is up.
// - kStatusRefused: the plunge, or the lift after the probe, was refused. [host]
std::uint32_t PlungeForCut(DeviceState& record) noexcept;

// Lowers the raised cutter at the present position because the host has asked for it. When the
// semi-automatic mode has to probe first: with `probeIsAll` the operation ends after the probe with
// kStatusProbed, otherwise the plunge follows and the result is kStatusSent, also when the plunge
// was refused. Without a probe: kStatusSent when the plunge was sent, kStatusNothing when Z was
// there already, kStatusRefused when it was refused. [host]
std::uint32_t PlungeForHost(DeviceState& record, bool probeIsAll) noexcept;

}  // namespace k7
