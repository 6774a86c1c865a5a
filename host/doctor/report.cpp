#include "doctor/report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace k7host {
namespace {

constexpr int kAllOk = 0;
constexpr int kSomething = 1;
constexpr int kSettings = 2;

const char* NameOf(Level level) {
  switch (level) {
    case Level::Warn:
      return "warn";
    case Level::Fail:
      return "fail";
    case Level::Ok:
      break;
  }
  return "ok";
}

const char* NameOf(About about) {
  switch (about) {
    case About::Port:
      return "port";
    case About::Controller:
      return "controller";
    case About::Settings:
      return "settings";
    case About::Computer:
      break;
  }
  return "computer";
}

auto Count(const std::vector<Finding>& findings, Level level) {
  return std::count_if(findings.begin(), findings.end(),
                       [&](const Finding& finding) { return finding.level == level; });
}

Level Worst(const std::vector<Finding>& findings) {
  Level worst = Level::Ok;
  for (const Finding& finding : findings) worst = std::max(worst, finding.level);
  return worst;
}

}  // namespace

std::string FindingLine(const Finding& finding) {
  std::string line = NameOf(finding.level);
  line.resize(6, ' ');
  line += finding.check + ": " + finding.text;
  if (!finding.todo.empty()) line += " -> " + finding.todo;
  return line;
}

int ExitCodeOf(const std::vector<Finding>& findings) {
  if (std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.level == Level::Fail && finding.about == About::Settings;
      })) {
    return kSettings;
  }
  return Worst(findings) == Level::Ok ? kAllOk : kSomething;
}

std::string SummaryText(const std::vector<Finding>& findings) {
  const auto warnings = Count(findings, Level::Warn);
  const auto failures = Count(findings, Level::Fail);
  return std::to_string(Count(findings, Level::Ok)) + " ok, " + std::to_string(warnings) +
         (warnings == 1 ? " warning, " : " warnings, ") + std::to_string(failures) +
         (failures == 1 ? " failure" : " failures");
}

std::string ReportJson(const std::vector<Finding>& findings) {
  using Json = nlohmann::ordered_json;
  Json checks = Json::array();
  for (const Finding& finding : findings) {
    checks.push_back({{"level", NameOf(finding.level)},
                      {"about", NameOf(finding.about)},
                      {"check", finding.check},
                      {"text", finding.text},
                      {"todo", finding.todo}});
  }
  const Json report = {
      {"exitCode", ExitCodeOf(findings)}, {"worst", NameOf(Worst(findings))}, {"checks", checks}};
  return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace k7host
