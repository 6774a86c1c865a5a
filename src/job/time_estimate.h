// How long a drawing will take.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 119: whole seconds that the head is under way for a drawing of `count` triples (x, y, kind)
// in host steps; kind 1: travel to the point, kind 2: cut to it, others are passed over. 0 for null
// and when the axes' resolutions differ by a part in a thousand. A result beyond 31 bits saturates.
// [any]
//
// The result is the sum of the runs and nothing else. The path starts at the host's origin. Lengths
// add up to a run as long as kind and direction hold, and each finished run costs RunSeconds, which
// starts and ends at a standstill. The machine rounds corners: a right angle is taken slowly, a
// gentle bend at full speed. So what each corner really costs is added up, by the speed at which
// the planner of the controller takes it, and a corner counts as a change of direction, ending the
// run, when that has grown to the cost of a standstill. A lift or a plunge always ends the run; a
// cut without length is a dot and ends it, too.
//
// Not counted: lifts and plunges, what happens while the machine stands (engrave delay, spindle,
// probing, the start of the queue), further passes, and the grid speed (the engraving speed stands
// for it). KEEP: a run that is still open when the array ends costs the engraving speed, also when
// it is a travel.
std::uint32_t EstimateJobTime(const Mechanics& mechanics, const Tools& tools,
                              const std::uint32_t* triples, std::uint32_t count) noexcept;

// Length in steps of a straight piece of (dx, dy) steps. KEEP: one factor of the first square is
// truncated; whole steps do not notice. [any]
float RunLength(float dx, float dy) noexcept;

// Seconds for a run of `lengthSteps` from standstill to standstill at up to `inchesPerSecond`, the
// acceleration being 0.5 m/s^2; 0.05 mm and half a step are taken off the length. [any]
float RunSeconds(float lengthSteps, float stepsPerInch, float inchesPerSecond) noexcept;

}  // namespace k7
