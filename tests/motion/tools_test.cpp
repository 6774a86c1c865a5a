// Spindle, motors, the drained queue and the round fixture on the wire.
#include "device/polling.h"
#include "device/progress.h"
#include "motion/cutter.h"
#include "motion/move.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "support/host_call.h"
#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::Duration;
using k7test::HostCall;

class Tools : public k7test::MachineTest {};

TEST_F(Tools, MotorsGoOnWithOneAndOffWithAnythingElse) {
  SetMotorPower(record_.link, 1);
  SetMotorPower(record_.link, 0);
  SetMotorPower(record_.link, 2);
  EXPECT_EQ(machine_.Sent(), "M17\nM18\nM18\n");
  record_.link.connected = 0;
  SetMotorPower(record_.link, 1);
  EXPECT_EQ(machine_.Sent(), "");
}

TEST_F(Tools, TheSpindleIsSwitchedOnOnceAndWaitedForOnce) {
  FitSpindle();
  record_.spindle.spindleRpm = 6500;
  EXPECT_GE(Duration([&] { SetSpindle(record_, kSpindleEngrave); }), 750u);
  EXPECT_LT(Duration([&] { SetSpindle(record_, kSpindleEngrave); }), 700u);
  EXPECT_EQ(machine_.Sent(), "M42\nM44 S126\n");
  EXPECT_EQ(record_.spindle.spindleOn, 1);
  EXPECT_EQ(record_.spindle.spindleValue, 6500);
  // KEEP: full speed is level 252, never 255; a running spindle gets the on line again.
  SetSpindle(record_, kSpindleFull);
  EXPECT_EQ(machine_.Sent(), "M42\nM44 S252\n");
  EXPECT_EQ(record_.spindle.spindleValue, 13000);
  EXPECT_GE(Duration([&] { SetSpindle(record_, kSpindleOff); }), 750u);
  EXPECT_EQ(machine_.Sent(), "M43\n");
  EXPECT_EQ(record_.spindle.spindleOn, 0);
  EXPECT_EQ(record_.spindle.spindleValue, 0);
}

TEST_F(Tools, AnInhibitedSpindleCanStillBeSwitchedOff) {
  FitSpindle();
  SetSpindle(record_, kSpindleInhibit);
  EXPECT_EQ(record_.spindle.spindleInhibit, 1);
  SetSpindle(record_, kSpindleEngrave);
  SetSpindle(record_, kSpindleFull);
  EXPECT_EQ(machine_.Sent(), "");
  record_.spindle.spindleValue = 13000;
  SetSpindle(record_, kSpindleOff);
  EXPECT_EQ(machine_.Sent(), "M43\n");
  SetSpindle(record_, kSpindleRelease);
  EXPECT_EQ(record_.spindle.spindleInhibit, 0);
  // A running spindle is not inhibited.
  record_.spindle.spindleOn = 1;
  SetSpindle(record_, kSpindleInhibit);
  EXPECT_EQ(record_.spindle.spindleInhibit, 0);
}

TEST_F(Tools, WithoutASpindleOrWithAirZTheSpindleIsIgnored) {
  SetSpindle(record_, kSpindleEngrave);
  SetSpindle(record_, kSpindleInhibit);
  FitSpindle();
  record_.spindle.spindlePresent = 2;  // exactly 1 counts
  SetSpindle(record_, kSpindleEngrave);
  FitSpindle();
  record_.tools.cutterMode = kCutterAirZ;
  SetSpindle(record_, kSpindleEngrave);
  SetSpindle(record_, kSpindleInhibit);
  record_.tools.cutterMode = kCutterNone;
  SetSpindle(record_, 5);  // no such command
  record_.link.connected = 0;
  SetSpindle(record_, kSpindleEngrave);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(record_.spindle.spindleInhibit, 0);
  EXPECT_EQ(record_.spindle.spindleValue, 0);
}

TEST_F(Tools, DrainAndSetHoldWaitsForBegunAndEndedMovesThenHolds) {
  machine_.OpenJob();
  machine_.controller.AnswerMoves(false);
  record_.link.alive.Alone().lastCheckTick = record_.link.alive.Alone().lastAnswerTick = 5;
  for (const bool begun : {false, true}) {
    SendMove(record_, {.x = begun ? 4000 : 8000}, CommandTag::Move);
    if (begun) {
      machine_.controller.Say("QX\r\nBX\r\n");
      EXPECT_TRUE(k7test::WaitUntil([&] { return BlocksRunning(record_.job) == 1; }));
    }
    record_.job.plungeHold = 0;
    const HostCall host{[&] { DrainAndSetHold(record_.job, record_.link, 1); }};
    EXPECT_TRUE(host.Waits()) << begun;
    EXPECT_EQ(record_.job.plungeHold, 0) << begun;
    machine_.controller.Say(begun ? "EX\r\n" : "QX\r\nBX\r\nEX\r\n");
    EXPECT_TRUE(host.Returns()) << begun;
    EXPECT_EQ(record_.job.plungeHold, 1) << begun;
    EXPECT_TRUE(k7test::WaitUntil([&] { return !MovesRemain(record_.job); })) << begun;
  }
  EXPECT_EQ(record_.link.alive.Alone().lastCheckTick, 0u);
  EXPECT_EQ(record_.link.alive.Alone().lastAnswerTick, 0u);
  DrainAndSetHold(record_.job, record_.link, 0);
  EXPECT_EQ(record_.job.plungeHold, 0);
}

// The controller need not report anything then: the wait has an end of its own.
TEST_F(Tools, WithNoJobOpenDrainQueueWaitsTwoSecondsForAReportAndHolds) {
  record_.job.linesInFlight.Alone() = 3;
  record_.job.blocksRunning.Alone() = 2;
  const HostCall host{[&] { DrainAndSetHold(record_.job, record_.link, 1); }};
  EXPECT_TRUE(host.Waits(std::chrono::milliseconds{1500}));
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(record_.job.plungeHold, 1);
  EXPECT_EQ(LinesInFlight(record_.job), 0);
  EXPECT_EQ(BlocksRunning(record_.job), 0);
}

TEST_F(Tools, WithoutMutexesTheDrainEndsAndTheFlagIsStored) {
  DeviceState detached;
  detached.job.linesInFlight.Alone() = 3;
  detached.link.alive.Alone().lastCheckTick = 9;
  DrainAndSetHold(detached.job, detached.link, 7);
  EXPECT_EQ(detached.job.plungeHold, 7);
  EXPECT_EQ(detached.link.alive.Alone().lastCheckTick, 0u);
}

TEST_F(Tools, ThePresentRoundModeWritesAndSendsNothing) {
  FitRoundFixture();
  EXPECT_LT(Duration([&] { SwitchRoundMode(record_, 0); }), 400u);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(File(), L"");
}

TEST_F(Tools, TheFixtureTakesXAndGivesItBack) {
  FitRoundFixture();
  machine_.StandAt(4000, 8000, 7, kCutterUp);
  record_.position.parkedPosition = 16000;
  record_.position.tableHome.x = 40;
  record_.link.alive.Alone().lastCheckTick = record_.link.alive.Alone().lastAnswerTick = 5;
  EXPECT_GE(Duration([&] { SwitchRoundMode(record_, 1); }), 1000u);
  EXPECT_EQ(record_.link.alive.Alone().lastCheckTick, 0u);
  EXPECT_EQ(record_.link.alive.Alone().lastAnswerTick, 0u);
  EXPECT_EQ(machine_.Sent(),
            "M92 X314.96063\nM92 Y157.48032\nM800 X5 Y2\nG92 X50.799999 Y50.799999\n");
  EXPECT_EQ(File(), L"Axis Round/Mode=1\n");
  EXPECT_EQ(record_.position.last.x, 16000);
  EXPECT_EQ(record_.position.parkedPosition, 4000);
  EXPECT_EQ(record_.position.saved.x, 4000);
  EXPECT_EQ(record_.position.roundStepsPerInch, 4000.0f);
  EXPECT_EQ(record_.position.tableHomeRound, 40);

  SwitchRoundMode(record_, 0);
  EXPECT_EQ(machine_.Sent(),
            "M92 X157.48032\nM92 Y157.48032\nM800 X1 Y2\nG92 X25.400000 Y50.799999\n");
  EXPECT_EQ(File(), L"Axis Round/Mode=0\n");
  EXPECT_EQ(record_.position.last.x, 4000);
  EXPECT_EQ(record_.position.last.y, 8000);
  EXPECT_EQ(record_.position.parkedPosition, 16000);
  EXPECT_EQ(record_.position.tableHome.x, 40);
  EXPECT_EQ(record_.mechanics.roundAxisMode, kRoundOff);
}

TEST_F(Tools, TheFixtureGoesFromXToYAndOff) {
  FitRoundFixture();
  machine_.StandAt(4000, 8000, 7, kCutterUp);
  record_.position.parkedPosition = 16000;
  SwitchRoundMode(record_, 1);
  machine_.Sent();
  SwitchRoundMode(record_, 2);
  // KEEP: the live positions change places, so the position declared for X is that of Y.
  EXPECT_EQ(machine_.Sent(),
            "M92 X157.48032\nM92 Y314.96063\nM800 X1 Y5\nG92 X50.799999 Y50.799999\n");
  EXPECT_EQ(File(), L"Axis Round/Mode=2\n");
  SwitchRoundMode(record_, 0);
  EXPECT_EQ(machine_.Sent(),
            "M92 X157.48032\nM92 Y157.48032\nM800 X1 Y2\nG92 X50.799999 Y25.400000\n");
  EXPECT_EQ(File(), L"Axis Round/Mode=0\n");
  EXPECT_EQ(record_.position.parkedPosition, 16000);
}

TEST_F(Tools, TheAxisMappingOfEachMode) {
  constexpr struct {
    std::uint8_t attachment;
    std::uint32_t mode;
    const char* want;
  } kCases[] = {
      {0, 0, "M800 X1 Y2\n"}, {0, 1, "M800 X1 Y2\n"},
      {0, 2, "M800 X1 Y2\n"}, {0, 3, "M800 X1 Y2\n"},
      {1, 0, "M800 X1 Y2\n"}, {1, 1, "M800 X5 Y2\n"},
      {1, 2, "M800 X1 Y5\n"}, {1, 3, ""},
  };
  for (const auto& c : kCases) {
    hasRoundAttachment = c.attachment;
    record_.mechanics.roundAxisMode = c.mode;
    SendAxisMapping(record_.link, record_.mechanics);
    EXPECT_EQ(machine_.Sent(), c.want) << int{c.attachment} << ' ' << c.mode;
  }
}

}  // namespace
}  // namespace k7
