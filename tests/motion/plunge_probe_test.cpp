#include <gtest/gtest.h>

#include <string>

#include "motion/plunge.h"
#include "support/raised_cutter.h"

namespace k7 {
namespace {

using k7test::kCut;
using k7test::kLowerings;
using k7test::kNoHome;
using k7test::Lowering;
using k7test::Stroke;

// What a probe of the semi-automatic mode sends, and the lift from a cutter home of 3900 steps:
// 3400. The feed of the plunge is set before it is known that a probe comes first.
const std::string kProbe = "G0 F762.000\nG30 F12.700\nG92 Z25.400000\n";
const std::string kProbeAndLift = kProbe + "G0 F381.000\nG0 Z21.590000\n";

struct AutomaticMachine : k7test::RaisedCutter {
  AutomaticMachine() { (*this)->tools.cutterMode = kCutterAutomatic; }
};

// Armed, with a probe that stands 100 steps out.
struct ArmedMachine : k7test::RaisedCutter {
  ArmedMachine() {
    (*this)->tools.cutterMode = kCutterSemiAutomatic;
    (*this)->tools.probeOnNextPlunge = 1;
    (*this)->tools.probeOffset = 0.025f;
  }
};

TEST(EngraveTo, InAutomaticModeProbesBeforeEveryPlunge) {
  AutomaticMachine machine;
  machine->position.cutterHome = 100;  // what was thought of the surface is forgotten
  // The probe's own feed is that of the plunge, and counts as sent.
  EXPECT_EQ(machine.Engrave(),
            (Stroke{kStatusSent, kProbe + "G0 Z26.987499\n" + kCut, {2, 1}, 1, kCutterDown}));
  EXPECT_EQ(machine->position.cutterHome, 4000);
  EXPECT_EQ(machine.CutterHomeInFile(), kNoHome);
}

TEST(EngraveTo, InAutomaticModeMayPassTheTableSurface) {
  AutomaticMachine machine;
  machine->position.tableSurface = 0;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine->position.last.z, 4250);
}

TEST(EngraveTo, InAutomaticModeMarksTheCutterDownEvenWithoutALine) {
  AutomaticMachine machine;
  machine->position.stepsPerMm.z = 0.0f;  // no position along Z can be expressed
  EXPECT_EQ(
      machine.Engrave(),
      (Stroke{kStatusSent, std::string{"G0 F762.000\nG30 F12.700\n"} + kCut, {1}, 0, kCutterDown}));
}

TEST(EngraveTo, InSemiAutomaticModeProbesOnceLiftsAndDoesNotCut) {
  ArmedMachine machine;
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusProbed, kProbeAndLift, {4}, 1, kCutterUp}));
  EXPECT_EQ(machine->position.cutterHome, 3900);
  EXPECT_EQ(machine.CutterHomeInFile(), 0.975f);
  EXPECT_EQ(machine->tools.probeOnNextPlunge, 0u);
  EXPECT_EQ(machine->position.last.x, 0);

  // The same stroke again is cut, from the surface that was found.
  const std::string plunge = "G0 F762.000\nG0 Z26.352499\n";
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusSent, plunge + kCut, {4, 2, 1}, 2, kCutterDown}));
}

TEST(EngraveTo, InSemiAutomaticModeReportsProbedWhenTheLiftChangesNothing) {
  ArmedMachine machine;
  machine->tools.probeOffset = machine->tools.cutterLift = 0.0f;
  EXPECT_EQ(machine.Engrave(), (Stroke{kStatusProbed, kProbe + "G0 F381.000\n", {}, 0, kCutterUp}));
}

TEST(EngraveTo, InSemiAutomaticModeHandsOnTheRefusalOfTheLift) {
  ArmedMachine machine;
  machine->position.tableSurface = 3000;
  EXPECT_EQ(machine.Engrave(),
            (Stroke{kStatusRefused, kProbe + "G0 F381.000\n", {}, 0, kCutterUp}));
  EXPECT_EQ(machine.CutterHomeInFile(), 0.975f);  // written before the lift
}

TEST(EngraveTo, InSemiAutomaticModeProbesWithTheSpindleStandingStill) {
  ArmedMachine machine;
  machine.FitSpindle();
  machine->spindle.spindleValue = 13000;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusProbed);
  EXPECT_EQ(machine.Sent(),
            "G0 F762.000\nM43\nG30 F12.700\nG92 Z25.400000\nG0 F381.000\nG0 Z21.590000\n");
}

TEST(LowerCutter, InAutomaticModeProbesFirst) {
  for (const Lowering& lowering : kLowerings) {
    AutomaticMachine machine;
    EXPECT_EQ(machine.Lower(lowering.lower),
              (Stroke{kStatusSent, kProbe + "G0 Z26.987499\n", {5}, 1, kCutterDown}))
        << lowering.name;
  }
}

TEST(LowerCutter, InSemiAutomaticModeProbesLiftsAndWritesNothing) {
  ArmedMachine machine;
  EXPECT_EQ(machine.Lower(&LowerCutter), (Stroke{kStatusProbed, kProbeAndLift, {4}, 1, kCutterUp}));
  EXPECT_EQ(machine->position.cutterHome, 3900);
  EXPECT_EQ(machine.CutterHomeInFile(), kNoHome);
  EXPECT_EQ(machine->tools.probeOnNextPlunge, 0u);
}

TEST(LowerCutter, InSemiAutomaticModeReportsProbedAlsoWhenTheLiftWasRefused) {
  ArmedMachine machine;
  machine->position.tableSurface = 3000;
  EXPECT_EQ(machine.Lower(&LowerCutter),
            (Stroke{kStatusProbed, kProbe + "G0 F381.000\n", {}, 0, kCutterUp}));
}

TEST(LowerCutterContinue, InSemiAutomaticModeProbesLiftsAndGoesOnToPlunge) {
  ArmedMachine machine;
  machine.FitSpindle();
  machine->tools.engraveType = 1;
  EXPECT_EQ(machine.Lower(&LowerCutterContinue),
            (Stroke{kStatusSent,
                    kProbeAndLift + "M42\nM44 S252\nG0 F762.000\nG0 Z26.352499\n",
                    {4, 5},
                    2,
                    kCutterDown}));
  EXPECT_EQ(machine->position.cutterHome, 3900);
  EXPECT_EQ(machine.CutterHomeInFile(), kNoHome);
  EXPECT_EQ(machine->tools.probeOnNextPlunge, 0u);
}

// KEEP: the operation that probes does not hand a refusal on.
TEST(LowerCutterContinue, InSemiAutomaticModeReportsOneAlsoWhenLiftOrPlungeWereRefused) {
  for (const std::int32_t surface : {3000, 4000}) {
    ArmedMachine machine;
    machine->position.tableSurface = surface;
    EXPECT_EQ(LowerCutterContinue(*machine), kStatusSent) << surface;
    EXPECT_EQ(machine.Sent(), surface == 3000 ? kProbe + "G0 F381.000\nG0 F762.000\n"
                                              : kProbeAndLift + "G0 F762.000\n");
    EXPECT_EQ(machine->tools.cutterState, kCutterUp) << surface;
  }
}

}  // namespace
}  // namespace k7
