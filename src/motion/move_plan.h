// Planning a move: which axes change, the line that says so, and the position after it. Nothing is
// sent here.
#pragma once

#include <cstdint>
#include <optional>

#include "base/number_text.h"
#include "device/device_state.h"
#include "link/commands.h"

namespace k7 {

// Where to go, in machine steps; an axis without a number stays where it is.
struct AxisTargets {
  std::optional<std::int32_t> x{}, y{}, z{};
};

// One position as a line carries it.
struct AxisTarget {
  bool expressible;    // false: no finite number of millimetres, so the axis is not sent
  NumberText text;     // millimetres with 6 decimals
  std::int32_t steps;  // machine steps that the text stands for; these count as reached
};

// Machine steps as millimetre text, and the steps that this text stands for. [any]
AxisTarget ExpressPosition(std::int32_t steps, float stepsPerMm) noexcept;

struct MovePlan {
  bool changed = false;                          // an axis would move; `line` is not empty
  bool violatesSurface = false;                  // the cutter would go below the table surface
  NumberText excessInches{};                     // how far below, 3 decimals
  std::int32_t lastX = 0, lastY = 0, lastZ = 0;  // last positions once the line has been sent
  LineText line{};                               // empty unless `changed`
};

// Plans one "G0" line from the record's steps per millimetre and position. With a surface
// violation lastX and lastY hold the refused target; lastZ and the line are not to be used. [any]
MovePlan PlanMove(const DeviceState& record, const AxisTargets& targets) noexcept;

// The "G92" line that declares the position to be `targets`, each axis in millimetres with 6
// decimals by the steps per millimetre last sent. An axis that cannot be expressed (no steps per
// millimetre yet) is left out; with no axis left the line is empty. [any]
LineText PositionLine(const PerAxis<float>& stepsPerMm, const AxisTargets& targets) noexcept;

}  // namespace k7
