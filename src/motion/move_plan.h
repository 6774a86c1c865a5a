// Which line for which change: what a move request amounts to, decided without sending anything.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "motion/number_text.h"

namespace k7 {

// One position as a move line carries it.
struct AxisTarget {
  bool expressible;    // false: the steps per millimetre give no number for it; nothing is sent
  NumberText text;     // millimetres with 6 decimals
  std::int32_t steps;  // machine steps that the text stands for: what counts as reached
};

// Machine steps as millimetre text, and the steps that this text stands for. [any]
AxisTarget ExpressPosition(std::int32_t steps, float stepsPerMm) noexcept;

struct MovePlan {
  bool changed = false;                          // an axis would move: `line` has something to say
  bool violatesSurface = false;                  // the cutter would go below the table surface
  NumberText excessInches{};                     // how far below, 3 decimals
  std::int32_t lastX = 0, lastY = 0, lastZ = 0;  // last positions once the line has been sent
  char line[192] = "";                           // the whole line, its line feed included
};

// Plans one "G0" line from the record's steps per millimetre and last positions to up to three
// machine positions in steps (null: leave the axis). With a surface violation the plan ends there:
// lastX and lastY hold the refused target, lastZ and the line are not to be used. [any]
MovePlan PlanMove(const DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                  const std::int32_t* z) noexcept;

}  // namespace k7
