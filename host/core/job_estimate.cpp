// The driver estimates one pass. A job is its passes and the travel back to the table home.
#include "core/job_estimate.h"

#include <algorithm>
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

}  // namespace k7host
