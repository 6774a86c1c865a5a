#include "job/jog.h"

#include <atomic>
#include <thread>

#include "device/polling.h"
#include "device/progress.h"
#include "motion/spindle_ramp.h"
#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::Duration;
using k7test::HeldKey;
using k7test::HostMessage;
using k7test::HostWindow;
using k7test::MessageBoxAnswer;
using k7test::WaitUntil;

constexpr std::uint8_t kKey = VK_F13;
constexpr std::chrono::milliseconds kMoment{100};  // in which nothing must happen

class Jog : public k7test::MachineTest {
 protected:
  Jog() {
    Tell(window_);
    record_.notify.notifyCallback = nullptr;
    record_.notify.msgQueued = WM_APP + 11;
    record_.notify.msgStarted = WM_APP + 12;
    record_.notify.msgFinished = WM_APP + 13;
  }
  ~Jog() override { EndWorkers(record_); }

  // Jogs with the key up: one step. Returns what was sent.
  std::string Tap(std::uint32_t direction, std::uint32_t speedMode) {
    const int before = window_.Count(kJogEnd);
    StartJog(record_, direction, speedMode, kKey, kJogEnd);
    EXPECT_TRUE(window_.WaitFor(kJogEnd, before + 1));
    return machine_.Sent();
  }
  int StepsSent() const {
    int count = 0;
    for (const std::string& line : machine_.controller.Lines()) {
      count += line.compare(0, 4, "G0 X") == 0;
    }
    return count;
  }

  HostWindow window_;
};

TEST_F(Jog, EachDirectionMakesOneStepAtLeast) {
  record_.position.tableHome.x = 400;
  constexpr struct {
    std::uint32_t direction, speedMode;
    const char* feed;
    const char* step;
    HostMessage report;
  } kCases[] = {
      {kJogYMinus, kJogFast, "G0 F7620.000\n", "G0 Y24.764999\n", {kPosition, 3600, 3900}},
      {kJogYPlus, kJogFast, "", "G0 Y25.400000\n", {kPosition, 3600, 4000}},
      {kJogXPlus, kJogFast, "", "G0 X26.035000\n", {kPosition, 3700, 4000}},
      {kJogXMinus, kJogSlow, "G0 F381.000\n", "G0 X25.907999\n", {kPosition, 3680, 4000}},
      {kJogZUp, kJogSlow, "", "G0 Z25.273001\n", {kJogZ, 3980, 0}},
      {kJogZDown, kJogFast, "G0 F7620.000\n", "G0 Z25.907999\n", {kJogZ, 4080, 0}},
  };
  machine_.StandAt(4000, 4000, 4000, kCutterUp);
  std::vector<HostMessage> told;
  for (const auto& c : kCases) {
    EXPECT_EQ(Tap(c.direction, c.speedMode), std::string{c.feed} + "M106\nSendBlockMessagesOn\n" +
                                                 c.step + "SendBlockMessagesOff\nM107\n");
    EXPECT_EQ(machine_.Tags(), std::vector<int>{3});
    told.push_back(c.report);
    told.push_back({kJogEnd, 0, 0});
  }
  // The host hears of the position and of the end, of no move.
  EXPECT_EQ(window_.Seen(), told);
  EXPECT_EQ(record_.jog.jogActive, 0u);
  EXPECT_EQ(File(),
            L"Current Location/X Axis=4080\nCurrent Location/Y Axis=4000\n"
            L"Current Location/Z Axis=4080\n");
}

TEST_F(Jog, GoesOnWhileTheKeyIsHeldAndStopsAtTheLimit) {
  HeldKey key{kKey};
  machine_.StandAt(300, 0, 0, kCutterUp);
  EXPECT_EQ(Tap(kJogXMinus, kJogFast),
            "G0 F7620.000\nM106\nSendBlockMessagesOn\nG0 X1.270000\nG0 X0.635000\nG0 X0.000000\n"
            "SendBlockMessagesOff\nM107\n");
  record_.position.tableHome.y = 50;
  machine_.StandAt(0, 64050 - 150, 0, kCutterUp);
  Tap(kJogYPlus, kJogFast);
  EXPECT_EQ(record_.position.last.y, 64000);  // one step more would leave the table
  // At the limit: a job, and not a single step.
  EXPECT_EQ(Tap(kJogYPlus, kJogFast), "M106\nSendBlockMessagesOn\nSendBlockMessagesOff\nM107\n");
  EXPECT_EQ(window_.Count(kJogEnd), 3);
}

TEST_F(Jog, AReplacedAxisHasNoLimitAndIsKeptUnderRAxis) {
  FitRoundFixture();
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  record_.position.stepsPerMm.x = 8000.0f / 25.4f;
  machine_.StandAt(0, 7, 9, kCutterUp);
  EXPECT_EQ(Tap(kJogXMinus, kJogFast),
            "G0 F7620.000\nM106\nSendBlockMessagesOn\nG0 X-0.635000\nSendBlockMessagesOff\nM107\n");
  EXPECT_EQ(Key(L"Current Location", L"X Axis"), L"(none)");
  EXPECT_EQ(Key(L"Current Location", L"Y Axis"), L"7");
  EXPECT_EQ(Key(L"Current Location", L"Z Axis"), L"9");
  // One of the 200 steps is lost below zero, where half a step is added all the same.
  EXPECT_EQ(Key(L"Current Location", L"R Axis"), L"-199");
}

TEST_F(Jog, ReleasingTheKeyEndsIt) {
  HeldKey key{kKey};
  StartJog(record_, kJogXPlus, kJogSlow, kKey, kJogEnd);
  EXPECT_TRUE(WaitUntil([&] { return StepsSent() >= 5; }));
  EXPECT_EQ(record_.jog.jogActive, 1u);
  EXPECT_EQ(window_.Count(kJogEnd), 0);
  key.Release();
  EXPECT_TRUE(window_.WaitFor(kJogEnd));
  EXPECT_EQ(window_.Count(kPosition), StepsSent());
  EXPECT_EQ(record_.position.last.x, 20 * StepsSent());
}

TEST_F(Jog, KeepsAtMostEightOrFourLinesOutstandingAndIsReleasedFromThatWait) {
  for (const bool fast : {true, false}) {
    const HeldKey key{kKey};
    machine_.controller.AnswerMoves(false);
    const int before = StepsSent();
    StartJog(record_, kJogXPlus, fast ? kJogFast : kJogSlow, kKey, kJogEnd);
    const int limit = fast ? 8 : 4;
    EXPECT_TRUE(WaitUntil([&] { return StepsSent() == before + limit; }));
    EXPECT_FALSE(WaitUntil([&] { return StepsSent() > before + limit; }, kMoment));
    machine_.controller.Say("QX\r\nBX\r\n");  // one begins: one more may go
    EXPECT_TRUE(WaitUntil([&] { return StepsSent() == before + limit + 1; }));
    EXPECT_FALSE(WaitUntil([&] { return StepsSent() > before + limit + 1; }, kMoment));
    EXPECT_LT(Duration([&] { EndWorkers(record_); }), 5000u);
    EXPECT_EQ(window_.Count(kJogEnd), fast ? 1 : 2);
    EXPECT_EQ(record_.jog.jogActive, 0u);
    EXPECT_TRUE(WaitUntil([&] { return JobOpen(record_.job) == 0; }));
  }
}

TEST_F(Jog, ARefusedJogStillEndsWithItsMessage) {
  const std::string nothing;
  EXPECT_EQ(Tap(6, kJogFast), nothing);  // no such direction
  record_.tools.cutterMode = kCutterAirZ;
  // The pause behind the query for the switches.
  EXPECT_GE(Duration([&] { EXPECT_EQ(Tap(kJogZUp, kJogFast), nothing); }), 100u);
  EXPECT_EQ(Tap(kJogZDown, kJogFast), nothing);
  EXPECT_EQ(window_.Seen(), std::vector<HostMessage>(3, HostMessage{kJogEnd, 0, 0}));
  EXPECT_EQ(record_.jog.jogActive, 0u);
  EXPECT_EQ(Key(L"Current Location", L"Z Axis"), L"0");
}

TEST_F(Jog, ATouchedProximitySwitchLiftsAndForbids) {
  FitSwitches();
  machine_.controller.Answer("M119\n", "min_x:0 min_y:0 min_z:0 Probe: 1\r\n");
  machine_.StandAt(0, 0, 4000, kCutterUp);
  MessageBoxAnswer box{L"Error"};
  EXPECT_EQ(Tap(kJogXPlus, kJogFast), "M119\nG0 F381.000\nG0 Z0.000000\n");
  ASSERT_TRUE(box.Appeared());
  EXPECT_EQ(box.Text(), L"Prox was triggered. Close JFZ then reopen");
  EXPECT_EQ(box.Owner(), window_.Handle());
  EXPECT_EQ(window_.Seen(), (std::vector<HostMessage>{{kJogEnd, 0, 0}}));
  // A pneumatic head has nothing to touch with.
  record_.tools.cutterMode = kCutterAirZ;
  EXPECT_EQ(Tap(kJogXPlus, kJogFast),
            "M119\nG0 F7620.000\nM106\nSendBlockMessagesOn\nG0 X0.635000\nSendBlockMessagesOff\n"
            "M107\n");
}

TEST_F(Jog, IsNotStartedInAJobOrBesideAnother) {
  machine_.OpenJob();
  StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  EXPECT_EQ(record_.jog.jogThread, nullptr);
  {
    const auto lock = record_.job.jobOpen.Lock();
    record_.job.jobOpen.Alone() = 0;
  }
  record_.jog.jogActive = 1;
  StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  EXPECT_EQ(record_.jog.jogThread, nullptr);
  record_.jog.jogActive = 0;
  // A second start is refused from the moment of the first, before jogActive is set.
  StartJog(record_, kJogXPlus, kJogSlow, kKey, kJogEnd);
  StartJog(record_, kJogYPlus, kJogFast, kKey, kJogEnd + 1);
  EXPECT_EQ(record_.jog.jogDirection, kJogXPlus);
  EXPECT_TRUE(window_.WaitFor(kJogEnd));
  EXPECT_EQ(machine_.Sent(),
            "G0 F381.000\nM106\nSendBlockMessagesOn\nG0 X0.127000\nSendBlockMessagesOff\nM107\n");
  EXPECT_EQ(window_.Count(kJogEnd + 1), 0);
}

TEST_F(Jog, WithoutAWindowItJogsAllTheSame) {
  record_.notify.ownerWindow = nullptr;
  StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  EXPECT_TRUE(machine_.controller.WaitForLine("M107\n"));
  EndWorkers(record_);
  EXPECT_EQ(record_.position.last.x, 100);
  EXPECT_EQ(Key(L"Current Location", L"X Axis"), L"100");
}

TEST_F(Jog, TheHostMayStartTheNextJogFromTheEndMessage) {
  std::atomic<int> rounds{0};
  window_.OnMessage(kJogEnd, [&] {
    if (++rounds < 3) StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  });
  StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  EXPECT_TRUE(WaitUntil([&] { return rounds == 3; }));
  EXPECT_EQ(record_.position.last.x, 300);
  EndWorkers(record_);
  EXPECT_EQ(record_.jog.jogThread, nullptr);
}

TEST_F(Jog, TheHostMayReleaseFromTheEndMessage) {
  std::atomic<bool> ended{false};
  window_.OnMessage(kJogEnd, [&] {
    EndWorkers(record_);
    ended = true;
  });
  StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  EXPECT_TRUE(WaitUntil([&] { return ended.load(); }));
}

// Ends promptly what would wait without bound.
class Release : public Jog {
 protected:
  void ExpectPromptEnd() {
    EXPECT_LT(Duration([&] { EndWorkers(record_); }), 5000u);
    EXPECT_EQ(record_.jog.jogThread, nullptr);
    EXPECT_EQ(record_.spindle.rampThread, nullptr);
    EXPECT_EQ(record_.jog.jogActive, 0u);
    EXPECT_EQ(record_.spindle.rampDirection, kRampIdle);
    EXPECT_EQ(record_.stopWorkers, 0);
  }
  void JogUntil(const char* line) {
    StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
    ASSERT_TRUE(machine_.controller.WaitForLine(line));
    // Into the wait behind the line, which does not end by itself.
    EXPECT_FALSE(WaitUntil([&] { return window_.Count(kJogEnd) != 0; }, kMoment));
  }
};

TEST_F(Release, InTheMiddleOfAJogWithTheKeyHeld) {
  const HeldKey key{kKey};
  record_.mechanics.tableWidth = 1 << 30;
  JogUntil("G0 X0.635000\n");
  ExpectPromptEnd();
  EXPECT_EQ(window_.Count(kJogEnd), 1);
}

TEST_F(Release, WhileNoSwitchReportComes) {
  FitSwitches();
  machine_.controller.Answer("M119\n", "");
  JogUntil("M119\n");
  ExpectPromptEnd();
  EXPECT_EQ(machine_.Sent(), "M119\n");
  EXPECT_EQ(window_.Count(kJogEnd), 1);
}

TEST_F(Release, WhileTheBeginOfTheJobIsNotConfirmed) {
  const HeldKey key{kKey};
  machine_.controller.Answer("SendBlockMessagesOn\n", "");
  JogUntil("SendBlockMessagesOn\n");
  ExpectPromptEnd();
  EXPECT_EQ(StepsSent(), 0);
}

TEST_F(Release, WhileTheEndOfTheJobIsNotConfirmed) {
  machine_.controller.Answer("SendBlockMessagesOff\n", "");
  JogUntil("SendBlockMessagesOff\n");
  ExpectPromptEnd();
}

TEST_F(Release, WhileTheLastStepIsNotCarriedOut) {
  machine_.controller.AnswerMoves(false);
  JogUntil("G0 X0.635000\n");
  ExpectPromptEnd();
}

TEST_F(Release, WhileTheProximityBoxIsShown) {
  FitSwitches();
  machine_.controller.Answer("M119\n", "min_x:0 min_y:0 min_z:0 Probe: 1\r\n");
  StartJog(record_, kJogXPlus, kJogFast, kKey, kJogEnd);
  ASSERT_TRUE(WaitUntil([] { return k7test::MessageBoxIsShown(L"Error"); }));
  ExpectPromptEnd();
  EXPECT_FALSE(k7test::MessageBoxIsShown(L"Error"));
}

// The jog tells the host of each step by a sent message: that must not hold up the thread that
// waits for the jog.
TEST_F(Release, OnTheThreadOfTheHostsWindow) {
  HostWindow own{HostWindow::Lives::OnThisThread};
  Tell(own);
  const HeldKey key{kKey};
  record_.mechanics.tableWidth = 1 << 30;
  JogUntil("G0 X0.635000\n");
  ExpectPromptEnd();
  EXPECT_GE(own.Count(kPosition), 1);
  EXPECT_EQ(own.Count(kJogEnd), 1);
}

TEST_F(Release, InTheMiddleOfARamp) {
  FitSpindle();
  const HeldKey key{kKey};
  record_.spindle.spindleOn = 1;
  record_.spindle.spindleValue = 6500;
  ASSERT_TRUE(StartSpindleRamp(record_, 0, window_.Handle(), kRampEnd, kKey));
  EXPECT_TRUE(WaitUntil([&] { return record_.spindle.spindleValue > 6600; }));
  ExpectPromptEnd();
  EXPECT_EQ(window_.Seen(),
            (std::vector<HostMessage>{{kRampEnd, record_.spindle.spindleValue, 0}}));
}

TEST_F(Release, WithNothingRunningIsNothing) {
  ExpectPromptEnd();
  ExpectPromptEnd();
}

}  // namespace
}  // namespace k7
