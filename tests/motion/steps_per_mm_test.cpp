#include "motion/move.h"

#include <gtest/gtest.h>

#include "motion/axes.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::TestMachine;

TEST(SetAxisStepsPerMm, KeepsTheValueAndTellsTheController) {
  TestMachine machine;
  machine->position.stepsPerMm.x = machine->position.stepsPerMm.y = machine->position.stepsPerMm.z =
      0.0f;
  SetAxisStepsPerMm(machine->link, machine->position, "X",
                    StepsPerInch(machine->mechanics, Axis::X) / 25.4f);
  SetAxisStepsPerMm(machine->link, machine->position, "Y", 100.0f);
  SetAxisStepsPerMm(machine->link, machine->position, "Z", 0.5f);
  EXPECT_EQ(machine.Sent(), "M92 X157.48032\nM92 Y100.00000\nM92 Z0.50000\n");
  EXPECT_EQ(machine->position.stepsPerMm.x, 4000.0f / 25.4f);
  EXPECT_EQ(machine->position.stepsPerMm.y, 100.0f);
  EXPECT_EQ(machine->position.stepsPerMm.z, 0.5f);
}

TEST(SetAxisStepsPerMm, TheDefaultsGiveTheSameNumberForEveryAxis) {
  TestMachine machine;
  SetAxisStepsPerMm(machine->link, machine->position, "X",
                    StepsPerInch(machine->mechanics, Axis::X) / 25.4f);
  SetAxisStepsPerMm(machine->link, machine->position, "Y",
                    StepsPerInch(machine->mechanics, Axis::Y) / 25.4f);
  SetAxisStepsPerMm(machine->link, machine->position, "Z",
                    StepsPerInch(machine->mechanics, Axis::Z) / 25.4f);
  EXPECT_EQ(machine.Sent(), "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\n");
}

TEST(SetAxisStepsPerMm, AnotherLetterIsKeptNowhereButSent) {
  TestMachine machine;
  const float before = machine->position.stepsPerMm.x;
  SetAxisStepsPerMm(machine->link, machine->position, "A", 2.5f);
  SetAxisStepsPerMm(machine->link, machine->position, "x", 2.5f);
  EXPECT_EQ(machine.Sent(), "M92 A2.50000\nM92 x2.50000\n");
  EXPECT_EQ(machine->position.stepsPerMm.x, before);
  EXPECT_EQ(machine->position.stepsPerMm.y, before);
  EXPECT_EQ(machine->position.stepsPerMm.z, before);
}

TEST(SetAxisStepsPerMm, WithoutAConnectionOrAnAxisDoesNothing) {
  TestMachine machine;
  const float before = machine->position.stepsPerMm.x;
  SetAxisStepsPerMm(machine->link, machine->position, nullptr, 2.5f);
  machine->link.connected = 0;
  SetAxisStepsPerMm(machine->link, machine->position, "X", 2.5f);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->position.stepsPerMm.x, before);
}

}  // namespace
}  // namespace k7
