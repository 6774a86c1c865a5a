// Finding the work surface and the table surface.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Probes downwards at the present position and declares the touch point to be the cutter home.
// Waits without bound, in a job until every line has begun, and always for the answer. Without a
// connection: nothing. [host]
void ProbeSurface(DeviceState& record) noexcept;
// Takes the probe offset off the cutter home: the probe touches before the cutter would. [host]
void SubtractProbeOffset(DeviceState& record) noexcept;
// Writes the cutter home, in inches, to the settings file. [host]
void KeepCutterHome(const DeviceState& record) noexcept;
// Probes, then lifts the cutter by thousandths of an inch above the surface. Nothing below 1,
// without a connection or in a job. [host]
void ProbeAndLift(DeviceState& record, std::int32_t liftThousandths) noexcept;
// Sets the table surface: by method 0 from the table depth, by 1 from the present Z, by 2 from a
// probe; any other method starts from the surface as it is. Then takes the buffer off it, keeps it
// in the settings file and lifts the cutter to the top of Z. Nothing without a connection or in a
// job. [host]
void SetTableSurface(DeviceState& record, float bufferInches, std::int32_t method) noexcept;

}  // namespace k7
