// The host's estimate of whole jobs against the simulated controller's planner: every lift, plunge,
// dwell and pass, on the host's sample drawings.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "board/planner.h"
#include "core/job_estimate.h"
#include "core/job_plan.h"
#include "core/motion_time.h"
#include "drawing/hpgl/hpgl.h"
#include "job/time_estimate.h"

namespace k7 {
namespace {

constexpr k7host::Table kTable{4000.0, 4000.0, 100000, 64000};

struct JobCase {
  const char* name;
  k7host::JobSpeeds speeds;
  std::uint32_t passes;
};

const JobCase kJobs[] = {
    {"as delivered", {}, 1},
    {"demonstration", {5, 3, 3, 2, 2, 0.125, 0, {0.01, 0.02, 0.03}}, 3},
    {"slow and deep", {2, 0.25, 0.25, 0.5, 0.25, 0.5, 0, {0.1, 0.2}}, 2},
    {"fast", {10, 10, 10, 5, 5, 0.125, 0, {0.05}}, 1},
    {"with a dwell", {5, 3, 3, 2, 2, 0.125, 0.25, {0.03, 0.06}}, 2},
};

// Over the table home, the cutter lifted.
k7host::HeadPlace Start(const JobCase& job) {
  return {0, 0, -job.speeds.liftInches};
}

k7host::JobPlan Load(const std::string& name) {
  std::ifstream in(std::string(K7_SAMPLES) + "/" + name, std::ios::binary);
  EXPECT_TRUE(in.good()) << name;
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return k7host::BuildPlan(k7host::ReadHpgl(text).strokes, kTable).plan;
}

// The lines that the driver sends for a job, as blocks in the controller's queue.
class Wire {
 public:
  explicit Wire(const JobCase& job) : job_(job) { at_[2] = -job.speeds.liftInches * 25.4; }

  void Run(const k7host::JobPlan& plan) {
    for (std::uint32_t pass = 0; pass < job_.passes; ++pass) {
      drained_ = true;
      depth_ = job_.speeds.passDepthsInches[pass] * 25.4;
      const k7host::Move& first = plan.moves[0];
      if (down_ && Mm(first.xSteps) == at_[0] && Mm(first.ySteps) == at_[1]) Lower();
      for (const k7host::Move& move : plan.moves) Carry(move);
    }
    Carry({});  // back to the table home
  }

  double Seconds() {
    double seconds = dwells_ * job_.speeds.dwellSeconds;
    return seconds + k7sim::PlannedSeconds(blocks_, {});
  }

 private:
  static double Mm(std::uint32_t steps) { return steps * 25.4 / 4000.0; }

  void Carry(const k7host::Move& move) {
    const double x = Mm(move.xSteps);
    const double y = Mm(move.ySteps);
    if (move.kind == k7host::MoveKind::Travel) {
      if (x == at_[0] && y == at_[1]) return;
      if (down_) Push({at_[0], at_[1], -job_.speeds.liftInches * 25.4}, job_.speeds.cutterUp);
      down_ = false;
      Push({x, y, at_[2]}, job_.speeds.travel);
      return;
    }
    if (!down_) Lower();
    if (move.kind == k7host::MoveKind::Cut) Push({x, y, at_[2]}, job_.speeds.engrave);
  }

  void Lower() {
    Push({at_[0], at_[1], depth_}, job_.speeds.cutterDown);
    down_ = true;
    if (job_.speeds.dwellSeconds <= 0.0) return;
    ++dwells_;
    drained_ = true;
  }

  void Push(const k7sim::Vec3& to, double inchesPerSecond) {
    k7sim::Block block;
    block.from = at_;
    block.to = to;
    block.feedMmPerSec = inchesPerSecond * 25.4;
    block.afterDrain = drained_;
    drained_ = false;
    blocks_.push_back(block);
    at_ = to;
  }

  const JobCase& job_;
  std::vector<k7sim::Block> blocks_;
  k7sim::Vec3 at_{0, 0, 0};
  double depth_ = 0;
  bool down_ = false;
  bool drained_ = false;
  int dwells_ = 0;
};

class HostEstimateAgainstPlanner : public testing::TestWithParam<const char*> {};

TEST_P(HostEstimateAgainstPlanner, AgreesWithinOnePercent) {
  const k7host::JobPlan plan = Load(GetParam());
  const std::vector<std::uint32_t> triples = k7host::EstimateTriples(plan);
  std::vector<std::uint32_t> homeward = triples;
  homeward.insert(homeward.end(), {0, 0, 1});
  for (const JobCase& job : kJobs) {
    Wire wire(job);
    wire.Run(plan);
    const double planned = wire.Seconds();
    const double counted =
        k7host::WholeJobSeconds(plan, kTable, job.speeds, job.passes, false, Start(job)).all;
    EXPECT_NEAR(counted, planned, planned * 0.01) << job.name;

    // With the driver's own figure of one pass, which is all that it gives.
    DeviceState record;
    record.mechanics.axis.x.motorSteps = record.mechanics.axis.y.motorSteps = 200;
    record.mechanics.axis.x.microSteps = record.mechanics.axis.y.microSteps = 10;
    record.mechanics.axis.x.screwPitch = record.mechanics.axis.y.screwPitch = 0.5f;
    record.tools.traverseSpeed = static_cast<float>(job.speeds.travel);
    record.tools.engraveSpeed = static_cast<float>(job.speeds.engrave);
    const auto estimate = [&](const std::vector<std::uint32_t>& drawing) {
      return EstimateJobTime(record.mechanics, record.tools, drawing.data(),
                             static_cast<std::uint32_t>(drawing.size() / 3));
    };
    const std::uint32_t driver = (job.passes - 1) * estimate(triples) + estimate(homeward);
    const k7host::WholeEstimate whole =
        k7host::AddLiftsAndDwells(driver, plan, kTable, job.speeds, job.passes, false, Start(job));
    RecordProperty(job.name, std::to_string(whole.all) + " of " + std::to_string(planned));
    // Half a second is the rounding of the result.
    EXPECT_NEAR(whole.all, planned, planned * 0.01 + 0.5) << job.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, HostEstimateAgainstPlanner,
                         testing::Values("plate.plt", "grid.plt", "spiral.plt", "lettering.plt",
                                         "braille.plt"));

}  // namespace
}  // namespace k7
