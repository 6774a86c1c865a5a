// The estimated run time of a drawing.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 119: whole seconds that the head moves for a drawing of `count` triples (x, y, kind) in host
// steps; kind 1: travel to the point, kind 2: cut to it, others are passed over. 0 for null and
// when the resolutions of X and Y differ by a part in a thousand or more. A result beyond 31 bits
// saturates. [any]
//
// The path starts at the host's origin. Its pieces are added up to runs, and the result is the sum
// of RunSeconds over the runs; each starts and ends at a standstill. A lift or a plunge ends a run,
// and so does a cut without length, which is a dot. Corners do not end a run by themselves, because
// the controller takes a gentle bend at full speed and a right angle slowly. The time that the
// corners cost by the planner's rule (planner_model.h) is added up instead, and the run ends at the
// corner where that time has grown to the cost of a standstill.
//
// Not counted: lifts and plunges, the time in which the machine stands (engrave delay, spindle,
// probing, the start of the queue), further passes, and the grid speed (the engraving speed is used
// in its place). KEEP: a run that is still open when the array ends is counted at the engraving
// speed, also when it is a travel.
std::uint32_t EstimateJobTime(const Mechanics& mechanics, const Tools& tools,
                              const std::uint32_t* triples, std::uint32_t count) noexcept;

// Length in steps of a straight piece of (dx, dy) steps. KEEP: one factor of the first square is
// truncated, which makes no difference for whole steps. [any]
float RunLength(float dx, float dy) noexcept;

// Seconds for a run of `lengthSteps` from standstill to standstill at up to `inchesPerSecond`, the
// acceleration being 0.5 m/s^2; 0.05 mm and half a step are taken off the length. [any]
float RunSeconds(float lengthSteps, float stepsPerInch, float inchesPerSecond) noexcept;

}  // namespace k7
