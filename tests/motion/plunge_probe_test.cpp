#include "motion/plunge.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "motion/strokes.h"
#include "support/raised_cutter.h"

namespace k7 {
namespace {

using k7test::kNoHome;
using Machine = k7test::RaisedCutter;
using Tags = std::vector<int>;

constexpr char kCut[] = "G0 F3048.000\nG0 X12.700000 Y25.400000\n";

std::string Text(std::initializer_list<const char*> parts) {
  std::string text;
  for (const char* part : parts) text += part;
  return text;
}

TEST(EngraveTo, InAutomaticModeProbesBeforeEveryPlunge) {
  Machine machine;
  machine->cutterMode = kCutterAutomatic;
  machine->cutterHome = 100;  // what was thought of the surface is forgotten
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  // The probe's own feed is that of the plunge, and counts as sent.
  EXPECT_EQ(machine.Sent(),
            Text({"G0 F762.000\nG30 F12.700\nG92 Z25.400000\nG0 Z26.987499\n", kCut}));
  EXPECT_EQ(machine.Tags(), (Tags{2, 1}));
  EXPECT_EQ(machine->cutterHome, 4000);
  EXPECT_EQ(machine->zMoveCount, 1);
  EXPECT_EQ(machine->cutterState, kCutterDown);
  EXPECT_EQ(machine.CutterHomeInFile(), kNoHome);
}

TEST(EngraveTo, InAutomaticModeMayPassTheTableSurface) {
  Machine machine;
  machine->cutterMode = kCutterAutomatic;
  machine->tableSurface = 0;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine->lastZ, 4250);
}

TEST(EngraveTo, InAutomaticModeMarksTheCutterDownEvenWithoutALine) {
  Machine machine;
  machine->cutterMode = kCutterAutomatic;
  machine->stepsPerMmZ = 0.0f;  // no position along Z can be expressed
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine->cutterState, kCutterDown);
  EXPECT_EQ(machine->zMoveCount, 0);
  EXPECT_EQ(machine.Tags(), (Tags{1}));
}

TEST(EngraveTo, InSemiAutomaticModeProbesOnceLiftsAndDoesNotCut) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  machine->probeOffset = 0.025f;  // 100 steps
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusProbed);
  // Lift: 4000 - 100 - 500 = 3400 steps.
  EXPECT_EQ(machine.Sent(),
            "G0 F762.000\nG30 F12.700\nG92 Z25.400000\nG0 F381.000\nG0 Z21.590000\n");
  EXPECT_EQ(machine.Tags(), (Tags{4}));
  EXPECT_EQ(machine->cutterHome, 3900);
  EXPECT_EQ(machine.CutterHomeInFile(), 3900.0f / 4000.0f);
  EXPECT_EQ(machine->zMoveCount, 1);
  EXPECT_EQ(machine->cutterState, kCutterUp);
  EXPECT_EQ(machine->probeOnNextPlunge, 0u);
  EXPECT_EQ(machine->lastX, 0);

  // The same stroke again is cut, from the surface that was found.
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), Text({"G0 F762.000\nG0 Z26.352499\n", kCut}));
}

TEST(EngraveTo, InSemiAutomaticModeReportsProbedWhenTheLiftChangesNothing) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  machine->cutterLift = 0.0f;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusProbed);
  EXPECT_TRUE(machine.Tags().empty());
  EXPECT_EQ(machine->zMoveCount, 0);
}

TEST(EngraveTo, InSemiAutomaticModeHandsOnTheRefusalOfTheLift) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  machine->tableSurface = 3000;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusRefused);
  EXPECT_EQ(machine.CutterHomeInFile(), 1.0f);  // written before the lift
  EXPECT_TRUE(machine.Tags().empty());
}

TEST(EngraveTo, InSemiAutomaticModeProbesWithTheSpindleStandingStill) {
  Machine machine;
  machine.FitSpindle();
  machine->spindleValue = 13000;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusProbed);
  EXPECT_EQ(machine.Sent(),
            "G0 F762.000\nM43\nG30 F12.700\nG92 Z25.400000\nG0 F381.000\nG0 Z22.225000\n");
}

struct Lowering {
  const char* name;
  std::uint32_t (*lower)(DeviceState&) noexcept;
};
constexpr Lowering kLowerings[] = {{"LowerCutter", &LowerCutter},
                                   {"LowerCutterContinue", &LowerCutterContinue}};

TEST(LowerCutter, InAutomaticModeProbesFirst) {
  for (const Lowering& lowering : kLowerings) {
    Machine machine;
    machine->cutterMode = kCutterAutomatic;
    EXPECT_EQ(lowering.lower(*machine), kStatusSent) << lowering.name;
    EXPECT_EQ(machine.Sent(), "G0 F762.000\nG30 F12.700\nG92 Z25.400000\nG0 Z26.987499\n")
        << lowering.name;
    EXPECT_EQ(machine.Tags(), (Tags{5})) << lowering.name;
    EXPECT_EQ(machine->cutterState, kCutterDown) << lowering.name;
  }
}

TEST(LowerCutter, InSemiAutomaticModeProbesLiftsAndWritesNothing) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  machine->probeOffset = 0.025f;
  EXPECT_EQ(LowerCutter(*machine), kStatusProbed);
  EXPECT_EQ(machine.Sent(),
            "G0 F762.000\nG30 F12.700\nG92 Z25.400000\nG0 F381.000\nG0 Z21.590000\n");
  EXPECT_EQ(machine.Tags(), (Tags{4}));
  EXPECT_EQ(machine->cutterHome, 3900);
  EXPECT_EQ(machine.CutterHomeInFile(), kNoHome);
  EXPECT_EQ(machine->cutterState, kCutterUp);
  EXPECT_EQ(machine->probeOnNextPlunge, 0u);
  EXPECT_EQ(machine->zMoveCount, 1);
}

TEST(LowerCutter, InSemiAutomaticModeReportsProbedAlsoWhenTheLiftWasRefused) {
  Machine machine;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  machine->tableSurface = 3000;
  EXPECT_EQ(LowerCutter(*machine), kStatusProbed);
  EXPECT_TRUE(machine.Tags().empty());
}

TEST(LowerCutterContinue, InSemiAutomaticModeProbesLiftsAndGoesOnToPlunge) {
  Machine machine;
  machine.FitSpindle();
  machine->engraveType = 1;
  machine->cutterMode = kCutterSemiAutomatic;
  machine->probeOnNextPlunge = 1;
  machine->probeOffset = 0.025f;
  EXPECT_EQ(LowerCutterContinue(*machine), kStatusSent);
  EXPECT_EQ(machine.Sent(),
            "G0 F762.000\nG30 F12.700\nG92 Z25.400000\nG0 F381.000\nG0 Z21.590000\n"
            "M42\nM44 S252\nG0 F762.000\nG0 Z26.352499\n");
  EXPECT_EQ(machine.Tags(), (Tags{4, 5}));
  EXPECT_EQ(machine->cutterHome, 3900);
  EXPECT_EQ(machine.CutterHomeInFile(), kNoHome);
  EXPECT_EQ(machine->cutterState, kCutterDown);
  EXPECT_EQ(machine->probeOnNextPlunge, 0u);
  EXPECT_EQ(machine->zMoveCount, 2);
}

}  // namespace
}  // namespace k7
