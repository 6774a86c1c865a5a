// The drawings that come with the host: each must fit the common table and have something on it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "core/job_plan.h"
#include "drawing/hpgl/hpgl.h"

namespace k7host {
namespace {

JobPlan Load(const std::string& name) {
  const char* folder = std::getenv("K7_SAMPLES");
  EXPECT_NE(folder, nullptr) << "K7_SAMPLES must name host/samples";
  std::ifstream in(std::string(folder != nullptr ? folder : ".") + "/" + name, std::ios::binary);
  EXPECT_TRUE(in.good()) << name;
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const Drawing drawing = ReadHpgl(text);
  EXPECT_FALSE(drawing.error) << DrawingErrorText(name, *drawing.error);
  const PlanResult result = BuildPlan(drawing.strokes, {4000.0, 4000.0, 100000, 64000});
  EXPECT_EQ(result.error, "");
  return result.plan;
}

TEST(Samples, ThePlateIsAWholeJob) {
  const JobPlan plan = Load("plate.plt");
  EXPECT_GE(plan.strokes, 200u);
  EXPECT_LE(plan.strokes, 500u);
}

TEST(Samples, TheSmallDrawingsFit) {
  for (const char* name : {"grid.plt", "spiral.plt", "lettering.plt"}) {
    EXPECT_GE(Load(name).cuts, 10u) << name;
  }
}

TEST(Samples, TheBrailleDrawingHoldsDotsOnly) {
  const JobPlan plan = Load("braille.plt");
  EXPECT_EQ(plan.strokes, 0u);
  EXPECT_GE(plan.dots, 10u);
}

}  // namespace
}  // namespace k7host
