// A picture of a job before it is run: the table, every travel and cut, their order and the extent.
#pragma once

#include <string>

#include "core/job_plan.h"
#include "core/scaling.h"

namespace k7host {

// As SVG, in hundredths of an inch: travels thin and grey, cuts from blue (first) to red (last),
// dots as rings, the extent dashed, and the numbers of the first 300 strokes where they begin.
// [any]
std::string PreviewSvg(const JobPlan& plan, const Table& table);

// As PNG, the longer side of the table 2000 pixels; empty in a build without stb. [any]
std::string PreviewPng(const JobPlan& plan, const Table& table);

}  // namespace k7host
