// What k7sim says at its end, and what its report and its transcript say of mistakes.
#include "app/summary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/report.h"
#include "tests/simulator/support/content.h"
#include "tests/simulator/support/rig.h"

namespace k7sim {
namespace {

using k7test::Rig;
using testing::HasSubstr;
using testing::StartsWith;

SimulatorSetup InchDeep(bool homed = true) {
  SimulatorSetup setup;
  setup.machine.surface = Surface(1);
  setup.machine.homed = homed;
  return setup;
}

std::string SummaryAfter(const SimulatorSetup& setup, const char* lines) {
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  rig.Send(lines);
  rig.TakeAt(1000);
  return Summary(rig.simulator);
}

TEST(Summary, TellsWhatWasCutInThreeLines) {
  EXPECT_EQ(SummaryAfter(InchDeep(), "M42\nG20\nG0 X1 Y1\nG0 Z1.05\nG0 X3\nG0 Y2\nG0 Z0.5\n"),
            "cut 3.0 in, 2 strokes, 0.050 in deep, 0 errors\n"
            "1000.0 s of machine time, 0 jobs, 5 moves, 3.0 in of travel; 7 lines in, 7 replies "
            "out\n"
            "head at X 3.000 Y 2.000 Z 0.500 in, homed, spindle on\n");
}

TEST(Summary, TellsOfHolesWhereNothingIsCutAlong) {
  EXPECT_THAT(SummaryAfter(InchDeep(), "M42\nG20\nG0 Z1.05\nG0 Z0.9\nG0 X1\nG0 Z1.05\n"),
              StartsWith("drilled 2 holes, 0.050 in deep, 0 errors\n"));
}

TEST(Summary, SaysWhyNothingWasCut) {
  EXPECT_THAT(SummaryAfter(InchDeep(), "G21\n"),
              StartsWith("nothing was cut: no moves were sent, "));
  EXPECT_THAT(SummaryAfter(InchDeep(), "G20\nG0 X1\nG0 Z0.4\n"),
              StartsWith("nothing was cut: the tool came no nearer to the plate than 0.600 in, "));
  SimulatorSetup air;
  air.machine.tool = ToolKind::Air;
  air.machine.homed = true;
  EXPECT_THAT(SummaryAfter(air, "G0 X1\n"),
              StartsWith("nothing was cut: the air head was never on"));
}

TEST(Summary, NamesTheFirstLineOfEachMistake) {
  EXPECT_THAT(
      SummaryAfter(InchDeep(false), "G20\nG0 X12.7\nG0 X13\nG0 Z1.5\n"),
      StartsWith("drilled 1 hole, 0.500 in deep; 3 moves before homing, the first at line 2: "
                 "G0 X12.7; 1 plunge with the spindle off, at line 4: G0 Z1.5\n"));
}

TEST(Summary, TellsHowTheMachineWasLeft) {
  Rig rig(WireKind::Uart, k7test::WithFault("match=G21,do=halt"));
  rig.Open();
  EXPECT_THAT(Summary(rig.simulator), HasSubstr("not homed, spindle off; a fault never fired\n"));
  rig.Send("G21\n");
  EXPECT_THAT(Summary(rig.simulator), HasSubstr("not homed, spindle off, halted\n"));
}

TEST(Mistakes, AreInTheReportWithLineTimeAndCommandAndMarkedInTheTranscript) {
  const std::string path = testing::TempDir() + "k7sim_mistakes_test";
  std::string report;
  {
    Rig rig(WireKind::Uart, InchDeep(false));
    rig.transcript.Open(path);
    rig.Open();
    rig.Send("G21\nG0 X12.7\n");
    rig.TakeAt(1);
    report = WriteReport(rig.simulator);
  }
  EXPECT_THAT(report, HasSubstr("\"error\": \"moveBeforeHoming\""));
  EXPECT_THAT(report, HasSubstr("\"what\": \"move before homing\""));
  EXPECT_THAT(report, HasSubstr("\"line\": 2,"));
  EXPECT_THAT(report, HasSubstr("\"seconds\": 0.1,"));
  EXPECT_THAT(report, HasSubstr("\"command\": \"G0 X12.7\""));
  EXPECT_EQ(k7test::Content(path),
            "> G21\n< ok\\n\n> G0 X12.7\n< ok\\n\n"
            "! error: move before homing, line 2: G0 X12.7\n");
}

}  // namespace
}  // namespace k7sim
