// The outline of a job, driven before it with the cutter up.
#pragma once

#include "core/job_plan.h"
#include "core/job_runner.h"
#include "k7/driver.h"

namespace k7host {

struct FrameResult {
  JobEnd end = JobEnd::Done;
  // The driver has taken this for the first travel of the job and now waits for the user to set the
  // cutter by hand, for which the head stands over the first point of the job.
  bool manualCutter = false;
};

// Travels once around the extent of the plan and on to its first point, as a job of its own in
// which nothing is lowered. [host]
FrameResult DriveFrame(k7::IEngraver& device, const JobPlan& plan, JobObserver& observer);

}  // namespace k7host
