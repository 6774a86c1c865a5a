// Whole jobs: the reference host, the driver and the simulated machine together.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdio>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr char kId[] = "ENDTOENDJOB00001";

TEST(Job, TheSamplePlateIsCutAsDrawnTwiceTheSame) {
  std::string first;
  for (int run = 0; run < 2; ++run) {
    FreshController controller(kId, EngraversSettings(), EngraversTable());
    const HostRun host = RunHost({"engrave", Sample("plate.plt"), "--id", kId, "--batch"});
    EXPECT_EQ(host.exitCode, 0) << host.output;
    const std::string transcript = controller.Transcript();
    ExpectGolden("plate.txt", transcript);
    if (run == 0) first = transcript;
    EXPECT_EQ(transcript, first);
    // Drag engraving: the spindle stands still in the work, which the machine counts as dry.
    EXPECT_EQ(controller.Number("errors.total"), controller.Number("errors.dryPlunge"))
        << controller.Report();
    EXPECT_EQ(controller.Number("jobs.0.ended"), 1);
    EXPECT_GT(controller.Number("cutInches"), 10);
    EXPECT_NEAR(controller.Number("depthInches.deepest"), 0.02, 0.0005);
  }
}

TEST(Job, ADrawingThatDoesNotFitTheTableMovesNothing) {
  Settings small = EngraversSettings();
  small["Table Size/Width"] = "500";
  FreshController controller(kId, small, EngraversTable());
  const HostRun host = RunHost({"engrave", Sample("plate.plt"), "--id", kId});
  EXPECT_EQ(host.exitCode, 2) << host.output;
  EXPECT_EQ(controller.Number("blocks"), 0);
}

// Two jobs over one connection: the second starts with the counters of a fresh one.
TEST(Job, TwoJobsInARowBothRun) {
  ConnectedMachine machine(kId, EngraversSettings(), EngraversTable());
  auto& [controller, slots] = machine;
  for (int job = 0; job < 2; ++job) {
    EXPECT_EQ(slots.Ask("begin"), "1");
    EXPECT_EQ(slots.Ask("move 1000 1000"), "1");
    EXPECT_EQ(slots.Ask("engrave 2000 1000"), "1");
    EXPECT_EQ(slots.Ask("move 4000 4000"), "1");
    EXPECT_EQ(slots.Ask("end"), "done");
  }
  // 2 jobs of: travel, plunge, cut, lift, travel. Travels and cuts are told of, plunges are not.
  EXPECT_THAT(slots.Ask("counts"), StartsWith("6 6 6 "));
  slots.Ask("release");
  EXPECT_EQ(controller.Number("blocks"), 10);
}

// The window lives on the thread that calls the driver and that thread is busy in the driver: the
// reader's notifications must get through all the same.
TEST(Job, AHostWhoseWindowIsOnTheCallingThreadDoesNotDeadlock) {
  ConnectedMachine machine(kId, EngraversSettings(), EngraversTable(), "window here");
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("begin"), "1");
  EXPECT_EQ(slots.Ask("strokes 100 1", 120), "100");
  EXPECT_EQ(slots.Ask("end"), "done");
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
  EXPECT_EQ(controller.Number("jobs.0.ended"), 1);
}

// Progress replies in pieces, and noise between them, as a real board sends.
TEST(Job, FragmentsAndUnaskedLinesDoNotDisturbTheCounters) {
  ConnectedMachine machine(
      kId, EngraversSettings(),
      With(EngraversTable(),
           {"--fault", "reply=QX,nth=2,count=20,do=fragment,ms=2", "--fault",
            "reply=EX,nth=9,count=20,do=fragment,ms=2", "--fault",
            "reply=BX,nth=5,count=20,do=inject,text=// NOTICE cooling\\n", "--fault",
            "reply=EX,nth=3,count=10,do=inject,text=ALARM: Hard limit +X\\n"}));
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("begin"), "1");
  EXPECT_EQ(slots.Ask("strokes 20 7"), "20");
  EXPECT_EQ(slots.Ask("end"), "done");
  EXPECT_THAT(slots.Ask("counts"), StartsWith("80 80 80 "));  // 20 travels, 60 cuts
  slots.Ask("release");
  EXPECT_EQ(controller.Number("jobs.0.ended"), 1);
}

// A bare serial line has no way to say "wait", and a ring of 255 bytes behind it: what the driver
// leaves outstanding must fit there.
TEST(Job, OverABareSerialLineNothingIsLost) {
  ConnectedMachine machine(kId, EngraversSettings(),
                           With(EngraversTable(), {"--wire", "uart", "--baud", "115200"}));
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("begin"), "1");
  EXPECT_EQ(slots.Ask("strokes 50 3", 120), "50");
  EXPECT_EQ(slots.Ask("end"), "done");
  EXPECT_THAT(slots.Ask("counts"), StartsWith("200 200 200 "));
  slots.Ask("release");
  EXPECT_EQ(controller.Number("lines.inputBytesLost"), 0);
  EXPECT_EQ(controller.Number("blocks"), 299);  // the first travel needs no lift
}

TEST(Job, CtrlCEndsTheJobWithTheCutterUp) {
  FreshController controller(kId, EngraversSettings(), With(EngraversTable(), {"--speed", "20"}));
  Process host({"wine", "k7host.exe", "engrave", Sample("plate.plt"), "--id", kId},
               Places::Get().windowsPrograms);
  ASSERT_TRUE(controller.WaitForTranscript("> SendBlockMessagesOn"));
  ASSERT_TRUE(controller.WaitForTranscript("< EX", 5));  // the first stroke is being cut
  host.Signal(SIGINT);
  EXPECT_THAT(host.ReadAll(120), HasSubstr("k7host: stopped by the user"));
  EXPECT_EQ(host.Wait(), 1);
  const std::string transcript = controller.Transcript();
  EXPECT_THAT(transcript, HasSubstr("SendBlockMessagesOff\nM107\n"));
  EXPECT_THAT(transcript, HasSubstr("M18\n"));
  EXPECT_EQ(controller.Number("outputOn"), 0);
  EXPECT_EQ(controller.Number("jobs.0.ended"), 1);
  EXPECT_GT(controller.Number("cutInches"), 0);
  EXPECT_NEAR(controller.Number("positionInches.z"), 0.875, 0.001);  // an eighth above the work
}

// The seconds of "estimate: N s (H:MM:SS)".
double EstimateIn(const std::string& output) {
  const std::size_t at = output.find("estimate: ");
  return at == std::string::npos ? -1 : std::stod(output.substr(at + 10));
}

class JobEstimate : public testing::TestWithParam<const char*> {};

// Of a machine whose cutter goes up and down in no time: the estimate is the time for which the
// head is under way.
TEST_P(JobEstimate, IsWithinFivePercentOfTheMachinesOwnPlan) {
  Settings settings = EngraversSettings();
  settings["Axis Z/Cutter Home"] = "981668463";                   // 0.001
  settings["Engrave Settings/Engrave Depth"] = "981668463";       // 0.001
  settings["Engrave Settings/Cutter Lift"] = "981668463";         // 0.001
  settings["Engrave Settings/Cutter Up Speed"] = "1092616192";    // 10.0
  settings["Engrave Settings/Cutter Down Speed"] = "1092616192";  // 10.0
  FreshController controller(kId, settings,
                             {"--homed", "--table-home", "1,1", "--surface", "plane:0.001"});
  const HostRun host = RunHost({"engrave", Sample(GetParam()), "--id", kId, "--batch"}, 300);
  EXPECT_EQ(host.exitCode, 0) << host.output;
  const double planned = controller.Number("jobs.0.plannedSeconds");
  const double estimate = EstimateIn(host.output);
  std::printf("   %s: estimate %.0f s, plan %.1f s\n", GetParam(), estimate, planned);
  EXPECT_GT(planned, 10);
  EXPECT_NEAR(estimate, planned, planned * 0.05);
}

// With every lift and plunge, from wherever the head stands.
TEST_P(JobEstimate, OfAWholeJobIsWithinOnePercentOfTheMachinesOwnPlan) {
  FreshController controller(kId, EngraversSettings(), EngraversTable());
  const HostRun host = RunHost({"engrave", Sample(GetParam()), "--id", kId, "--batch"}, 300);
  EXPECT_EQ(host.exitCode, 0) << host.output;
  const double planned = controller.Number("jobs.0.plannedSeconds");
  const double estimate = EstimateIn(host.output);
  std::printf("   %s: estimate %.0f s, plan %.1f s\n", GetParam(), estimate, planned);
  EXPECT_NEAR(estimate, planned, planned * 0.01 + 0.5);
}

INSTANTIATE_TEST_SUITE_P(Of, JobEstimate,
                         testing::Values("plate.plt", "grid.plt", "spiral.plt", "lettering.plt"));

}  // namespace
}  // namespace k7test
