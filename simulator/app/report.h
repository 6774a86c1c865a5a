// What happened, as JSON, for tests and for the curious.
#pragma once

#include <string>

#include "app/simulator.h"

namespace k7sim {

// Lengths in inches, times in machine seconds. Settles the times of a job that is still open.
std::string WriteReport(Simulator& simulator);

}  // namespace k7sim
