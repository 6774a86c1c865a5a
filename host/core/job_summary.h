// What a job has done, for the user to read at its end.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/job_plan.h"

namespace k7host {

// Inches along the cuts among the job's moves `from` (0: the first) to `to`, counted through all
// passes; `to` is not among them. [any]
double CutInches(const JobPlan& plan, const Table& table, std::uint32_t from, std::uint32_t to);

// The depth in a pass's status text, "Pass 2 of 4 - 0.038 - GRID": "0.038". Nothing where there is
// none, as with a pneumatic head. [any]
std::optional<std::string> DepthOfStatus(std::string_view status);

// What the driver reports of Z while the cutter is down, machine steps.
struct Depths {
  std::int32_t deepestSteps = 0;  // where the cutter has been
  std::int32_t surfaceSteps = 0;  // the deepest that it may go
  double stepsPerInch = 0.0;
};

// A warning for a job whose strokes went no deeper below Z 0 than `depthInches`, the depth that the
// settings give below the cutter home: the cutter home was never set, and they were made in the
// air. Empty when there is nothing to warn of. [any]
std::string AirCutText(const Depths& depths, double depthInches);

}  // namespace k7host
