#include "motion/strokes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/host_call.h"
#include "support/key_file.h"
#include "support/stroke.h"

namespace k7 {
namespace {

using k7test::HostCall;
using k7test::Made;
using k7test::Stroke;
using k7test::TestMachine;
using Tags = std::vector<int>;

constexpr char kTraverse[] = "G0 F1524.000\nG0 X12.700000 Y25.400000\n";
constexpr char kCut[] = "G0 F3048.000\nG0 X12.700000 Y25.400000\n";

constexpr std::uint32_t kAllButAir[] = {kCutterNone, kCutterManual, kCutterAutomatic,
                                        kCutterSemiAutomatic};

struct Machine : TestMachine {
  Machine() { OpenJob(); }
  Stroke Move(std::uint32_t x = 2000, std::uint32_t y = 4000) {
    return Made(*this, MoveTo(**this, x, y));
  }
  Stroke Engrave(std::uint32_t x = 2000, std::uint32_t y = 4000) {
    return Made(*this, EngraveTo(**this, x, y));
  }
};

std::int32_t CutterModeInFile(const DeviceState& record) {
  return k7test::KeyFile{record.link}.ReadInt(L"Engrave Settings", L"Cutter Mode", -1);
}

TEST(Strokes, WithoutAJobOrAConnectionDoNothing) {
  for (const bool inJob : {false, true}) {
    TestMachine machine;
    if (inJob) machine.OpenJob();
    machine->job.firstMove = 1;
    for (const std::uint8_t connected : std::initializer_list<std::uint8_t>{0, 1}) {
      if (inJob && connected == 1) continue;
      machine->link.connected = connected;
      EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusNothing);
      EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusNothing);
      EXPECT_EQ(LowerCutter(*machine), kStatusNothing);
      EXPECT_EQ(LowerCutterContinue(*machine), kStatusNothing);
    }
    machine->link.connected = 1;
    EXPECT_EQ(machine.Sent(), "");
    EXPECT_EQ(machine->job.firstMove, 1);
  }
}

TEST(MoveTo, TheFirstOfAJobTraversesWithoutALift) {
  for (const std::uint32_t mode : {kCutterNone, kCutterAutomatic, kCutterAirZ}) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine->job.firstMove = 1;
    machine->tools.cutterState = kCutterDown;
    EXPECT_EQ(machine.Move(), (Stroke{kStatusSent, kTraverse, {1}, 0, kCutterDown})) << mode;
    EXPECT_EQ(machine->job.firstMove, 0) << mode;
  }
}

TEST(MoveTo, TheFirstOfAJobToWhereTheMachineStandsSendsItsFeedOnly) {
  Machine machine;
  machine->job.firstMove = 1;
  EXPECT_EQ(machine.Move(0, 0), (Stroke{kStatusNothing, "G0 F1524.000\n", {}, 0, kCutterUp}));
  EXPECT_EQ(machine->job.firstMove, 0);
}

TEST(MoveTo, TheFirstOfAJobInManualModeUsesTheModeUp) {
  Machine machine;
  machine->tools.cutterMode = kCutterManual;
  machine->job.firstMove = 1;
  EXPECT_EQ(machine.Move(), (Stroke{kStatusOneShot, kTraverse, {1}, 0, kCutterUp}));
  EXPECT_EQ(machine->tools.cutterMode, kCutterNone);
  EXPECT_EQ(CutterModeInFile(*machine), 0);
  EXPECT_EQ(machine->job.plungeHold, 1);
  EXPECT_EQ(machine->tools.probeOnNextPlunge, 0u);
}

TEST(MoveTo, TheFirstOfAJobInSemiAutomaticModeArmsTheProbe) {
  Machine machine;
  machine->tools.cutterMode = kCutterSemiAutomatic;
  machine->job.firstMove = 1;
  EXPECT_EQ(machine.Move(), (Stroke{kStatusArmed, kTraverse, {1}, 0, kCutterUp}));
  EXPECT_EQ(machine->tools.cutterMode, kCutterSemiAutomatic);
  EXPECT_EQ(CutterModeInFile(*machine), -1);
  EXPECT_EQ(machine->job.plungeHold, 1);
  EXPECT_EQ(machine->tools.probeOnNextPlunge, 1u);
}

TEST(MoveTo, TheFirstOfAJobInTheseModesReturnsOnlyWhenTheHeadStandsStill) {
  for (const std::uint32_t mode : {kCutterManual, kCutterSemiAutomatic}) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine->job.firstMove = 1;
    machine.controller.AnswerMoves(false);
    const HostCall host{[&] { MoveTo(*machine, 2000, 4000); }};
    EXPECT_TRUE(machine.controller.WaitForLine("G0 X12.700000 Y25.400000\n")) << mode;
    machine.controller.Say("QX\r\nBX\r\n");
    EXPECT_TRUE(host.Waits()) << mode;
    machine.controller.Say("EX\r\n");
    EXPECT_TRUE(host.Returns()) << mode;
  }
}

TEST(MoveTo, TheStatusOfTheFirstOfAJobDoesNotAskWhetherAnythingMoved) {
  Machine machine;
  machine->tools.cutterMode = kCutterSemiAutomatic;
  machine->job.firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 0, 0), kStatusArmed);
  machine->tools.cutterMode = kCutterManual;
  machine->job.firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 0, 0), kStatusOneShot);
}

TEST(MoveTo, WithTheCutterUpOnlyTraverses) {
  Machine machine;
  EXPECT_EQ(machine.Move(), (Stroke{kStatusSent, kTraverse, {1}, 0, kCutterUp}));
  // The feed is unchanged.
  EXPECT_EQ(machine.Move(2000, 2000),
            (Stroke{kStatusSent, "G0 Y12.700000\n", {1, 1}, 0, kCutterUp}));
}

TEST(MoveTo, WithTheCutterDownLiftsFirst) {
  const std::string lift = "G0 F381.000\nG0 Z22.225000\n";
  for (const std::uint32_t mode : kAllButAir) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine.StandAt(0, 0, 4250, kCutterDown);
    EXPECT_EQ(machine.Move(), (Stroke{kStatusSent, lift + kTraverse, {4, 1}, 1, kCutterUp}))
        << mode;
  }
}

TEST(MoveTo, OfThePneumaticHeadWaitsUntilItIsUp) {
  Machine machine;
  machine->tools.cutterMode = kCutterAirZ;
  machine.StandAt(0, 0, 4250, kCutterDown);
  const std::string lift = "G0 F381.000\nG0 Z22.225000\nM43\n";
  EXPECT_EQ(machine.Move(), (Stroke{kStatusSent, lift + kTraverse, {4, 1}, 1, kCutterUp}));
}

TEST(MoveTo, WhereTheMachineStandsDoesNotEvenLift) {
  Machine machine;
  machine.StandAt(2000, 4000, 4250, kCutterDown);
  EXPECT_EQ(machine.Move(), (Stroke{kStatusNothing, "", {}, 0, kCutterDown}));
}

// The pneumatic head would wait for ever if it waited here.
TEST(MoveTo, ALiftThatChangesNothingLeavesTheCutterMarkedDown) {
  for (const std::uint32_t mode : {kCutterNone, kCutterAirZ}) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine.StandAt(0, 0, 3500, kCutterDown);
    EXPECT_EQ(machine.Move(),
              (Stroke{kStatusSent, std::string{"G0 F381.000\n"} + kTraverse, {1}, 0, kCutterDown}))
        << mode;
  }
}

TEST(MoveTo, DoesNotTraverseWithACutterWhoseLiftIsRefused) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->position.tableSurface = 3000;
  EXPECT_EQ(machine.Move(), (Stroke{kStatusRefused, "G0 F381.000\n", {}, 0, kCutterDown}));
  EXPECT_EQ(machine->position.last.x, 0);
}

TEST(MoveTo, MapsHostStepsByFactorAndTableHome) {
  Machine machine;
  machine->mechanics.xAxisFactor = 2;
  machine->position.tableHome.x = 1000;
  machine->position.tableHome.y = 2000;
  EXPECT_EQ(machine.Move(500, 2000), (Stroke{kStatusSent, kTraverse, {1}, 0, kCutterUp}));
}

TEST(EngraveTo, WhereTheMachineStandsDoesNotEvenPlunge) {
  Machine machine;
  machine.StandAt(2000, 4000, 3500, kCutterUp);
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusNothing, "", {}, 0, kCutterUp}));
}

TEST(EngraveTo, WithTheCutterDownOnlyCuts) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, kCut, {1}, 0, kCutterDown}));
}

TEST(EngraveTo, WithTheCutterDownFollowsANewPassDepthAtTheFeedInForce) {
  const std::string plunge = "G0 Z28.574999\n";
  for (const std::uint32_t mode : kAllButAir) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine.StandAt(0, 0, 4250, kCutterDown);
    machine->passes.passDepth = 0.125f;
    EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, plunge + kCut, {2, 1}, 1, kCutterDown}))
        << mode;
  }
}

TEST(EngraveTo, WithThePneumaticHeadDownNeverPlungesAgain) {
  Machine machine;
  machine->tools.cutterMode = kCutterAirZ;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->tools.engraveDepth = machine->passes.passDepth = 0.125f;
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, kCut, {1}, 0, kCutterDown}));
}

TEST(EngraveTo, HandsOnTheRefusalOfASecondPlunge) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->passes.passDepth = 1.5f;  // 6000 steps below 4000: the surface is at 8000
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusRefused, "", {}, 0, kCutterDown}));
  EXPECT_EQ(machine->position.last.x, 0);
}

TEST(EngraveTo, InGridModeCutsAtTheGridSpeed) {
  constexpr struct {
    std::uint32_t gridMode;
    const char* feed;
  } kCases[] = {
      {kRunEngraving, "G0 F3048.000\n"},
      {kRunGrid, "G0 F6096.000\n"},
      {kRunBrailleDrill, "G0 F3048.000\n"},
      {kRunBrailleBeadInsert, "G0 F3048.000\n"},
  };
  for (const auto& c : kCases) {
    Machine machine;
    machine.StandAt(0, 0, 4250, kCutterDown);
    machine->host.gridMode = c.gridMode;
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
    EXPECT_EQ(machine.Sent(), std::string{c.feed} + "G0 X12.700000 Y25.400000\n") << c.gridMode;
  }
}

TEST(Strokes, ADrawingTellsTheHostOfItsMovesAloneAndInOrder) {
  Machine machine;
  machine.StandAt(0, 0, 3500, kCutterUp);
  MoveTo(*machine, 2000, 4000);
  EngraveTo(*machine, 4000, 4000);
  MoveTo(*machine, 0, 0);
  EXPECT_EQ(machine.Tags(), (Tags{1, 2, 1, 4, 1}));
  ASSERT_TRUE(k7test::WaitUntil([&] { return machine.Told().size() == 9; }));
  std::vector<std::uint32_t> want;
  for (int i = 0; i < 3; ++i) {
    want.insert(want.end(), {TestMachine::kQueued, TestMachine::kStarted, TestMachine::kFinished});
  }
  EXPECT_EQ(machine.Told(), want);
}

}  // namespace
}  // namespace k7
