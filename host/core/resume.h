// What is kept of a job that ended early, so that another run goes on with it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/job_plan.h"

namespace k7host {

struct ResumePoint {
  std::vector<std::string> words;  // the command line, without the program's name
  std::string folder;              // in which its file names hold
  std::string controller;          // identity
  std::uint32_t strokesDone = 0;   // strokes and dots of all passes, in the order of the job
  std::uint32_t strokesTotal = 0;
  std::string plan;  // PlanMark of the drawing on that machine
};

// A text of lines "name: value", for people to read and for ReadResume. [any]
std::string ResumeText(const ResumePoint& point);

// Nothing when the text is no such text. [any]
std::optional<ResumePoint> ReadResume(std::string_view text);

// Sixteen hexadecimal digits that differ when any move of the plan does. [any]
std::string PlanMark(const JobPlan& plan);

}  // namespace k7host
