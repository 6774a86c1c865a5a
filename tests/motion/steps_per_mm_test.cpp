#include "motion/steps_per_mm.h"

#include <gtest/gtest.h>

#include "motion/units.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::TestMachine;

TEST(SetAxisStepsPerMm, KeepsTheValueAndTellsTheController) {
  TestMachine machine;
  machine->stepsPerMmX = machine->stepsPerMmY = machine->stepsPerMmZ = 0.0f;
  SetAxisStepsPerMm(*machine, "X", StepsPerInchX(*machine) / 25.4f);
  SetAxisStepsPerMm(*machine, "Y", 100.0f);
  SetAxisStepsPerMm(*machine, "Z", 0.5f);
  EXPECT_EQ(machine.Sent(), "M92 X157.48032\nM92 Y100.00000\nM92 Z0.50000\n");
  EXPECT_EQ(machine->stepsPerMmX, 4000.0f / 25.4f);
  EXPECT_EQ(machine->stepsPerMmY, 100.0f);
  EXPECT_EQ(machine->stepsPerMmZ, 0.5f);
}

TEST(SetAxisStepsPerMm, TheDefaultsGiveTheSameNumberForEveryAxis) {
  TestMachine machine;
  SetAxisStepsPerMm(*machine, "X", StepsPerInchX(*machine) / 25.4f);
  SetAxisStepsPerMm(*machine, "Y", StepsPerInchY(*machine) / 25.4f);
  SetAxisStepsPerMm(*machine, "Z", StepsPerInchZ(*machine) / 25.4f);
  EXPECT_EQ(machine.Sent(), "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\n");
}

TEST(SetAxisStepsPerMm, AnotherLetterIsKeptNowhereButSent) {
  TestMachine machine;
  const float before = machine->stepsPerMmX;
  SetAxisStepsPerMm(*machine, "A", 2.5f);
  SetAxisStepsPerMm(*machine, "x", 2.5f);
  EXPECT_EQ(machine.Sent(), "M92 A2.50000\nM92 x2.50000\n");
  EXPECT_EQ(machine->stepsPerMmX, before);
  EXPECT_EQ(machine->stepsPerMmY, before);
  EXPECT_EQ(machine->stepsPerMmZ, before);
}

TEST(SetAxisStepsPerMm, WithoutAConnectionOrAnAxisDoesNothing) {
  TestMachine machine;
  const float before = machine->stepsPerMmX;
  SetAxisStepsPerMm(*machine, nullptr, 2.5f);
  machine->connected = 0;
  SetAxisStepsPerMm(*machine, "X", 2.5f);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->stepsPerMmX, before);
}

}  // namespace
}  // namespace k7
