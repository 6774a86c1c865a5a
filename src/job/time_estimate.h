// How long a drawing will take.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 119: whole seconds that the machine takes for a drawing of `count` triples (x, y, kind) in
// host steps; kind 1: travel to the point, kind 2: cut to it, others are passed over. 0 for null
// and when the axes' resolutions differ by a part in a thousand. A result beyond 31 bits saturates.
// [any]
//
// Runs. The path starts at the table home. Lengths add up to a run as long as kind and direction
// hold, and each finished run costs RunSeconds, which starts and ends at a standstill. The machine
// rounds corners: a right angle is taken slowly, a gentle bend at full speed. So what each corner
// really costs is added up, by the speed at which the planner of the controller takes it, and a
// corner counts as a change of direction, ending the run, when that has grown to the cost of a
// standstill.
//
// Counted besides: from the first stroke's end on, each lift and each plunge between strokes (full
// way from lift to depth at the cutter's own speeds, less what is saved by rounding its corners). A
// cut without length is a dot: the cutter goes down and up.
//
// Not counted: what happens while the machine stands (engrave delay, spindle, probing, the start of
// the queue), the first plunge, from a height that is not known, the last lift, further passes, and
// the grid speed (the engraving speed stands for it). KEEP: a run that is still open when the array
// ends costs the engraving speed, also when it is a travel.
std::uint32_t EstimateJobTime(const DeviceState& record, const std::uint32_t* triples,
                              std::uint32_t count) noexcept;

// Length in steps of a straight piece of (dx, dy) steps. KEEP: one factor of the first square is
// truncated; whole steps do not notice. [any]
float RunLength(float dx, float dy) noexcept;

// Seconds for a run of `lengthSteps` from standstill to standstill at up to `inchesPerSecond`, the
// acceleration being 0.5 m/s^2; 0.05 mm and half a step are taken off the length. [any]
float RunSeconds(float lengthSteps, float stepsPerInch, float inchesPerSecond) noexcept;

}  // namespace k7
