// How long a whole job will take, by the driver's own estimate of a drawing.
#pragma once

#include <cstdint>
#include <vector>

#include "core/job_plan.h"
#include "k7/driver.h"

namespace k7host {

// One pass as EstimateJobTime takes it: triples (x, y, kind), kind 1 for travel, 2 for cut; a dot
// is a cut to where the travel before it ends. [any]
std::vector<std::uint32_t> EstimateTriples(const JobPlan& plan);

// Seconds for all passes and the travel back to the table home, without lifts, plunges and delays,
// which the driver does not estimate; 0 when it gives no estimate. Sends nothing to the machine.
// [host]
std::uint32_t EstimateJob(k7::IEngraver& device, const JobPlan& plan, std::uint32_t passes);

}  // namespace k7host
