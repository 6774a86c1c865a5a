// The driver estimates one pass. A job is its passes and the travel back to the table home.
#include "core/job_estimate.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace k7host {
namespace {

constexpr std::uint32_t kTravel = 1;
constexpr std::uint32_t kCut = 2;

std::uint64_t Estimate(k7::IEngraver& device, const std::vector<std::uint32_t>& triples) {
  return device.EstimateJobTime(triples.data(), static_cast<std::uint32_t>(triples.size() / 3));
}

}  // namespace

std::vector<std::uint32_t> EstimateTriples(const JobPlan& plan) {
  std::vector<std::uint32_t> triples;
  triples.reserve(plan.moves.size() * 3 + 3);  // with room for the travel home
  for (const Move& move : plan.moves) {
    triples.insert(triples.end(),
                   {move.xSteps, move.ySteps, move.kind == MoveKind::Travel ? kTravel : kCut});
  }
  return triples;
}

std::uint32_t EstimateJob(k7::IEngraver& device, const JobPlan& plan, std::uint32_t passes) {
  std::vector<std::uint32_t> triples = EstimateTriples(plan);
  std::uint64_t seconds = 0;
  if (passes > 1) seconds = (passes - 1) * Estimate(device, triples);
  triples.insert(triples.end(), {0, 0, kTravel});
  seconds += Estimate(device, triples);
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(seconds, kMost));
}

WholeEstimate AddLiftsAndDwells(std::uint32_t driverSeconds, const JobPlan& plan,
                                const Table& table, const JobSpeeds& speeds, std::uint32_t passes,
                                bool gridRun, const HeadPlace& start) {
  // The driver's count and the host's of the same runs may differ by so much, beside the rounding.
  constexpr double kShare = 0.02;
  WholeEstimate estimate;
  estimate.runs = driverSeconds;
  if (driverSeconds == 0 || passes == 0) return estimate;
  const double runs =
      (passes - 1) * RunSeconds(plan, table, speeds, false) + RunSeconds(plan, table, speeds, true);
  const JobSeconds whole = WholeJobSeconds(plan, table, speeds, passes, gridRun, start);
  const bool same = std::fabs(driverSeconds - runs) <= kShare * runs + 0.5 * passes;
  const double all = same ? whole.all : driverSeconds + std::max(0.0, whole.all - runs);
  const auto whole32 = [](double seconds) {
    return static_cast<std::uint32_t>(std::clamp(seconds + 0.5, 0.0, 4294967295.0));
  };
  estimate.all = whole32(all);
  estimate.dwells = whole32(whole.dwells);
  estimate.spindle = whole32(whole.spindle);
  return estimate;
}

}  // namespace k7host
