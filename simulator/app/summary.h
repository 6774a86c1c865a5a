// What the user is told when the simulator ends.
#pragma once

#include <string>

#include "app/simulator.h"

namespace k7sim {

// Three lines: what was cut and what went wrong, how much was done, how the machine was left.
std::string Summary(const Simulator& simulator);

}  // namespace k7sim
