// What the settings dialog computes: the resolution list, the spindle's bound, the axis swap of a
// changed round fixture.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Entries of the resolution list at most.
inline constexpr int kMaxResolutions = 10000;

// Steps per inch of entry `index` (from 0): the finest resolution divided by 1, 2, 3 and so on.
float ResolutionOfEntry(float finest, int index) noexcept;
// Whether the list has an entry `index`: the first always, further ones while above 199.
bool HasResolutionEntry(float finest, int index) noexcept;

// Motor speed times gear ratio, rounded half up in single precision, saturating. [any]
std::int32_t SpindleRpmLimit(std::int32_t motorRpm, float gearRatio) noexcept;
// A stored spindle speed as the dialog shows it: at most `limit`, and at least 1. [any]
std::int32_t ShownSpindleRpm(std::int32_t stored, std::int32_t limit) noexcept;

// Moves the three axis positions for a change of the round fixture from the record's roundAxisMode
// to `newMode`: the fixture's position goes to the axis that it replaces. The mode itself is left
// to the next settings load, so that KEEP: a second save before it swaps back. [host]
void SwapAxisPositions(DeviceState& record, std::uint32_t newMode) noexcept;

}  // namespace k7
