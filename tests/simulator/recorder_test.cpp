#include "simulator/recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "simulator/controller.h"
#include "simulator/picture.h"
#include "tests/simulator/board_bench.h"

namespace k7sim {
namespace {

using k7test::Bench;

// A small job on work at 1 inch: plunge, cut 2 inches at 0.05 inch, lift, traverse.
void RunJob(Bench& bench) {
  for (const char* line : {"SetTableHomed", "G20", "G0 F3000", "M106", "SendBlockMessagesOn", "M42",
                           "G0 X1 Y1", "G0 Z1.05", "G0 X3", "G0 Z0.9", "G0 X1 Y2"}) {
    bench.Send(line);
  }
  bench.PassAll();
}

MachineSetup InchDeep() {
  MachineSetup setup;
  setup.surface = Surface(1);
  return setup;
}

TEST(Recorder, MeasuresCutsAlongThePlateAndEverythingElseAsTravel) {
  Bench bench(InchDeep());
  RunJob(bench);
  const Recorder& record = bench.board.Record();
  EXPECT_NEAR(record.CutInches(), 2, 1e-9);
  EXPECT_NEAR(record.TravelInches(), std::sqrt(2) + 1.05 + 0.15 + std::sqrt(5), 1e-9);
  EXPECT_NEAR(record.ShallowestInches(), 0.05, 1e-9);
  EXPECT_NEAR(record.DeepestInches(), 0.05, 1e-9);
  EXPECT_EQ(record.MistakeTotal(), 0u);
}

TEST(Recorder, TimesAJobFromItsOutputSwitchToItsLastBlock) {
  Bench bench(InchDeep());
  RunJob(bench);
  const TimeUs ended = bench.now;
  bench.PassSeconds(5);
  bench.Send("SendBlockMessagesOff");
  bench.Send("M107");
  const std::vector<JobRecord>& jobs = bench.board.Jobs().Records();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_TRUE(jobs[0].ended);
  EXPECT_EQ(jobs[0].blocks, 5u);
  EXPECT_DOUBLE_EQ(jobs[0].simulatedSeconds, SecondsFromUs(ended));
  // All lines were there before motion began, so the host was never late.
  EXPECT_NEAR(jobs[0].plannedSeconds, jobs[0].simulatedSeconds, 1e-5);
  EXPECT_NEAR(jobs[0].motionSeconds, jobs[0].simulatedSeconds - 0.1, 1e-5);
}

TEST(Recorder, AJobWithALateHostIsSlowerThanPlanned) {
  Bench bench(InchDeep());
  for (const char* line : {"SendBlockMessagesOn", "G0 F3000"}) bench.Send(line);
  bench.Send("G0 X50");
  bench.PassAll();
  bench.Send("G0 X100");
  bench.PassAll();
  bench.Send("SendBlockMessagesOff");
  const JobRecord& job = bench.board.Jobs().Records().at(0);
  EXPECT_NEAR(job.plannedSeconds, 2.2, 1e-5);
  EXPECT_NEAR(job.simulatedSeconds, 2.4, 1e-5);
}

TEST(Recorder, CountsAMoveBeforeHoming) {
  Bench bench;
  bench.Send("G0 X1");
  bench.PassAll();
  EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::MoveBeforeHoming), 1u);
}

TEST(Recorder, CountsADryPlungeAndNoneWithTheSpindleOn) {
  for (const bool spindle : {false, true}) {
    Bench bench(InchDeep());
    bench.Send("SetTableHomed");
    if (spindle) bench.Send("M42");
    bench.Send("G0 Z26.4");
    bench.PassAll();
    EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::DryPlunge), spindle ? 0u : 1u);
  }
}

// A cut that meets higher work goes deeper without having plunged.
TEST(Recorder, ACutThatDeepensOverTiltedWorkIsNoPlunge) {
  MachineSetup setup;
  std::string error;
  setup.surface = *Surface::Parse("tilt:1,-0.01,0", 25, 16, error);
  Bench bench(setup);
  for (const char* line : {"SetTableHomed", "G20", "G0 Z0.95", "G0 X10"}) bench.Send(line);
  bench.PassAll();
  EXPECT_NEAR(bench.board.Record().DeepestInches(), 0.05, 1e-9);
  EXPECT_EQ(bench.board.Record().MistakeTotal(), 0u);
}

TEST(Recorder, CountsACutBesideTheTable) {
  MachineSetup setup = InchDeep();
  setup.geometry.size = {2, 2, 1.5};
  setup.surface = Surface(1);
  Bench bench(setup);
  for (const char* line : {"SetTableHomed", "M42", "G20", "G0 Z1.01", "G0 X3"}) bench.Send(line);
  bench.PassAll();
  EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::OutsideTable), 1u);
}

TEST(Recorder, AnAirHeadCutsWhileItIsDown) {
  MachineSetup setup;
  setup.tool = ToolKind::Air;
  Bench bench(setup);
  for (const char* line : {"SetTableHomed", "G20", "G0 X1", "M400"}) bench.Send(line);
  bench.PassAll();
  bench.Send("M42");
  bench.Send("G0 X3");
  bench.PassAll();
  EXPECT_NEAR(bench.board.Record().CutInches(), 2, 1e-9);
  EXPECT_NEAR(bench.board.Record().TravelInches(), 1, 1e-9);
  EXPECT_EQ(bench.board.Record().MistakeTotal(), 0u);
}

TEST(Recorder, FollowsTheDepthOverATiltedSurface) {
  MachineSetup setup;
  std::string error;
  setup.surface = *Surface::Parse("tilt:1,0.01,0", 25, 16, error);
  Bench bench(setup);
  for (const char* line : {"SetTableHomed", "M42", "G20", "G0 Z1.05", "G0 X10"}) bench.Send(line);
  bench.PassAll();
  // 0.05 deep at X 0, out of the work at X 5.
  EXPECT_NEAR(bench.board.Record().CutInches(), 5, 0.11);
  EXPECT_NEAR(bench.board.Record().DeepestInches(), 0.05, 1e-9);
}

TEST(Picture, ShowsPlateScaleHomeTravelAndCuts) {
  Bench bench(InchDeep());
  RunJob(bench);
  const std::string svg =
      DrawPicture(bench.board.Record().Strokes(), TableGeometry{}, HomeCorner::BottomLeft);
  // 100 units an inch, 0.7 inches of margin, Y upwards on a plate 16 inches high.
  EXPECT_THAT(svg, testing::HasSubstr("viewBox=\"0 0 2640 1740\""));
  EXPECT_THAT(svg, testing::HasSubstr("<rect id=\"plate\" x=\"70.0\" y=\"70.0\" width=\"2500.0\" "
                                      "height=\"1600.0\""));
  EXPECT_THAT(svg, testing::HasSubstr("<circle cx=\"70.0\" cy=\"1670.0\""));
  EXPECT_THAT(svg, testing::HasSubstr(">25</text>"));
  EXPECT_THAT(svg, testing::HasSubstr("id=\"travel\" fill=\"none\" stroke=\"#a3a9b0\" "
                                      "stroke-width=\"1.2\" d=\"M70.00 1670.00L170.00 1570.00"));
  EXPECT_THAT(svg, testing::HasSubstr("<path stroke=\"#1c140c\" stroke-width=\"3.70\" "
                                      "data-depth=\"0.0500\" d=\"M170.00 1570.00L170.00 1570.00"
                                      "L370.00 1570.00"));
}

TEST(Picture, CanHaveTheTableHomeAtTheTop) {
  const std::string svg = DrawPicture({{0, 0, 1, 1, 0.1}}, TableGeometry{}, HomeCorner::TopLeft);
  EXPECT_THAT(svg, testing::HasSubstr("d=\"M70.00 70.00L170.00 170.00\""));
  EXPECT_THAT(svg, testing::HasSubstr("<circle cx=\"70.0\" cy=\"70.0\""));
}

TEST(Picture, DrawsDeeperCutsWiderAndDarker) {
  EXPECT_LT(CutWidthInches(0.01), CutWidthInches(0.05));
  EXPECT_DOUBLE_EQ(CutWidthInches(5), 0.15);
  EXPECT_EQ(CutColour(0.1, 0.1), "#1c140c");
  EXPECT_EQ(CutColour(0, 0.1), "#b89a6c");
}

TEST(Picture, OfNothingIsStillAPlate) {
  const std::string svg = DrawPicture({}, TableGeometry{}, HomeCorner::BottomLeft);
  EXPECT_THAT(svg, testing::HasSubstr("id=\"plate\""));
  EXPECT_THAT(svg, testing::Not(testing::HasSubstr("id=\"travel\"")));
}

}  // namespace
}  // namespace k7sim
