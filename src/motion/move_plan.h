// Which line for which change: what a request for axes amounts to, decided without sending
// anything.
#pragma once

#include <cstdint>
#include <optional>

#include "base/number_text.h"
#include "device/device_state.h"
#include "link/commands.h"

namespace k7 {

// Machine positions in steps; an axis without one is left where it is.
struct AxisTargets {
  std::optional<std::int32_t> x{}, y{}, z{};
};

// One position as a line carries it.
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
  LineText line{};                               // empty unless `changed`
};

// Plans one "G0" line from the record's steps per millimetre and last positions. With a surface
// violation the plan ends there: lastX and lastY hold the refused target, lastZ and the line are
// not to be used. [any]
MovePlan PlanMove(const DeviceState& record, const AxisTargets& targets) noexcept;

// The "G92" line that declares the machine to stand there, each axis in millimetres with 6 decimals
// by the steps per millimetre last sent. An axis whose position cannot be expressed (no steps per
// millimetre yet) is left out; with none left the line is empty. [any]
LineText PositionLine(const PerAxis<float>& stepsPerMm, const AxisTargets& targets) noexcept;

}  // namespace k7
