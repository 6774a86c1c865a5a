// How long a whole job will take, by the driver's own estimate of a drawing.
#pragma once

#include <cstdint>
#include <vector>

#include "core/job_plan.h"
#include "core/motion_time.h"
#include "k7/driver.h"

namespace k7host {

// One pass as EstimateJobTime takes it: triples (x, y, kind), kind 1 for travel, 2 for cut; a dot
// is a cut to where the travel before it ends. [any]
std::vector<std::uint32_t> EstimateTriples(const JobPlan& plan);

// Seconds for all passes and the travel back to the table home, without lifts, plunges and delays,
// which the driver does not estimate; 0 when it gives no estimate. Sends nothing to the machine.
// [host]
std::uint32_t EstimateJob(k7::IEngraver& device, const JobPlan& plan, std::uint32_t passes);

// The driver's figure, and with it what the host knows besides.
struct WholeEstimate {
  std::uint32_t runs = 0;  // s, the driver's; 0: the driver gives none
  std::uint32_t all = 0;   // s, with lifts, plunges, dwells and the spindle
  std::uint32_t dwells = 0;
  std::uint32_t spindle = 0;
};

// Adds to the driver's figure for the runs the time that the settings give for the rest. Where the
// driver's figure, which is in whole seconds for each pass, is that of the same runs by the host's
// own count, the finer count is taken. [any]
WholeEstimate AddLiftsAndDwells(std::uint32_t driverSeconds, const JobPlan& plan,
                                const Table& table, const JobSpeeds& speeds, std::uint32_t passes,
                                bool gridRun, const HeadPlace& start);

}  // namespace k7host
