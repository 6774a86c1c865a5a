// The board with its switches, the probe, the ends of the axes and the round fixture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/controller.h"
#include "tests/simulator/support/board_bench.h"

namespace k7sim {
namespace {

using k7test::Bench;
using k7test::Lines;
using testing::ElementsAre;

MachineSetup At(double x, double y, double z) {
  MachineSetup setup;
  setup.positionInches = {x, y, z};
  return setup;
}

// Sets 4000 steps an inch on each axis, so that distances are round numbers.
void SetSteps(Bench& bench) {
  for (const char* line : {"M92 X157.48032", "M92 Y157.48032", "M92 Z157.48032"}) bench.Send(line);
}

TEST(Homing, AnswersWithTheStepsToTheSwitchOnceItIsFound) {
  Bench bench(At(2, 1, 0.5));
  SetSteps(bench);
  EXPECT_EQ(bench.Send("G28 Z0"), Lines{});
  EXPECT_EQ(bench.PassAll(), (Lines{"Z_Limit 2000\r\n", "ok\n"}));
  EXPECT_EQ(bench.Send("G28 Y0"), Lines{});
  EXPECT_EQ(bench.PassAll(), (Lines{"Y_Limit 4000\r\n", "ok\n"}));
  bench.Send("G28 X0");
  EXPECT_EQ(bench.PassAll(), (Lines{"X_Limit 8000\r\n", "ok\n"}));
  EXPECT_THAT(bench.Send("M119")[0], testing::StartsWith("min_x:1 min_y:1 min_z:1 "));
}

TEST(Homing, TakesTheTimeOfTheWay) {
  Bench bench(At(10, 0, 0));
  bench.Send("G28 X0");
  bench.PassAll();
  EXPECT_NEAR(SecondsFromUs(bench.now), 254 / 50.0 + 0.1,
              1e-5);  // at 50 mm/s, with two ramps of 0.1 s
}

TEST(Homing, AtTheSwitchAnswersZeroAtOnce) {
  Bench bench;
  bench.Send("G28 X0");
  EXPECT_EQ(bench.PassUntil(0), (Lines{"X_Limit 0\r\n", "ok\n"}));
}

TEST(Homing, WithASwitchThatNeverClosesEndsInAnAlarm) {
  Bench bench(At(2, 0, 0));
  bench.board.Machine().ForceSwitch(0, SwitchForce::Open);
  bench.Send("G28 X0");
  EXPECT_EQ(bench.PassAll(), Lines{"ALARM: Homing fail\r\n"});
  EXPECT_TRUE(bench.board.IsHalted());
  EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::HomingFailed), 1u);
}

TEST(Homing, WaitsForTheMovesBeforeItAndServesOtherLines) {
  Bench bench;
  bench.Send("G0 F3000");
  bench.Send("G0 X50");
  EXPECT_EQ(bench.Send("G28 X0"), Lines{});
  EXPECT_EQ(bench.Send("SmoothieIsConnected"), Lines{"SmoothieIsConnected\r\n"});
  EXPECT_EQ(bench.PassAll(), (Lines{"X_Limit 4000\r\n", "ok\n"}));  // 50 mm at 80 steps a mm
}

TEST(Probing, AnswersWithTheStepsToTheTouchAndStaysThere) {
  Bench bench(At(5, 5, 0.75));
  SetSteps(bench);
  EXPECT_EQ(bench.Send("G30 F25.400"), Lines{});
  EXPECT_EQ(bench.PassAll(), (Lines{"Z_Probe 4000\r\n", "ok\n"}));  // one inch down to 1.75
  EXPECT_THAT(bench.Send("M119")[0], testing::EndsWith("Probe: 1\n"));
}

// KEEP: the host computes the probe's feed without the factor 60 of every other feed.
TEST(Probing, TakesItsFeedInMillimetresPerSecond) {
  Bench bench(At(5, 5, 0.75));
  bench.Send("G30 F12.700");
  bench.PassAll();
  EXPECT_NEAR(SecondsFromUs(bench.now), 25.4 / 12.7 + 12.7 / 500, 1e-5);
}

TEST(Probing, WithNothingUnderItSaysSoAndGoesBackUp) {
  MachineSetup setup = At(5, 5, 0.5);
  std::string error;
  setup.surface = *Surface::Parse("none", 25, 16, error);
  Bench bench(setup);
  bench.Send("G30 F25.400");
  EXPECT_EQ(bench.PassAll(), (Lines{"ZProbe not triggered\r\n", "ok\n"}));
  EXPECT_NEAR(bench.board.Machine().PlaceAt(bench.board.PositionMm(bench.now)).z, 0.5, 1e-9);
}

TEST(Probing, BesideThePlateTouchesNothing) {
  MachineSetup setup = At(0.5, 0.5, 0.5);
  setup.geometry.homeX = 1;
  Bench bench(setup);
  bench.Send("G30 F25.400");
  EXPECT_EQ(bench.PassAll(), (Lines{"ZProbe not triggered\r\n", "ok\n"}));
}

TEST(Probing, FollowsATiltedSurface) {
  MachineSetup setup = At(10, 0, 0);
  std::string error;
  setup.surface = *Surface::Parse("tilt:1,0.05,0", 25, 16, error);
  Bench bench(setup);
  SetSteps(bench);
  bench.Send("G30 F25.400");
  EXPECT_EQ(bench.PassAll()[0], "Z_Probe 6000\r\n");  // 1 + 10 * 0.05 inches
}

TEST(Probing, AProbeHeldClosedTouchesAtOnce) {
  Bench bench(At(5, 5, 0.5));
  bench.board.Machine().ForceProbe(SwitchForce::Closed);
  bench.Send("G30 F25.400");
  EXPECT_EQ(bench.PassUntil(0), (Lines{"Z_Probe 0\r\n", "ok\n"}));
}

TEST(RoundFixture, TakesTheLetterAndLeavesTheLinearAxisWhereItIs) {
  Bench bench(At(3, 4, 0));
  bench.Send("M800 X5 Y2");
  bench.Send("G92 X0 Y0");
  bench.Send("G0 X50.8 Y25.4");
  bench.PassAll();
  const Mechanics& machine = bench.board.Machine();
  const Vec3 at = bench.board.PositionMm(bench.now);
  EXPECT_NEAR(machine.LinearMm(0, at), 3 * 25.4, 1e-9);
  EXPECT_NEAR(machine.PlaceAt(at).x, 2, 1e-9);  // unrolled
  EXPECT_NEAR(machine.PlaceAt(at).y, 5, 1e-9);
  bench.Send("M800 X1 Y2");
  EXPECT_NEAR(machine.PlaceAt(bench.board.PositionMm(bench.now)).x, 3, 1e-9);
}

TEST(RoundFixture, HasNoEnds) {
  Bench bench;
  bench.Send("M800 X1 Y5");
  bench.Send("G0 Y-5000");
  bench.PassAll();
  EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::OutsideTravel), 0u);
}

TEST(AxisEnds, AMoveBeyondOneIsAMistake) {
  Bench bench;
  bench.Send("SetTableHomed");
  bench.Send("G0 X-10");
  bench.PassAll();
  EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::OutsideTravel), 1u);
  ASSERT_EQ(bench.board.Record().FirstMistakes().size(), 1u);
  const MistakeRecord& mistake = bench.board.Record().FirstMistakes()[0];
  EXPECT_EQ(mistake.kind, Mistake::OutsideTravel);
  EXPECT_EQ(mistake.what, "beyond the end of -X");
  EXPECT_EQ(mistake.line, 2u);
  EXPECT_EQ(mistake.command, "G0 X-10");
  EXPECT_FALSE(bench.board.IsHalted());
}

TEST(AxisEnds, HaltWithAnAlarmWhenTheyAreHard) {
  MachineSetup setup;
  setup.hardLimits = true;
  Bench bench(setup);
  bench.Send("G0 X700");
  EXPECT_EQ(bench.PassAll(), Lines{"ALARM: Hard limit +X\n"});
  EXPECT_EQ(bench.Send("G0 X1"), Lines{"!!\r\n"});
}

}  // namespace
}  // namespace k7sim
