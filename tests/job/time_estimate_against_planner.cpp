// The estimate of a drawing against the time that the simulated controller's planner takes for the
// lines of that drawing.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/hpgl.h"
#include "core/job_plan.h"
#include "job/time_estimate.h"
#include "motion/units.h"
#include "simulator/planner.h"

namespace k7 {
namespace {

struct Speeds {
  const char* name;
  float travel, cut, vertical;  // in per s
  float depthInches;
};

constexpr Speeds kSpeeds[] = {
    {"as delivered", 1.0f, 1.0f, 1.0f, 0.0625f},
    {"demonstration", 5.0f, 3.0f, 2.0f, 0.03f},
    {"slow and deep", 2.0f, 0.25f, 0.5f, 0.125f},
    {"fast", 10.0f, 10.0f, 10.0f, 0.02f},
};

void GiveMechanics(DeviceState& record, const Speeds& speeds) {
  record.motorStepsX = record.motorStepsY = record.motorStepsZ = 200;
  record.microStepsX = record.microStepsY = record.microStepsZ = 10;
  record.screwPitchX = record.screwPitchY = record.screwPitchZ = 0.5f;
  record.cutterLift = 0.125f;
  record.engraveDepth = record.passDepth = speeds.depthInches;
  record.traverseSpeed = speeds.travel;
  record.engraveSpeed = speeds.cut;
  record.cutterUpSpeed = record.cutterDownSpeed = speeds.vertical;
}

k7host::JobPlan Load(const std::string& name) {
  std::ifstream in(std::string(K7_SAMPLES) + "/" + name, std::ios::binary);
  EXPECT_TRUE(in.good()) << name;
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return k7host::BuildPlan(k7host::ReadHpgl(text).strokes, {4000.0, 4000.0, 100000, 64000}).plan;
}

// The blocks of the drawing: to each point as the driver drives there, with the lifts and plunges
// in between.
class Blocks {
 public:
  explicit Blocks(const Speeds& speeds) : speeds_(speeds) {}

  void Travel(double x, double y) {
    Vertical(-0.125);
    Go({x, y, at_[2]}, speeds_.travel);
  }
  void Cut(double x, double y) {
    Plunge();
    Go({x, y, at_[2]}, speeds_.cut);
  }
  void Plunge() { Vertical(speeds_.depthInches); }

  double Seconds() const { return k7sim::PlannedSeconds(blocks_, {}); }

 private:
  // Inches to steps and to the text of a line: all of it in mm here.
  void Vertical(double inches) { Go({at_[0], at_[1], inches * 25.4}, speeds_.vertical); }
  void Go(const k7sim::Vec3& to, double inchesPerSecond) {
    using k7sim::operator-;
    if (k7sim::Length(to - at_) < 1e-9) return;
    k7sim::Block block;
    block.from = at_;
    block.to = to;
    block.feedMmPerSec = inchesPerSecond * 25.4;
    blocks_.push_back(block);
    at_ = to;
  }

  const Speeds speeds_;
  std::vector<k7sim::Block> blocks_;
  k7sim::Vec3 at_{0, 0, -0.125 * 25.4};
};

double PlannedSeconds(const k7host::JobPlan& plan, const Speeds& speeds) {
  Blocks blocks{speeds};
  for (const k7host::Move& move : plan.moves) {
    const double x = move.xSteps * 25.4 / 4000.0;
    const double y = move.ySteps * 25.4 / 4000.0;
    if (move.kind == k7host::MoveKind::Travel) blocks.Travel(x, y);
    if (move.kind == k7host::MoveKind::Cut) blocks.Cut(x, y);
    if (move.kind == k7host::MoveKind::Plunge) blocks.Plunge();
  }
  return blocks.Seconds();
}

class EstimateAgainstPlanner : public testing::TestWithParam<const char*> {};

TEST_P(EstimateAgainstPlanner, AgreesWithinFivePercent) {
  const k7host::JobPlan plan = Load(GetParam());
  std::vector<std::uint32_t> triples = k7host::EstimateTriples(plan);
  for (const Speeds& speeds : kSpeeds) {
    const double planned = PlannedSeconds(plan, speeds);
    DeviceState record;
    GiveMechanics(record, speeds);
    const double estimate =
        EstimateJobTime(record, triples.data(), static_cast<std::uint32_t>(triples.size() / 3));
    RecordProperty(speeds.name, std::to_string(estimate) + " of " + std::to_string(planned));
    // Half a second either way is the rounding of the result.
    EXPECT_NEAR(estimate, planned, planned * 0.05 + 0.5) << speeds.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, EstimateAgainstPlanner,
                         testing::Values("plate.plt", "grid.plt", "spiral.plt", "lettering.plt"));

}  // namespace
}  // namespace k7
