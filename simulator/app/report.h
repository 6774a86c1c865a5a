// The report: what the board received, the machine did and the faults changed, as JSON.
#pragma once

#include <string>

#include "app/simulator.h"

namespace k7sim {

// Lengths are in inches where the key says so, times in machine seconds. A job that is still open
// has its planned time computed for the report.
std::string WriteReport(Simulator& simulator);

}  // namespace k7sim
