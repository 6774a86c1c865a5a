#include "motion/strokes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::TestMachine;
using Tags = std::vector<int>;

constexpr char kTraverse[] = "G0 F1524.000\nG0 X12.700000 Y25.400000\n";

struct Machine : TestMachine {
  Machine() { OpenJob(); }
};

std::int32_t CutterModeInFile(const DeviceState& record) {
  return SettingsFile{record}.ReadInt(keys::kEngraveSettings, keys::kCutterMode, -1);
}

TEST(Strokes, WithoutAJobOrAConnectionDoNothing) {
  TestMachine machine;
  machine->firstMove = 1;
  for (const std::uint8_t connected : std::initializer_list<std::uint8_t>{1, 0}) {
    machine->connected = connected;
    EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusNothing);
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusNothing);
    EXPECT_EQ(LowerCutter(*machine), kStatusNothing);
    EXPECT_EQ(LowerCutterContinue(*machine), kStatusNothing);
  }
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->firstMove, 1);
}

TEST(Strokes, InAJobButWithoutAConnectionDoNothing) {
  Machine machine;
  machine->connected = 0;
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(LowerCutter(*machine), kStatusNothing);
  EXPECT_EQ(LowerCutterContinue(*machine), kStatusNothing);
  machine->connected = 1;
  EXPECT_EQ(machine.Sent(), "");
}

TEST(MoveTo, TheFirstOfAJobTraversesWithoutALift) {
  for (const std::uint32_t mode : {kCutterNone, kCutterAutomatic, kCutterAirZ}) {
    Machine machine;
    machine->cutterMode = mode;
    machine->firstMove = 1;
    machine->cutterState = kCutterDown;
    EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusSent) << mode;
    EXPECT_EQ(machine.Sent(), kTraverse) << mode;
    EXPECT_EQ(machine.Tags(), (Tags{1})) << mode;
    EXPECT_EQ(machine->firstMove, 0) << mode;
    EXPECT_EQ(machine->zMoveCount, 0) << mode;
    EXPECT_EQ(machine->cutterState, kCutterDown) << mode;
  }
}

TEST(MoveTo, TheFirstOfAJobToWhereTheMachineStandsSendsItsFeedOnly) {
  Machine machine;
  machine->firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 0, 0), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "G0 F1524.000\n");
  EXPECT_TRUE(machine.Tags().empty());
  EXPECT_EQ(machine->firstMove, 0);
}

TEST(MoveTo, TheFirstOfAJobInManualModeUsesTheModeUp) {
  Machine machine;
  machine->cutterMode = kCutterManual;
  machine->firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusOneShot);
  EXPECT_EQ(machine.Sent(), kTraverse);
  EXPECT_EQ(machine.Tags(), (Tags{1}));
  EXPECT_EQ(machine->cutterMode, kCutterNone);
  EXPECT_EQ(CutterModeInFile(*machine), 0);
  EXPECT_EQ(machine->plungeHold, 1);
  EXPECT_EQ(machine->probeOnNextPlunge, 0u);
}

TEST(MoveTo, TheFirstOfAJobInSemiAutomaticModeArmsTheProbe) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusArmed);
  EXPECT_EQ(machine.Sent(), kTraverse);
  EXPECT_EQ(machine.Tags(), (Tags{1}));
  EXPECT_EQ(machine->cutterMode, kCutterSemiAutomatic);
  EXPECT_EQ(CutterModeInFile(*machine), -1);
  EXPECT_EQ(machine->plungeHold, 1);
  EXPECT_EQ(machine->probeOnNextPlunge, 1u);
}

TEST(MoveTo, TheStatusOfTheFirstOfAJobDoesNotAskWhetherAnythingMoved) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 0, 0), kStatusArmed);
  machine->cutterMode = kCutterManual;
  machine->firstMove = 1;
  EXPECT_EQ(MoveTo(*machine, 0, 0), kStatusOneShot);
}

TEST(MoveTo, WithTheCutterUpOnlyTraverses) {
  Machine machine;
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), kTraverse);
  EXPECT_EQ(machine.Tags(), (Tags{1}));
  EXPECT_EQ(MoveTo(*machine, 2000, 2000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Y12.700000\n");  // the feed is unchanged
}

TEST(MoveTo, WithTheCutterDownLiftsFirst) {
  for (const std::uint32_t mode :
       {kCutterNone, kCutterManual, kCutterAutomatic, kCutterSemiAutomatic}) {
    Machine machine;
    machine->cutterMode = mode;
    machine.StandAt(0, 0, 4250, kCutterDown);
    EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusSent) << mode;
    EXPECT_EQ(machine.Sent(), std::string{"G0 F381.000\nG0 Z22.225000\n"} + kTraverse) << mode;
    EXPECT_EQ(machine.Tags(), (Tags{4, 1})) << mode;
    EXPECT_EQ(machine->zMoveCount, 1) << mode;
    EXPECT_EQ(machine->cutterState, kCutterUp) << mode;
  }
}

TEST(MoveTo, OfThePneumaticHeadWaitsUntilItIsUp) {
  Machine machine;
  machine->cutterMode = kCutterAirZ;
  machine.StandAt(0, 0, 4250, kCutterDown);
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), std::string{"G0 F381.000\nG0 Z22.225000\nM43\n"} + kTraverse);
  EXPECT_EQ(machine.Tags(), (Tags{4, 1}));
}

TEST(MoveTo, OfThePneumaticHeadDoesNotWaitForALiftThatWasNotSent) {
  Machine machine;
  machine->cutterMode = kCutterAirZ;
  machine.StandAt(0, 0, 3500, kCutterDown);
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), std::string{"G0 F381.000\n"} + kTraverse);
}

TEST(MoveTo, WhereTheMachineStandsDoesNotEvenLift) {
  Machine machine;
  machine.StandAt(2000, 4000, 4250, kCutterDown);
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->cutterState, kCutterDown);
}

TEST(MoveTo, ALiftThatChangesNothingLeavesTheCutterMarkedDown) {
  Machine machine;
  machine.StandAt(0, 0, 3500, kCutterDown);
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), std::string{"G0 F381.000\n"} + kTraverse);
  EXPECT_EQ(machine->cutterState, kCutterDown);
  EXPECT_EQ(machine->zMoveCount, 0);
}

TEST(MoveTo, DoesNotTraverseWithACutterWhoseLiftIsRefused) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->tableSurface = 3000;
  EXPECT_EQ(MoveTo(*machine, 2000, 4000), kStatusRefused);
  EXPECT_EQ(machine.Sent(), "G0 F381.000\n");
  EXPECT_EQ(machine->lastX, 0);
  EXPECT_TRUE(machine.Tags().empty());
}

TEST(MoveTo, MapsHostStepsByFactorAndTableHome) {
  Machine machine;
  machine->xAxisFactor = 2;
  machine->tableHomeX = 1000;
  machine->tableHomeY = 2000;
  EXPECT_EQ(MoveTo(*machine, 500, 2000), kStatusSent);
  EXPECT_EQ(machine.Sent(), kTraverse);
}

TEST(EngraveTo, WhereTheMachineStandsDoesNotEvenPlunge) {
  Machine machine;
  machine.StandAt(2000, 4000, 3500, kCutterUp);
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->cutterState, kCutterUp);
}

TEST(EngraveTo, PlungesAndCuts) {
  Machine machine;
  machine.StandAt(0, 0, 3500, kCutterUp);
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 F762.000\nG0 Z26.987499\nG0 F3048.000\nG0 X12.700000 Y25.400000\n");
  EXPECT_EQ(machine.Tags(), (Tags{2, 1}));
  EXPECT_EQ(machine->zMoveCount, 1);
  EXPECT_EQ(machine->cutterState, kCutterDown);
}

TEST(EngraveTo, WithTheCutterDownOnlyCuts) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 F3048.000\nG0 X12.700000 Y25.400000\n");
  EXPECT_EQ(machine.Tags(), (Tags{1}));
  EXPECT_EQ(machine->zMoveCount, 0);
}

TEST(EngraveTo, WithTheCutterDownFollowsANewPassDepthAtTheFeedInForce) {
  for (const std::uint32_t mode :
       {kCutterNone, kCutterManual, kCutterAutomatic, kCutterSemiAutomatic}) {
    Machine machine;
    machine->cutterMode = mode;
    machine.StandAt(0, 0, 4250, kCutterDown);
    machine->passDepth = 0.125f;
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent) << mode;
    EXPECT_EQ(machine.Sent(), "G0 Z28.574999\nG0 F3048.000\nG0 X12.700000 Y25.400000\n") << mode;
    EXPECT_EQ(machine.Tags(), (Tags{2, 1})) << mode;
    EXPECT_EQ(machine->zMoveCount, 1) << mode;
  }
}

TEST(EngraveTo, WithThePneumaticHeadDownNeverPlungesAgain) {
  Machine machine;
  machine->cutterMode = kCutterAirZ;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->engraveDepth = machine->passDepth = 0.125f;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 F3048.000\nG0 X12.700000 Y25.400000\n");
}

TEST(EngraveTo, HandsOnTheRefusalOfASecondPlunge) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->passDepth = 1.5f;  // 6000 steps below 4000: the surface is at 8000
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusRefused);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->lastX, 0);
}

TEST(EngraveTo, InGridModeCutsAtTheGridSpeed) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterDown);
  machine->gridMode = kRunGrid;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 F6096.000\nG0 X12.700000 Y25.400000\n");
  for (const std::uint32_t mode : {kRunEngraving, kRunBrailleDrill, kRunBrailleBeadInsert}) {
    machine->gridMode = mode;
    machine->lastFeedText[0] = '\0';
    machine.StandAt(0, 0, 4250, kCutterDown);
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent) << mode;
    EXPECT_EQ(machine.Sent(), "G0 F3048.000\nG0 X12.700000 Y25.400000\n") << mode;
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
