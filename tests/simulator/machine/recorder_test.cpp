#include "machine/recorder.h"

#include <gtest/gtest.h>

#include <cmath>

#include "board/controller.h"
#include "tests/simulator/support/small_job.h"

namespace k7sim {
namespace {

using k7test::Bench;
using k7test::InchDeep;
using k7test::RunJob;

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

// A cut that runs into a higher part of the plate becomes deeper without a plunge.
TEST(Recorder, ACutThatDeepensOverATiltedPlateIsNoPlunge) {
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
  // 0.05 deep at X 0, and above the surface from X 5 on.
  EXPECT_NEAR(bench.board.Record().CutInches(), 5, 0.11);
  EXPECT_NEAR(bench.board.Record().DeepestInches(), 0.05, 1e-9);
}

}  // namespace
}  // namespace k7sim
