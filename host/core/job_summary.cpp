#include "core/job_summary.h"

#include <cmath>

namespace k7host {

double CutInches(const JobPlan& plan, const Table& table, std::uint32_t from, std::uint32_t to) {
  const auto count = static_cast<std::uint32_t>(plan.moves.size());
  double inches = 0.0;
  for (std::uint32_t i = from; i < to; ++i) {
    const Move& move = plan.moves[i % count];
    // A pass starts with a travel, so that a cut always has a move before it.
    if (move.kind != MoveKind::Cut) continue;
    const Move& before = plan.moves[i % count - 1];
    const auto distance = [](std::uint32_t a, std::uint32_t b, double stepsPerInch) {
      return (static_cast<double>(a) - static_cast<double>(b)) / stepsPerInch;
    };
    inches += std::hypot(distance(move.xSteps, before.xSteps, table.xStepsPerInch),
                         distance(move.ySteps, before.ySteps, table.yStepsPerInch));
  }
  return inches;
}

std::optional<std::string> DepthOfStatus(std::string_view status) {
  const std::size_t at = status.find(" - ");
  if (at == status.npos) return std::nullopt;
  std::string_view depth = status.substr(at + 3);
  depth = depth.substr(0, depth.find(" - "));
  if (depth.empty() || depth.find_first_not_of("0123456789.") != depth.npos) return std::nullopt;
  return std::string(depth);
}

std::string AirCutText(const Depths& depths, double depthInches) {
  constexpr double kRoundingInches = 0.0015;
  if (!(depths.stepsPerInch > 0.0)) return "";
  const double deepest = depths.deepestSteps / depths.stepsPerInch;
  const double below = (depths.surfaceSteps - depths.deepestSteps) / depths.stepsPerInch;
  if (deepest > depthInches + kRoundingInches || below <= 0.0) return "";
  return "nothing was cut, unless the work lies at Z 0: the surface set is " + InchesText(below) +
         " in below the deepest stroke; set the cutter home (Set Cutter... in k7host settings)";
}

}  // namespace k7host
