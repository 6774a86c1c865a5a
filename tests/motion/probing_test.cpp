#include "motion/probing.h"

#include <thread>

#include "device/polling.h"
#include "device/progress.h"
#include "job/job.h"
#include "motion/move.h"
#include "support/host_call.h"
#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::HostCall;
using k7test::HostMessage;
using k7test::HostWindow;

class Probing : public k7test::MachineTest {
 protected:
  // Touches `steps` below the present Z.
  void TouchAt(int steps) {
    machine_.controller.OnPrefix("G30 ", [steps](k7test::FakeController& fake, const std::string&) {
      fake.Say("Z_Probe " + std::to_string(steps) + "\r\n");
    });
  }
};

TEST_F(Probing, DeclaresTheTouchToBeTheCutterHome) {
  TouchAt(2000);
  machine_.StandAt(0, 0, 4000, kCutterUp);
  ProbeSurface(record_);
  // KEEP: the down speed in millimetres per second, where the controller reads per minute.
  EXPECT_EQ(machine_.Sent(), "G30 F12.700\nG92 Z38.099998\n");
  EXPECT_EQ(record_.position.cutterHome, 6000);
  EXPECT_EQ(record_.position.last.z, 6000);
  EXPECT_EQ(record_.tools.probePending, 0);
}

TEST_F(Probing, InModeThreeTheSpeedIs12_700) {
  TouchAt(0);
  record_.tools.cutterMode = kCutterSemiAutomatic;
  record_.tools.cutterDownSpeed = 3.0f;
  ProbeSurface(record_);
  EXPECT_EQ(machine_.Sent().substr(0, 12), "G30 F12.700\n");
  EXPECT_STREQ(record_.position.lastFeedText, "762.000");
  record_.tools.cutterMode = kCutterAutomatic;
  ProbeSurface(record_);
  EXPECT_EQ(machine_.Sent().substr(0, 12), "G30 F76.200\n");
  EXPECT_STREQ(record_.position.lastFeedText, "4572.000");
}

TEST_F(Probing, LeavesTheDownFeedAsAlreadySent) {
  TouchAt(0);
  ProbeSurface(record_);
  machine_.Sent();
  SetFeedRate(record_, record_.tools.cutterDownSpeed);
  EXPECT_EQ(machine_.Sent(), "");
  SetFeedRate(record_, record_.tools.cutterUpSpeed);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\n");
}

TEST_F(Probing, WaitsForTheAnswerAndIsNotEndedByAMiss) {
  const HostCall host{[&] { ProbeSurface(record_); }};
  EXPECT_TRUE(machine_.controller.WaitForLine("G30 F12.700\n"));
  machine_.controller.Say("ZProbe not triggered\r\n");
  EXPECT_TRUE(host.Waits());
  machine_.controller.Say("Z_Probe 5\r\n");
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(record_.position.cutterHome, 5);
}

TEST_F(Probing, InAJobItFirstWaitsUntilEveryLineHasBegun) {
  TouchAt(0);
  machine_.OpenJob();
  machine_.controller.AnswerMoves(false);
  SendMove(record_, {.x = 4000}, CommandTag::Move);
  machine_.Sent();
  const HostCall host{[&] { ProbeSurface(record_); }};
  EXPECT_TRUE(host.Waits());
  EXPECT_EQ(machine_.controller.Transcript(), "");
  machine_.controller.Say("BX\r\n");  // begun is enough
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine_.Sent(), "G30 F12.700\nG92 Z0.000000\n");
  EXPECT_EQ(BlocksRunning(record_.job), 1);
}

// The controller need not report anything then: the wait has an end of its own.
TEST_F(Probing, WithNoJobOpenItWaitsTwoSecondsForAReport) {
  TouchAt(0);
  record_.job.linesInFlight.Alone() = 2;
  const HostCall host{[&] { ProbeSurface(record_); }};
  EXPECT_TRUE(host.Waits(std::chrono::milliseconds{1500}));
  EXPECT_EQ(machine_.controller.Transcript(), "");
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine_.Sent(), "G30 F12.700\nG92 Z0.000000\n");
}

TEST_F(Probing, ACountThatIsClosedEndsTheWaitForThem) {
  TouchAt(0);
  machine_.OpenJob();
  record_.job.linesInFlight.Alone() = 3;
  const HostCall host{[&] { ProbeSurface(record_); }};
  EXPECT_TRUE(host.Waits());
  record_.job.linesInFlight.Close();
  EXPECT_TRUE(machine_.controller.WaitForLine("G30 F12.700\n"));
}

TEST_F(Probing, IsNothingWithoutAConnection) {
  record_.link.connected = 0;
  ProbeSurface(record_);
  ProbeAndLift(record_, 10);
  SetTableSurface(record_, 0.0f, 1);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(record_.position.tableSurface, 8000);
  EXPECT_STREQ(record_.position.lastFeedText, "");
}

TEST_F(Probing, TheProbeOffsetIsTakenOffTheSurface) {
  record_.tools.probeOffset = 0.1f;
  SubtractProbeOffset(record_);
  EXPECT_EQ(record_.position.cutterHome, 3600);
  record_.tools.probeOffset = -0.1f;
  SubtractProbeOffset(record_);
  EXPECT_EQ(record_.position.cutterHome, 3999);  // half a step is added, then truncated
}

TEST_F(Probing, ProbeAndLiftLeavesTheCutterMarkedDown) {
  TouchAt(4000);
  record_.tools.probeOffset = 0.1f;
  record_.job.blocksRunning.Alone() = 2;
  ProbeAndLift(record_, 250);
  EXPECT_EQ(machine_.Sent(), "G30 F12.700\nG92 Z25.400000\nG0 F381.000\nG0 Z16.510000\n");
  EXPECT_EQ(record_.position.cutterHome, 3600);
  EXPECT_EQ(record_.tools.cutterState, kCutterDown);  // KEEP: although it went up
  EXPECT_EQ(LinesInFlight(record_.job), 0);
  EXPECT_EQ(BlocksRunning(record_.job), 0);
}

TEST_F(Probing, ProbeAndLiftMarksNothingWithoutALift) {
  TouchAt(4000);
  record_.position.tableSurface = 0;  // where every lift is refused
  record_.job.blocksRunning.Alone() = 2;
  ProbeAndLift(record_, 250);
  EXPECT_EQ(machine_.Sent(), "G30 F12.700\nG92 Z25.400000\nG0 F381.000\n");
  EXPECT_EQ(record_.tools.cutterState, kCutterUp);
  EXPECT_EQ(BlocksRunning(record_.job), 0);
}

TEST_F(Probing, ProbeAndLiftIsNothingBelowOneThousandthOrInAJob) {
  ProbeAndLift(record_, 0);
  ProbeAndLift(record_, -5);
  EXPECT_EQ(machine_.Sent(), "");
  machine_.OpenJob();
  ProbeAndLift(record_, 10);
  SetTableSurface(record_, 0.0f, 1);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(record_.tools.cutterState, kCutterUp);
  EXPECT_EQ(record_.position.tableSurface, 8000);
}

class TableSurface : public Probing {
 protected:
  TableSurface() {
    Tell(window_);
    machine_.StandAt(0, 0, 2000, kCutterDown);
  }
  const HostWindow window_;
};

TEST_F(TableSurface, FromTheTableDepthByWholeDivision) {
  record_.mechanics.tableDepth = 2001;
  record_.mechanics.axis.z.screwPitch = 2000.0f / 1999.0f;  // 1999 steps per inch: 3999.999 is 3999
  record_.job.linesInFlight.Alone() = 5;
  SetTableSurface(record_, 0.1f, 0);
  EXPECT_EQ(record_.position.tableSurface, 3999 - 200);
  EXPECT_EQ(File(), L"Axis Z/Table Surface=3799\n");  // steps, not the bits of a float
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z0.000000\n");
  EXPECT_EQ(record_.tools.cutterState, kCutterUp);
  EXPECT_EQ(LinesInFlight(record_.job), 0);
  EXPECT_EQ(window_.Seen(), (std::vector<HostMessage>{{kSurface, 3799, 0}}));
}

TEST_F(TableSurface, FromThePresentZ) {
  SetTableSurface(record_, 0.0f, 1);
  EXPECT_EQ(record_.position.tableSurface, 2000);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z0.000000\n");
}

// The probe has declared the touch before the offset is taken off the cutter home alone.
TEST_F(TableSurface, FromAProbe) {
  TouchAt(1000);
  record_.tools.probeOffset = 0.1f;
  SetTableSurface(record_, 0.01f, 2);
  EXPECT_EQ(record_.position.cutterHome, 2600);
  EXPECT_EQ(record_.position.tableSurface, 2960);
  EXPECT_EQ(machine_.Sent(), "G30 F12.700\nG92 Z19.049999\nG0 F381.000\nG0 Z0.000000\n");
}

TEST_F(TableSurface, AtTheTopAlreadyTheCutterStateStays) {
  machine_.StandAt(0, 0, 0, kCutterDown);
  SetTableSurface(record_, 0.0f, 1);
  EXPECT_EQ(record_.tools.cutterState, kCutterDown);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\n");
}

// KEEP: a mode list without a selection passes -1: the surface stands, less the buffer.
TEST_F(TableSurface, OfAnotherMethodItIsTheOneThatStandsLessTheBuffer) {
  for (const std::int32_t method : {-1, 3}) {
    record_.position.tableSurface = 8000;
    machine_.StandAt(0, 0, 2000, kCutterDown);
    SetTableSurface(record_, 0.5f, method);
    EXPECT_EQ(record_.position.tableSurface, 6000) << method;
    EXPECT_EQ(File(), L"Axis Z/Table Surface=6000\n") << method;
    EXPECT_EQ(record_.position.last.z, 0) << method;
    EXPECT_EQ(record_.tools.cutterState, kCutterUp) << method;
  }
  EXPECT_EQ(window_.Count(kSurface), 2);
}

}  // namespace
}  // namespace k7
