#include "core/job_estimate.h"

#include <gtest/gtest.h>

#include "drawing/hpgl/hpgl.h"
#include "silent_engraver.h"

namespace k7host {
namespace {

// Answers estimates from a list and keeps what it was asked.
class EstimatingDevice : public k7test::SilentEngraver {
 public:
  explicit EstimatingDevice(std::vector<std::uint32_t> answers) : answers_(std::move(answers)) {}

  std::uint32_t EstimateJobTime(const std::uint32_t* triples,
                                std::uint32_t count) noexcept override {
    asked.emplace_back(triples, triples + 3 * std::size_t{count});
    return answers_[asked.size() - 1];
  }

  std::vector<std::vector<std::uint32_t>> asked;

 private:
  std::vector<std::uint32_t> answers_;
};

using Triples = std::vector<std::uint32_t>;

JobPlan Plan(std::string_view file) {
  return BuildPlan(ReadHpgl(file).strokes, {1016.0, 1016.0, 2032, 1016}).plan;
}

TEST(JobEstimate, TakesTravelsCutsAndDots) {
  EXPECT_EQ(EstimateTriples(Plan("PU10,20;PD30,40;PU5,6;PD")),
            (Triples{10, 20, 1, 30, 40, 2, 5, 6, 1, 5, 6, 2}));
}

TEST(JobEstimate, OfOnePassGoesBackToTheTableHome) {
  EstimatingDevice device{{61}};
  EXPECT_EQ(EstimateJob(device, Plan("PU10,20;PD30,40"), 1), 61u);
  EXPECT_EQ(device.asked, (std::vector<Triples>{{10, 20, 1, 30, 40, 2, 0, 0, 1}}));
}

TEST(JobEstimate, OfSeveralPassesGoesBackOnce) {
  EstimatingDevice device{{10, 12}};
  EXPECT_EQ(EstimateJob(device, Plan("PU10,20;PD30,40"), 3), 32u);
  EXPECT_EQ(device.asked,
            (std::vector<Triples>{{10, 20, 1, 30, 40, 2}, {10, 20, 1, 30, 40, 2, 0, 0, 1}}));
}

TEST(JobEstimate, IsUnknownWhenTheDriverGivesNone) {
  EstimatingDevice device{{0, 0}};
  EXPECT_EQ(EstimateJob(device, Plan("PU10,20;PD30,40"), 2), 0u);
}

TEST(JobEstimate, ALengthBeyondCountingSaturates) {
  EstimatingDevice device{{2147483647, 2147483647}};
  EXPECT_EQ(EstimateJob(device, Plan("PU10,20;PD30,40"), 1000000), 4294967295u);
}

}  // namespace
}  // namespace k7host
