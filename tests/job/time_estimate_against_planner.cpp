// The estimate of a drawing against the time for which the simulated controller's planner keeps the
// head under way: the travels and the cuts between one lift or plunge and the next.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "board/planner.h"
#include "core/job_estimate.h"
#include "core/job_plan.h"
#include "drawing/hpgl/hpgl.h"
#include "job/time_estimate.h"
#include "motion/axes.h"

namespace k7 {
namespace {

struct Speeds {
  const char* name;
  float travel, cut;  // in per s
};

constexpr Speeds kSpeeds[] = {
    {"as delivered", 1.0f, 1.0f},
    {"demonstration", 5.0f, 3.0f},
    {"slow", 2.0f, 0.25f},
    {"fast", 10.0f, 10.0f},
};

void GiveMechanics(DeviceState& record, const Speeds& speeds) {
  record.mechanics.axis.x.motorSteps = record.mechanics.axis.y.motorSteps = 200;
  record.mechanics.axis.x.microSteps = record.mechanics.axis.y.microSteps = 10;
  record.mechanics.axis.x.screwPitch = record.mechanics.axis.y.screwPitch = 0.5f;
  record.tools.traverseSpeed = speeds.travel;
  record.tools.engraveSpeed = speeds.cut;
}

k7host::JobPlan Load(const std::string& name) {
  std::ifstream in(std::string(K7_SAMPLES) + "/" + name, std::ios::binary);
  EXPECT_TRUE(in.good()) << name;
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return k7host::BuildPlan(k7host::ReadHpgl(text).strokes, {4000.0, 4000.0, 100000, 64000}).plan;
}

// The way of the head, in stretches that begin and end at a standstill because the cutter goes up
// or down there.
class Stretches {
 public:
  void Go(double xMm, double yMm, double inchesPerSecond) {
    using k7sim::operator-;
    const k7sim::Vec3 to{xMm, yMm, 0};
    if (k7sim::Length(to - at_) < 1e-9) return;
    k7sim::Block block;
    block.from = at_;
    block.to = to;
    block.feedMmPerSec = inchesPerSecond * 25.4;
    blocks_.push_back(block);
    at_ = to;
  }
  // The cutter goes up or down here.
  void Stop() {
    if (!blocks_.empty()) seconds_ += k7sim::PlannedSeconds(blocks_, {.startDelayUs = 0});
    blocks_.clear();
  }
  double Seconds() {
    Stop();
    return seconds_;
  }

 private:
  std::vector<k7sim::Block> blocks_;
  k7sim::Vec3 at_{0, 0, 0};
  double seconds_ = 0;
};

double PlannedSeconds(const k7host::JobPlan& plan, const Speeds& speeds) {
  Stretches way;
  k7host::MoveKind last = k7host::MoveKind::Travel;
  for (const k7host::Move& move : plan.moves) {
    if (move.kind != last || move.kind == k7host::MoveKind::Plunge) way.Stop();
    last = move.kind;
    if (move.kind == k7host::MoveKind::Plunge) continue;
    const bool travels = move.kind == k7host::MoveKind::Travel;
    way.Go(move.xSteps * 25.4 / 4000.0, move.ySteps * 25.4 / 4000.0,
           travels ? speeds.travel : speeds.cut);
  }
  return way.Seconds();
}

class EstimateAgainstPlanner : public testing::TestWithParam<const char*> {};

TEST_P(EstimateAgainstPlanner, AgreesWithinFivePercent) {
  const k7host::JobPlan plan = Load(GetParam());
  std::vector<std::uint32_t> triples = k7host::EstimateTriples(plan);
  for (const Speeds& speeds : kSpeeds) {
    const double planned = PlannedSeconds(plan, speeds);
    DeviceState record;
    GiveMechanics(record, speeds);
    const double estimate = EstimateJobTime(record.mechanics, record.tools, triples.data(),
                                            static_cast<std::uint32_t>(triples.size() / 3));
    RecordProperty(speeds.name, std::to_string(estimate) + " of " + std::to_string(planned));
    // Half a second either way is the rounding of the result.
    EXPECT_NEAR(estimate, planned, planned * 0.05 + 0.5) << speeds.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, EstimateAgainstPlanner,
                         testing::Values("plate.plt", "grid.plt", "spiral.plt", "lettering.plt",
                                         "braille.plt"));

}  // namespace
}  // namespace k7
