#include "motion/homing.h"

#include <atomic>

#include "device/guarded.h"
#include "settings/file.h"
#include "support/host_call.h"
#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::HostCall;
using k7test::HostMessage;
using k7test::HostWindow;
using k7test::MessageBoxAnswer;
using k7test::WaitUntil;

class Homing : public k7test::MachineTest {
 protected:
  Homing() { FitSwitches(); }

  // Answers a "G28" line after having seen that none follows it without the answer.
  void Reach(const char* line, const char* reply) {
    ASSERT_TRUE(machine_.controller.WaitForLine(line));
    EXPECT_FALSE(WaitUntil([&] { return machine_.controller.Lines().back() != line; },
                           std::chrono::milliseconds{250}));
    machine_.controller.Say(reply);
  }
  void AnswerEveryAxis() {
    machine_.controller.Answer("G28 Z0\n", "Z_Limit 1\r\n");
    machine_.controller.Answer("G28 Y0\n", "Y_Limit 2\r\n");
    machine_.controller.Answer("G28 X0\n", "X_Limit 3\r\n");
  }
};

TEST_F(Homing, SendsZThenYThenXEachOnlyAfterThePreviousHasReported) {
  const HostWindow window;
  Tell(window);
  FitSpindle();
  record_.position.tableHome.x = 400;
  record_.link.alive.Alone().lastCheckTick = record_.link.alive.Alone().lastAnswerTick = 5;
  // Every switch is closed when asked: that says nothing of the homing to come.
  machine_.controller.Answer("M119\n", "min_x:1 min_y:1 min_z:1 Probe: 0\r\n");
  machine_.StandAt(11, 22, 33, kCutterUp);
  const HostCall host{[&] { HomeToSwitches(record_); }};
  Reach("G28 Z0\n", "Z_Limit 1\r\n");
  Reach("G28 Y0\n", "Y_Limit 1\r\n");
  Reach("G28 X0\n", "X_Limit 1\r\n");
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine_.Sent(),
            "M119\nG0 F7620.000\nM42\nM44 S252\nG28 Z0\nM43\nG28 Y0\nG28 X0\nSetTableHomed\n"
            "G92 X0.000000 Y0.000000 Z0.000000\n");
  EXPECT_EQ(record_.position.last.x, 0);
  EXPECT_EQ(record_.position.last.y, 0);
  EXPECT_EQ(record_.position.last.z, 0);
  EXPECT_EQ(File(), L"Current Location/X Axis=0\nCurrent Location/Y Axis=0\n");
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{kPosition, -400, 0}, {kSurface, 8000, 0}}));
  EXPECT_EQ(record_.link.alive.Alone().lastCheckTick, 0u);
  EXPECT_EQ(record_.link.alive.Alone().lastAnswerTick, 0u);
}

TEST_F(Homing, AnAirZHeadStepsAsideAndIsNotHomedAlongZ) {
  AnswerEveryAxis();
  FitSpindle();
  record_.tools.cutterMode = kCutterAirZ;
  record_.mechanics.axis.x.screwPitch = 0.25f;        // 8000 per inch: the eighth is 1000 steps
  record_.mechanics.roundAxisMode = kRoundReplacesX;  // KEEP: by the screw all the same
  record_.mechanics.roundCircumference = 1.0f;
  machine_.StandAt(3000, 0, 0, kCutterUp);
  EXPECT_GE(k7test::Duration([&] { HomeToSwitches(record_); }), 1200u);
  EXPECT_EQ(machine_.Sent(),
            "G0 X25.400000\nM119\nG0 F7620.000\nG28 Y0\nG28 X0\nSetTableHomed\n"
            "G92 X0.000000 Y0.000000 Z0.000000\n");
}

TEST_F(Homing, ARoundFixtureIsSwitchedOffAndBack) {
  AnswerEveryAxis();
  FitRoundFixture();
  record_.mechanics.roundAxisMode = kRoundReplacesY;
  record_.position.parkedPosition = 4000;
  machine_.StandAt(0, 8000, 0, kCutterUp);
  HomeToSwitches(record_);
  EXPECT_EQ(machine_.Sent(),
            "M119\nG0 F7620.000\n"
            "M92 X157.48032\nM92 Y157.48032\nM800 X1 Y2\nG92 X0.000000 Y25.400000\n"
            "G28 Z0\nG28 Y0\nG28 X0\n"
            "M92 X157.48032\nM92 Y314.96063\nM800 X1 Y5\nG92 X0.000000 Y25.400000\n"
            "SetTableHomed\nG92 X0.000000 Y0.000000 Z0.000000\n");
  EXPECT_EQ(record_.mechanics.roundAxisMode, kRoundReplacesY);
}

TEST_F(Homing, WithoutAllSwitchesNothingIsHomed) {
  for (std::uint8_t* const fitted :
       {&record_.mechanics.axis.x.limitSwitch, &record_.mechanics.axis.y.limitSwitch,
        &record_.mechanics.axis.z.limitSwitch, &record_.mechanics.proxSwitch}) {
    *fitted = 2;
    EXPECT_FALSE(HasAllSwitches(record_.mechanics));
    HomeToSwitches(record_);
    *fitted = 1;
  }
  EXPECT_TRUE(HasAllSwitches(record_.mechanics));
  EXPECT_EQ(machine_.Sent(), "");
}

TEST_F(Homing, WithoutAllSwitchesAnActiveRoundFixtureIsTheReasonGiven) {
  const HostWindow window;
  record_.mechanics.axis.x.limitSwitch = 0;
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  HomeToSwitches(record_);  // no window, no box
  Tell(window);
  MessageBoxAnswer box{L"Roundy is activated"};
  HomeToSwitches(record_);
  ASSERT_TRUE(box.Appeared());
  EXPECT_EQ(box.Text(), L"Cannot mechanical home while roundy is activated.");
  EXPECT_EQ(box.Owner(), window.Handle());
  EXPECT_EQ(machine_.Sent(), "");
}

TEST_F(Homing, IsQuietInAJobOrWithoutAConnection) {
  machine_.OpenJob();
  std::uint8_t x = 9;
  HomeToSwitches(record_);
  QuerySwitches(record_, &x, nullptr, nullptr, nullptr);
  EXPECT_FALSE(SetCutterHomeHere(record_));
  EXPECT_EQ(machine_.Sent(), "");
  {
    const auto lock = record_.job.jobOpen.Lock();
    record_.job.jobOpen.Alone() = 0;
  }
  record_.link.connected = 0;
  HomeToSwitches(record_);
  QuerySwitches(record_, &x, nullptr, nullptr, nullptr);
  EXPECT_FALSE(SetCutterHomeHere(record_));
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(x, 9);
  EXPECT_EQ(record_.position.cutterHome, 4000);
}

// The controller is given time to settle the home before the position is declared.
TEST_F(Homing, DeclaresThePositionTwoHundredMillisecondsAfterTheHome) {
  AnswerEveryAxis();
  std::atomic<DWORD> homed{0}, declared{0};
  machine_.controller.OnPrefix("SetTableHomed", [&](k7test::FakeController&, const std::string&) {
    homed = GetTickCount();
  });
  machine_.controller.OnPrefix(
      "G92 ", [&](k7test::FakeController&, const std::string&) { declared = GetTickCount(); });
  HomeToSwitches(record_);
  EXPECT_TRUE(WaitUntil([&] { return declared != 0; }));
  EXPECT_GE(declared - homed, 150u);  // less what the fake was late for the first
}

// The host's window may live on the thread that homes: the reader's messages must get through.
TEST_F(Homing, LetsSentMessagesThroughWhileItPolls) {
  const HostWindow window{HostWindow::Lives::OnThisThread};
  record_.notify.connectNotifyWindow = window.Handle();
  record_.notify.connectNotifyMessage = WM_APP + 9;
  AnswerEveryAxis();
  machine_.controller.Answer("G28 Y0\n", "SmoothieIsConnected\r\nY_Limit 2\r\n");
  HomeToSwitches(record_);
  EXPECT_EQ(window.Count(WM_APP + 9), 1);
}

class Switches : public Homing {};

TEST_F(Switches, AreAskedForAndGivenOnceReported) {
  machine_.controller.Answer("M119\n", "min_x:1 min_y:0 min_z:1 pins: Probe: 1\r\n");
  std::uint8_t x = 9, y = 9, z = 9, prox = 9;
  QuerySwitches(record_, &x, &y, &z, &prox);
  EXPECT_EQ(machine_.Sent(), "M119\n");
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(z, 1);
  EXPECT_EQ(prox, 1);
  QuerySwitches(record_, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(machine_.Sent(), "M119\n");
}

TEST_F(Switches, TheFirstQueryWaitsForItsReport) {
  machine_.controller.Answer("M119\n", "");
  std::uint8_t y = 9;
  const HostCall host{[&] { QuerySwitches(record_, nullptr, &y, nullptr, nullptr); }};
  EXPECT_TRUE(machine_.controller.WaitForLine("M119\n"));
  EXPECT_TRUE(host.Waits());
  machine_.controller.Say("min_x:0 min_y:1 min_z:0 Probe: 0\r\n");
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(y, 1);
}

// KEEP: the mark of the first report stays, so later queries give what is known at once.
TEST_F(Switches, LaterQueriesDoNotWait) {
  machine_.controller.Answer("M119\n", "");
  record_.switches.switchesRead = 1;
  record_.switches.switchProbe = 1;
  std::uint8_t prox = 9;
  const HostCall host{[&] { QuerySwitches(record_, nullptr, nullptr, nullptr, &prox); }};
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(prox, 1);
  EXPECT_EQ(machine_.Sent(), "M119\n");
}

TEST_F(Switches, WithoutAllOfThemTheOutputsStayUntouched) {
  record_.mechanics.axis.y.limitSwitch = 0;
  std::uint8_t x = 9, y = 9, z = 9, prox = 9;
  QuerySwitches(record_, &x, &y, &z, &prox);
  EXPECT_EQ(x + y + z + prox, 36);
  EXPECT_EQ(machine_.Sent(), "");
}

class CutterHome : public k7test::MachineTest {};

TEST_F(CutterHome, IsThePresentZAndTheCutterIsLifted) {
  machine_.StandAt(0, 0, 6000, kCutterDown);
  EXPECT_TRUE(SetCutterHomeHere(record_));
  EXPECT_EQ(record_.position.cutterHome, 6000);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z34.924999\n");
  EXPECT_EQ(File(), L"Axis Z/Cutter Home=1069547520\n");  // 1.5
}

// KEEP: truncated here alone; the deeper of lift and engraving.
TEST_F(CutterHome, IsAtLeastTheTruncatedLiftOrDepth) {
  record_.tools.cutterLift = 0.1249f;  // 499.6 steps
  record_.tools.engraveDepth = 0.01f;
  machine_.StandAt(0, 0, 10, kCutterUp);
  EXPECT_FALSE(SetCutterHomeHere(record_));  // the lift would end above the machine's top
  EXPECT_EQ(record_.position.cutterHome, 499);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(Key(L"Axis Z", L"Cutter Home"), L"1040153838");  // 0.12475

  record_.tools.engraveDepth = 0.1252f;  // 500.8 steps; the lift of 500 ends at 0
  EXPECT_FALSE(SetCutterHomeHere(record_));
  EXPECT_EQ(record_.position.cutterHome, 500);
  record_.tools.engraveDepth = 0.12536f;  // 501.4 steps
  EXPECT_TRUE(SetCutterHomeHere(record_));
  EXPECT_EQ(record_.position.cutterHome, 501);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z0.006350\n");
}

TEST_F(CutterHome, SaysFalseWhenTheCutterIsThereAlready) {
  record_.tools.cutterLift = 0.0f;
  machine_.StandAt(0, 0, 6000, kCutterUp);
  EXPECT_FALSE(SetCutterHomeHere(record_));
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\n");
}

TEST_F(CutterHome, WithoutAPitchNothingOverflows) {
  record_.mechanics.axis.z.screwPitch = 0.0f;
  EXPECT_FALSE(SetCutterHomeHere(record_));
  EXPECT_EQ(record_.position.cutterHome, INT32_MAX);
  EXPECT_EQ(Key(L"Axis Z", L"Cutter Home"), L"0");
}

}  // namespace
}  // namespace k7
