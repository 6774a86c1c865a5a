// Whole jobs: the reference host, the driver and the simulated machine together.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include "harness.h"

namespace k7test {
namespace {

using testing::HasSubstr;

constexpr char kId[] = "ENDTOENDJOB00001";

std::string Sample(const char* name) {
  return WindowsPath(Places::Get().source / "host/samples" / name);
}

// A machine as an engraver would have set it up: table home an inch in from the switches, the work
// surface an inch down.
Settings EngraversSettings() {
  return {{"Axis X/Table Home", "1065353216"},               // 1.0
          {"Axis Y/Table Home", "1065353216"},               // 1.0
          {"Axis Z/Cutter Home", "1065353216"},              // 1.0
          {"Engrave Settings/Engrave Depth", "1017370378"},  // 0.02
          {"Engrave Settings/Engrave Type", "0"},
          {"Axis Z/Air Z", "0"}};
}

std::vector<std::string> EngraversTable() {
  return {"--homed", "--table-home", "1,1", "--surface", "plane:1.0"};
}

TEST(Job, TheSamplePlateIsCutAsDrawnTwiceTheSame) {
  std::string first;
  for (int run = 0; run < 2; ++run) {
    RemoveAllSettings();
    WriteSettings(kId, EngraversSettings());
    Controller controller(7, kId, EngraversTable());
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
  RemoveAllSettings();
  Settings small = EngraversSettings();
  small["Table Size/Width"] = "500";
  WriteSettings(kId, small);
  Controller controller(7, kId, EngraversTable());
  const HostRun host = RunHost({"engrave", Sample("plate.plt"), "--id", kId});
  EXPECT_EQ(host.exitCode, 2) << host.output;
  EXPECT_EQ(controller.Number("blocks"), 0);
}

// Two jobs over one connection: the second starts with the counters of a fresh one.
TEST(Job, TwoJobsInARowBothRun) {
  RemoveAllSettings();
  WriteSettings(kId, EngraversSettings());
  Controller controller(7, kId, EngraversTable());
  Slots slots;
  ASSERT_EQ(slots.Ask(std::string("connect ") + kId), "connected");
  slots.Ask("window");
  for (int job = 0; job < 2; ++job) {
    EXPECT_EQ(slots.Ask("begin"), "1");
    EXPECT_EQ(slots.Ask("move 1000 1000"), "1");
    EXPECT_EQ(slots.Ask("engrave 2000 1000"), "1");
    EXPECT_EQ(slots.Ask("move 4000 4000"), "1");
    EXPECT_EQ(slots.Ask("end"), "done");
  }
  // 2 jobs of: travel, plunge, cut, lift, travel. Travels and cuts are told of, plunges are not.
  EXPECT_THAT(slots.Ask("counts"), HasSubstr("6 6 6"));
  slots.Ask("release");
  EXPECT_EQ(controller.Number("blocks"), 10);
}

// The window lives on the thread that calls the driver and that thread is busy in the driver: the
// reader's notifications must get through all the same.
TEST(Job, AHostWhoseWindowIsOnTheCallingThreadDoesNotDeadlock) {
  RemoveAllSettings();
  WriteSettings(kId, EngraversSettings());
  Controller controller(7, kId, EngraversTable());
  Slots slots;
  ASSERT_EQ(slots.Ask(std::string("connect ") + kId), "connected");
  slots.Ask("window here");
  EXPECT_EQ(slots.Ask("begin"), "1");
  EXPECT_EQ(slots.Ask("strokes 100 1", 120), "100");
  EXPECT_EQ(slots.Ask("end"), "done");
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
  EXPECT_EQ(controller.Number("jobs.0.ended"), 1);
}

// Progress replies in pieces, and noise between them, as a real board sends.
TEST(Job, FragmentsAndUnaskedLinesDoNotDisturbTheCounters) {
  RemoveAllSettings();
  WriteSettings(kId, EngraversSettings());
  Controller controller(7, kId,
                        {"--homed", "--table-home", "1,1", "--surface", "plane:1.0", "--fault",
                         "reply=BX,nth=5,count=20,do=inject,text=// NOTICE cooling\\n", "--fault",
                         "reply=EX,nth=3,count=10,do=inject,text=ALARM: Hard limit +X\\n"});
  Slots slots;
  ASSERT_EQ(slots.Ask(std::string("connect ") + kId), "connected");
  slots.Ask("window");
  EXPECT_EQ(slots.Ask("begin"), "1");
  EXPECT_EQ(slots.Ask("strokes 20 7"), "20");
  EXPECT_EQ(slots.Ask("end"), "done");
  slots.Ask("release");
  EXPECT_EQ(controller.Number("jobs.0.ended"), 1);
  EXPECT_TRUE(controller.AllFaultsFired()) << controller.Report();
}

TEST(Job, CtrlCEndsTheJobWithTheCutterUp) {
  RemoveAllSettings();
  WriteSettings(kId, EngraversSettings());
  auto table = EngraversTable();
  table.insert(table.end(), {"--speed", "20"});
  Controller controller(7, kId, table);
  Process host({"wine", "k7host.exe", "engrave", Sample("plate.plt"), "--id", kId},
               Places::Get().windowsPrograms);
  ASSERT_TRUE(controller.WaitForTranscript("> SendBlockMessagesOn"));
  ASSERT_TRUE(controller.WaitForTranscript("< EX"));
  host.Signal(SIGINT);
  host.ReadAll(120);
  host.Wait();
  const std::string transcript = controller.Transcript();
  EXPECT_THAT(transcript, HasSubstr("SendBlockMessagesOff\nM107\n"));
  EXPECT_THAT(transcript, HasSubstr("M18\n"));
  EXPECT_EQ(controller.Number("outputOn"), 0);
}

}  // namespace
}  // namespace k7test
