// Finding the work surface and the table surface.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Probes downwards at the present place and declares the touch point to be cutterHome. Waits, in a
// job, until every line has begun, and for the answer, both without bound. Without a connection:
// nothing. [host]
void ProbeSurface(DeviceState& record) noexcept;
// cutterHome -= probeOffset in steps. [host]
void SubtractProbeOffset(DeviceState& record) noexcept;
// Writes cutterHome, in inches, to the settings file. [host]
void WriteCutterHome(const DeviceState& record) noexcept;
// Probes, then lifts the cutter by thousandths of an inch above the surface. Nothing below 1,
// without a connection, in a job. [host]
void ProbeAndLift(DeviceState& record, std::int32_t liftThousandths) noexcept;
// Sets tableSurface by method 0 table depth, 1 present Z, 2 probe, any other the surface as it
// stands; less the buffer. Then lifts the cutter to the top of Z. Nothing without a connection, in
// a job. [host]
void SetTableSurface(DeviceState& record, float bufferInches, std::int32_t method) noexcept;

}  // namespace k7
