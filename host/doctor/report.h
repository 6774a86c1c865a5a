// What the doctor has found, a line for each check.
#pragma once

#include <string>
#include <vector>

namespace k7host {

enum class Level { Ok, Warn, Fail };

// What a finding is about: the exit code tells settings from the rest.
enum class About { Computer, Port, Controller, Settings };

struct Finding {
  Level level = Level::Ok;
  About about = About::Computer;
  std::string check;  // "port COM7"
  std::string text;   // what was found
  std::string todo;   // what to do about it; empty where there is nothing to do
};

// "warn  port COM5: opened only after 4200 ms -> take it away: it slows each search". [any]
std::string FindingLine(const Finding& finding);

// 0 when every finding is ok, 2 when one of the settings has failed, else 1. [any]
int ExitCodeOf(const std::vector<Finding>& findings);

// "12 ok, 1 warning, 0 failures". [any]
std::string SummaryText(const std::vector<Finding>& findings);

// {"exitCode": 1, "worst": "warn", "checks": [{"level": "ok", ...}, ...]} and a line end. [any]
std::string ReportJson(const std::vector<Finding>& findings);

}  // namespace k7host
