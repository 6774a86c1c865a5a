// Planning a jog: its axis, the length of a step, the feed, and the limits.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

struct JogPlan {
  bool possible = false;  // false: unknown direction, or Z of a pneumatic head
  Axis axis = Axis::X;
  std::int32_t stepSteps = 0;  // machine steps, signed
  float feedInchesPerSecond = 0.0f;
  std::int32_t maxOutstanding = 0;  // lines that may be in flight
  bool limited = false;             // false for Z and for an axis that the round fixture replaces
  std::int32_t highestSteps = 0;    // the lowest position is 0
};

// The plan of the jog that the record asks for (jogDirection, jogSpeedMode). [any]
JogPlan PlanJog(const DeviceState& record) noexcept;

// Whether the jog may go to this machine position. [any]
bool JogMayReach(const JogPlan& plan, std::int32_t position) noexcept;

}  // namespace k7
