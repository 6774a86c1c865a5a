#include "motion/plunge.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "device/polling.h"
#include "motion/strokes.h"
#include "support/raised_cutter.h"

namespace k7 {
namespace {

using k7test::kNoHome;
using Machine = k7test::RaisedCutter;
using Tags = std::vector<int>;

constexpr char kCut[] = "G0 F3048.000\nG0 X12.700000 Y25.400000\n";
constexpr char kDown[] = "G0 F762.000\nG0 Z26.987499\n";

std::string Text(std::initializer_list<const char*> parts) {
  std::string text;
  for (const char* part : parts) text += part;
  return text;
}

TEST(EngraveTo, InTheModesThatKnowTheSurfacePlungesAtOnce) {
  for (const std::uint32_t mode : {kCutterNone, kCutterManual, kCutterSemiAutomatic}) {
    Machine machine;
    machine->cutterMode = mode;
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent) << mode;
    EXPECT_EQ(machine.Sent(), Text({kDown, kCut})) << mode;
    EXPECT_EQ(machine.Tags(), (Tags{2, 1})) << mode;
    EXPECT_EQ(machine->zMoveCount, 1) << mode;
    EXPECT_EQ(machine->cutterState, kCutterDown) << mode;
    EXPECT_EQ(machine.CutterHomeInFile(), kNoHome) << mode;
  }
}

TEST(EngraveTo, PlungesToThePassDepthAndNotToTheWholeDepth) {
  Machine machine;
  machine->engraveDepth = 0.5f;
  machine->passDepth = 0.125f;
  EngraveTo(*machine, 2000, 4000);
  EXPECT_EQ(machine.Sent(), Text({"G0 F762.000\nG0 Z28.574999\n", kCut}));
}

TEST(EngraveTo, PlungesAtLeastOneThousandthOfAnInch) {
  Machine machine;
  machine->passDepth = 0.0001f;
  EngraveTo(*machine, 2000, 4000);
  EXPECT_EQ(machine.Sent(), Text({"G0 F762.000\nG0 Z25.425400\n", kCut}));
  EXPECT_EQ(machine->lastZ, 4004);
}

TEST(EngraveTo, OfThePneumaticHeadWaitsUntilItIsDown) {
  Machine machine;
  machine->cutterMode = kCutterAirZ;
  machine->engraveDepth = 0.01f;
  machine->passDepth = 0.5f;  // of no account here
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), Text({"G0 F762.000\nG0 Z25.653999\nM42\n", kCut}));
  EXPECT_EQ(machine.Tags(), (Tags{2, 1}));
  EXPECT_EQ(machine->lastZ, 4040);
}

TEST(EngraveTo, HandsOnTheRefusalOfThePlungeAndDoesNotCut) {
  for (const std::uint32_t mode : {kCutterNone, kCutterManual, kCutterSemiAutomatic, kCutterAirZ}) {
    Machine machine;
    machine->cutterMode = mode;
    machine->tableSurface = 4100;
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusRefused) << mode;
    EXPECT_EQ(machine.Sent(), "G0 F762.000\n") << mode;
    EXPECT_TRUE(machine.Tags().empty()) << mode;
    EXPECT_EQ(machine->cutterState, kCutterUp) << mode;
    EXPECT_EQ(machine->lastX, 0) << mode;
  }
}

TEST(EngraveTo, CutsWithTheCutterMarkedUpWhenZIsThereAlready) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterUp);
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), Text({"G0 F762.000\n", kCut}));
  EXPECT_EQ(machine->cutterState, kCutterUp);
  EXPECT_EQ(machine.Tags(), (Tags{1}));
}

TEST(EngraveTo, WaitsOutTheEngraveDelayBeforeTheCut) {
  for (const std::uint32_t mode : {kCutterNone, kCutterAutomatic}) {
    Machine machine;
    machine->cutterMode = mode;
    machine->engraveDelayMs = 200;
    const std::uint32_t start = TickMs();
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent) << mode;
    EXPECT_GE(TickMs() - start, 180u) << mode;
  }
}

TEST(EngraveTo, WaitsOutTheEngraveDelayOfADeeperPass) {
  Machine machine;
  machine.StandAt(0, 0, 4200, kCutterDown);
  machine->engraveDelayMs = 200;
  const std::uint32_t start = TickMs();
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_GE(TickMs() - start, 180u);
}

TEST(EngraveTo, RunsTheSpindleWhileTheCutterIsDownAsTheEngraveTypeWantsIt) {
  Machine machine;
  machine.FitSpindle();
  machine->engraveType = 1;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), Text({kDown, "M42\nM44 S252\n", kCut}));
}

TEST(EngraveTo, InSemiAutomaticModeStartsTheSpindleBeforeThePlunge) {
  Machine machine;
  machine.FitSpindle();
  machine->cutterMode = kCutterSemiAutomatic;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  // KEEP: and stops it after the plunge when the engrave type does not want it.
  EXPECT_EQ(machine.Sent(), Text({"G0 F762.000\nM42\nM44 S252\nG0 Z26.987499\nM43\n", kCut}));
}

struct Lowering {
  const char* name;
  std::uint32_t (*lower)(DeviceState&) noexcept;
};
constexpr Lowering kLowerings[] = {{"LowerCutter", &LowerCutter},
                                   {"LowerCutterContinue", &LowerCutterContinue}};

TEST(LowerCutter, PlungesAtThePresentPlaceAndTellsTheHost) {
  for (const Lowering& lowering : kLowerings) {
    for (const std::uint32_t mode : {kCutterNone, kCutterManual, kCutterSemiAutomatic}) {
      Machine machine;
      machine->cutterMode = mode;
      EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name << mode;
      EXPECT_EQ(machine.Sent(), kDown) << lowering.name << mode;
      EXPECT_EQ(machine.Tags(), (Tags{5})) << lowering.name << mode;
      EXPECT_EQ(machine->zMoveCount, 1) << lowering.name << mode;
      EXPECT_EQ(machine->cutterState, kCutterDown) << lowering.name << mode;
      EXPECT_TRUE(k7test::WaitUntil([&] { return machine.Told().size() == 3; }));
    }
  }
}

TEST(LowerCutter, WithTheCutterDownDoesNothing) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->cutterState = kCutterDown;
    EXPECT_EQ(lowering.lower(*machine), kStatusNothing) << lowering.name;
    EXPECT_EQ(machine.Sent(), "") << lowering.name;
  }
}

TEST(LowerCutter, WhereZIsAlreadyReturnsZeroAndLeavesTheCutterMarkedUp) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine.StandAt(0, 0, 4250, kCutterUp);
    EXPECT_EQ(lowering.lower(*machine), kStatusNothing) << lowering.name;
    EXPECT_EQ(machine->cutterState, kCutterUp) << lowering.name;
    EXPECT_TRUE(machine.Tags().empty()) << lowering.name;
  }
}

TEST(LowerCutter, HandsOnARefusal) {
  for (const Lowering& lowering : kLowerings) {
    for (const std::uint32_t mode :
         {kCutterNone, kCutterManual, kCutterSemiAutomatic, kCutterAirZ}) {
      Machine machine;
      machine->cutterMode = mode;
      machine->tableSurface = 4100;
      EXPECT_EQ(lowering.lower(*machine), kStatusRefused) << lowering.name << mode;
      EXPECT_EQ(machine.Sent(), "G0 F762.000\n") << lowering.name << mode;
      EXPECT_EQ(machine->cutterState, kCutterUp) << lowering.name << mode;
    }
  }
}

TEST(LowerCutter, OfThePneumaticHeadWaitsForNothingButADwell) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->cutterMode = kCutterAirZ;
    machine->engraveDepth = 0.01f;
    EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name;
    EXPECT_TRUE(machine.WaitUntilIdle()) << lowering.name;
    // The reader switches the head for the plunge of a cut only.
    EXPECT_EQ(machine.Sent(), "G0 F762.000\nG0 Z25.653999\n") << lowering.name;
    EXPECT_EQ(machine.Tags(), (Tags{5})) << lowering.name;
  }
}

TEST(LowerCutter, WaitsOutTheEngraveDelay) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->engraveDelayMs = 200;
    const std::uint32_t start = TickMs();
    EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name;
    EXPECT_GE(TickMs() - start, 180u) << lowering.name;
  }
}

}  // namespace
}  // namespace k7
