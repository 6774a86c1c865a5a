// What the settings dialog computes: the resolution list and the spindle's bound.
#pragma once

#include <cstdint>

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

}  // namespace k7
