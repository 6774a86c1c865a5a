#include "motion/plunge.h"

#include <gtest/gtest.h>

#include <string>

#include "device/polling.h"
#include "support/host_call.h"
#include "support/raised_cutter.h"

namespace k7 {
namespace {

using k7test::HostCall;
using k7test::kCut;
using k7test::kLowerings;
using k7test::kNoHome;
using k7test::Lowering;
using k7test::Stroke;
using Machine = k7test::RaisedCutter;

const std::string kDown = "G0 F762.000\nG0 Z26.987499\n";

TEST(EngraveTo, InTheModesThatKnowTheSurfacePlungesAtOnce) {
  for (const std::uint32_t mode : {kCutterNone, kCutterManual, kCutterSemiAutomatic}) {
    Machine machine;
    machine->tools.cutterMode = mode;
    EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, kDown + kCut, {2, 1}, 1, kCutterDown}))
        << mode;
    EXPECT_EQ(machine.CutterHomeInFile(), kNoHome) << mode;
  }
}

TEST(EngraveTo, PlungesToThePassDepthAndNotToTheWholeDepth) {
  Machine machine;
  machine->tools.engraveDepth = 0.5f;
  machine->passes.passDepth = 0.125f;
  const std::string plunge = "G0 F762.000\nG0 Z28.574999\n";
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, plunge + kCut, {2, 1}, 1, kCutterDown}));
}

TEST(EngraveTo, PlungesAtLeastOneThousandthOfAnInch) {
  Machine machine;
  machine->passes.passDepth = 0.0001f;
  const std::string plunge = "G0 F762.000\nG0 Z25.425400\n";
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, plunge + kCut, {2, 1}, 1, kCutterDown}));
  EXPECT_EQ(machine->position.last.z, 4004);
}

TEST(EngraveTo, OfThePneumaticHeadWaitsUntilItIsDown) {
  Machine machine;
  machine->tools.cutterMode = kCutterAirZ;
  machine->tools.engraveDepth = 0.01f;
  machine->passes.passDepth = 0.5f;  // of no account here
  const std::string plunge = "G0 F762.000\nG0 Z25.653999\nM42\n";
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, plunge + kCut, {2, 1}, 1, kCutterDown}));
  EXPECT_EQ(machine->position.last.z, 4040);
}

TEST(EngraveTo, HandsOnTheRefusalOfThePlungeAndDoesNotCut) {
  for (const std::uint32_t mode : {kCutterNone, kCutterManual, kCutterSemiAutomatic, kCutterAirZ}) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine->position.tableSurface = 4030;
    EXPECT_EQ(machine.Engrave(), (Stroke{kStatusRefused, "G0 F762.000\n", {}, 0, kCutterUp}))
        << mode;
    EXPECT_EQ(machine->position.last.x, 0) << mode;
  }
}

TEST(EngraveTo, CutsWithTheCutterMarkedUpWhenZIsThereAlready) {
  Machine machine;
  machine.StandAt(0, 0, 4250, kCutterUp);
  EXPECT_EQ(machine.Engrave(),
            (Stroke{kStatusSent, std::string{"G0 F762.000\n"} + kCut, {1}, 0, kCutterUp}));
}

// The end of the plunge is reported by hand: the cut is not sent before it, nor before the dwell.
TEST(EngraveTo, WaitsOutTheEngraveDelayBeforeTheCut) {
  for (const std::uint32_t mode : {kCutterNone, kCutterAutomatic}) {
    Machine machine;
    machine->tools.cutterMode = mode;
    machine->tools.engraveDelayMs = 200;
    machine.controller.AnswerMoves(false);
    const HostCall host{[&] { EngraveTo(*machine, 2000, 4000); }};
    EXPECT_TRUE(machine.controller.WaitForLine("G0 Z26.987499\n")) << mode;
    EXPECT_TRUE(host.Waits()) << mode;
    const std::uint32_t start = TickMs();
    machine.controller.Say("QX\r\nBX\r\nEX\r\n");
    EXPECT_TRUE(host.Returns()) << mode;
    EXPECT_GE(TickMs() - start, 200u) << mode;
    EXPECT_TRUE(machine.Sent().ends_with(kDown.substr(12) + kCut)) << mode;
  }
}

TEST(EngraveTo, WaitsOutTheEngraveDelayOfADeeperPass) {
  Machine machine;
  machine.StandAt(0, 0, 4200, kCutterDown);
  machine->tools.engraveDelayMs = 200;
  const std::uint32_t start = TickMs();
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_GE(TickMs() - start, 200u);
}

TEST(EngraveTo, RunsTheSpindleWhileTheCutterIsDownAsTheEngraveTypeWantsIt) {
  for (const std::uint32_t engraveType : {0u, 1u, 2u}) {
    Machine machine;
    machine.FitSpindle();
    machine->tools.engraveType = engraveType;
    machine->spindle.spindleValue = engraveType == 0 ? 13000 : 0;  // as it should not be
    EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
    EXPECT_EQ(machine.Sent(), kDown + (engraveType == 0 ? "M43\n" : "M42\nM44 S252\n") + kCut);
  }
}

TEST(EngraveTo, InSemiAutomaticModeStartsTheSpindleBeforeThePlunge) {
  Machine machine;
  machine.FitSpindle();
  machine->tools.cutterMode = kCutterSemiAutomatic;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  // KEEP: and stops it after the plunge when the engrave type does not want it.
  EXPECT_EQ(machine.Sent(), std::string{"G0 F762.000\nM42\nM44 S252\nG0 Z26.987499\nM43\n"} + kCut);
}

TEST(LowerCutter, PlungesAtThePresentPlaceAndTellsTheHost) {
  for (const Lowering& lowering : kLowerings) {
    for (const std::uint32_t mode : {kCutterNone, kCutterManual, kCutterSemiAutomatic}) {
      Machine machine;
      machine->tools.cutterMode = mode;
      EXPECT_EQ(machine.Lower(lowering.lower), (Stroke{kStatusSent, kDown, {5}, 1, kCutterDown}))
          << lowering.name << mode;
      EXPECT_TRUE(k7test::WaitUntil([&] { return machine.Told().size() == 3; }));
    }
  }
}

TEST(LowerCutter, WithTheCutterDownDoesNothing) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->tools.cutterState = kCutterDown;
    EXPECT_EQ(machine.Lower(lowering.lower), (Stroke{kStatusNothing, "", {}, 0, kCutterDown}))
        << lowering.name;
  }
}

TEST(LowerCutter, WhereZIsAlreadyReturnsZeroAndLeavesTheCutterMarkedUp) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine.StandAt(0, 0, 4250, kCutterUp);
    EXPECT_EQ(machine.Lower(lowering.lower),
              (Stroke{kStatusNothing, "G0 F762.000\n", {}, 0, kCutterUp}))
        << lowering.name;
  }
}

TEST(LowerCutter, HandsOnARefusal) {
  for (const Lowering& lowering : kLowerings) {
    for (const std::uint32_t mode :
         {kCutterNone, kCutterManual, kCutterSemiAutomatic, kCutterAirZ}) {
      Machine machine;
      machine->tools.cutterMode = mode;
      machine->position.tableSurface = 4030;
      EXPECT_EQ(machine.Lower(lowering.lower),
                (Stroke{kStatusRefused, "G0 F762.000\n", {}, 0, kCutterUp}))
          << lowering.name << mode;
    }
  }
}

TEST(LowerCutter, OfThePneumaticHeadWaitsForNothingButADwell) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->tools.cutterMode = kCutterAirZ;
    machine->tools.engraveDepth = 0.01f;
    EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name;
    EXPECT_TRUE(machine.WaitUntilIdle()) << lowering.name;
    // The reader switches the head for the plunge of a cut only.
    EXPECT_EQ(machine.Sent(), "G0 F762.000\nG0 Z25.653999\n") << lowering.name;
    EXPECT_EQ(machine.Tags(), (std::vector<int>{5})) << lowering.name;
  }
}

TEST(LowerCutter, WaitsOutTheEngraveDelay) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->tools.engraveDelayMs = 200;
    const std::uint32_t start = TickMs();
    EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name;
    EXPECT_GE(TickMs() - start, 200u) << lowering.name;
  }
}

TEST(LowerCutter, RunsTheSpindleAsTheEngraveTypeWantsIt) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine.FitSpindle();
    machine->tools.engraveType = 1;
    EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name;
    EXPECT_EQ(machine.Sent(), kDown + "M42\nM44 S252\n") << lowering.name;
  }
}

}  // namespace
}  // namespace k7
