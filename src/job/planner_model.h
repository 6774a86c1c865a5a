// A model of the controller's planner: the speed through a corner, the time along a piece.
#pragma once

#include "base/arithmetic.h"

namespace k7::planner {

// The machine's acceleration of 0.5 m/s^2, and the 0.05 mm by which it may round a corner.
inline constexpr float kAccelerationInches = 19.68504f;                // in/s^2
inline constexpr float kJunctionDeviationInches = 0.05f / kMmPerInch;  // in

// Highest speed, in/s, through a corner between two pieces whose directions have this cosine
// between them: 1 straight on, 0 a right angle, -1 straight back. Infinite straight on. [any]
float CornerSpeed(float cosine) noexcept;

// Highest speed at the end of a piece entered at `entry` in/s. [any]
float Reachable(float entry, float inches) noexcept;

// Seconds along a piece entered at `entry` and left at `exit`, no faster than `top` in between. 0
// without a top speed. [any]
float PieceSeconds(float inches, float entry, float top, float exit) noexcept;

}  // namespace k7::planner
