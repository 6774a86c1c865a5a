#include "core/machine_check.h"

#include <cmath>

namespace k7host {
namespace {

constexpr double kMostStepsPerInch = 1e7;
constexpr double kMostNumber = 1e9;

std::string ResolutionProblem(const char* axis, double stepsPerInch) {
  if (std::isfinite(stepsPerInch) && stepsPerInch > 0.0 && stepsPerInch <= kMostStepsPerInch) {
    return "";
  }
  return std::string("no resolution on ") + axis + ": in section [Axis " + axis +
         "] \"Motor Steps\", \"Micro Steps\" and \"Screw Pitch\" must be above 0, the pitch as its "
         "float bits";
}

std::string SizeProblem(const char* key, std::uint32_t steps) {
  // A size below zero comes as a huge number.
  if (steps > 0 && steps < 0x80000000u) return "";
  return std::string("no table: in section [Table Size] \"") + key +
         "\" must be above 0, in thousandths of an inch";
}

}  // namespace

std::string TableProblem(const Table& table) {
  for (const std::string& problem :
       {ResolutionProblem("X", table.xStepsPerInch), ResolutionProblem("Y", table.yStepsPerInch),
        SizeProblem("Width", table.widthSteps), SizeProblem("Height", table.heightSteps)}) {
    if (!problem.empty()) return problem;
  }
  return "";
}

std::string SaneText(double number) {
  return std::isfinite(number) && std::abs(number) <= kMostNumber ? InchesText(number) : "unknown";
}

}  // namespace k7host
