// The link is lost while a call waits: whatever it waits for, it comes back, and so does the
// release.
#include <filesystem>
#include <functional>
#include <thread>

#include "device/progress.h"
#include "device/worker.h"
#include "job/go_to.h"
#include "job/job.h"
#include "job/jog.h"
#include "job/passes.h"
#include "job/travel.h"
#include "motion/cutter.h"
#include "motion/homing.h"
#include "motion/move.h"
#include "motion/probing.h"
#include "motion/strokes.h"
#include "support/both_links.h"
#include "support/host_call.h"
#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::HeldKey;
using k7test::HostCall;
using k7test::HostWindow;
using k7test::TestMachine;
using k7test::WaitUntil;

// Two seconds of failing reads, and the time for which the call itself may go on.
constexpr std::uint32_t kReturnsWithinMs = 3000;
// A machine that is busy with other tests.
constexpr std::uint32_t kSlackMs = 2000;

struct WaitCase {
  const char* name;
  void (*arrange)(TestMachine&);
  void (*call)(DeviceState&);
  const char* sentBefore;  // the line with which the wait begins; empty: none
};

void InAJobThatIsNotAnswered(TestMachine& machine) {
  machine.OpenJob();
  machine.controller.AnswerMoves(false);
}

void WithSwitches(TestMachine& machine) {
  machine.FitSwitches();
}

// What each wait is for, and the call that sits in it.
const WaitCase kWaits[] = {
    {"RoomInTheQueue",
     [](TestMachine& machine) {
       InAJobThatIsNotAnswered(machine);
       machine->job.linesInFlight.Set(32);
     },
     [](DeviceState& record) { SendMove(record, {.x = 2000}); }, ""},
    {"TheBeginOfAJob",
     [](TestMachine& machine) { machine.controller.Answer("SendBlockMessagesOn\n", ""); },
     [](DeviceState& record) { EXPECT_TRUE(BeginJob(record)); }, "SendBlockMessagesOn\n"},
    {"TheEndOfAJob",
     [](TestMachine& machine) {
       InAJobThatIsNotAnswered(machine);
       machine->job.blocksRunning.Set(1);
     },
     [](DeviceState& record) { EndJob(record); }, ""},
    {"TheConfirmationOfTheEndOfAJob",
     [](TestMachine& machine) {
       machine.OpenJob();
       machine.controller.Answer("SendBlockMessagesOff\n", "");
     },
     [](DeviceState& record) { EndJob(record); }, "SendBlockMessagesOff\n"},
    {"TheStartOfAPass",
     [](TestMachine& machine) {
       InAJobThatIsNotAnswered(machine);
       machine->job.linesInFlight.Set(1);
     },
     [](DeviceState& record) { EXPECT_EQ(StartPass(record, 1, 0, 0, nullptr, 0), 0u); }, ""},
    {"TheQueueToDrain",
     [](TestMachine& machine) {
       InAJobThatIsNotAnswered(machine);
       machine->job.linesInFlight.Set(1);
     },
     [](DeviceState& record) { DrainAndSetHold(record.job, record.link, 1); }, ""},
    {"AnAxisToFindItsSwitch", WithSwitches, [](DeviceState& record) { HomeToSwitches(record); },
     "G28 Z0\n"},
    {"TheSwitches",
     [](TestMachine& machine) {
       machine.FitSwitches();
       machine.controller.Answer("M119\n", "");
     },
     [](DeviceState& record) { QuerySwitches(record, nullptr, nullptr, nullptr, nullptr); },
     "M119\n"},
    {"AProbe", [](TestMachine&) {}, [](DeviceState& record) { ProbeSurface(record); },
     "G30 F12.700\n"},
    {"TheDwellOfATool",
     [](TestMachine& machine) {
       InAJobThatIsNotAnswered(machine);
       machine->tools.engraveDelayMs = 20;
     },
     [](DeviceState& record) { LowerCutter(record); }, "G0 Z26.987499\n"},
    {"TheAirHead",
     [](TestMachine& machine) {
       InAJobThatIsNotAnswered(machine);
       machine->tools.cutterMode = kCutterAirZ;
     },
     [](DeviceState& record) { EngraveTo(record, 2000, 4000); }, "G0 Z26.987499\n"},
};

void PrintTo(const WaitCase& row, std::ostream* out) {
  *out << row.name;
}

class WaitOnALostLink : public testing::TestWithParam<WaitCase> {};
INSTANTIATE_TEST_SUITE_P(, WaitOnALostLink, testing::ValuesIn(kWaits),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST_P(WaitOnALostLink, EndsForThisAndWithIt) {
  const WaitCase& row = GetParam();
  TestMachine machine;
  std::filesystem::remove(SettingsFilePath(machine->link).text);
  row.arrange(machine);
  {
    const HostCall host{[&] { row.call(*machine); }};
    if (*row.sentBefore != '\0') {
      ASSERT_TRUE(machine.controller.WaitForLine(row.sentBefore));
    }
    ASSERT_TRUE(host.Waits());
    const std::uint32_t start = TickMs();
    machine.controller.HangUp();
    EXPECT_TRUE(host.Returns());
    EXPECT_LT(TickMs() - start, kReturnsWithinMs + kSlackMs);
  }
  EXPECT_EQ(LinesInFlight(machine->job), 0);
  EXPECT_EQ(BlocksRunning(machine->job), 0);
  EXPECT_EQ(machine->link.connected, 1) << "what the controller said once stays said";
  EXPECT_EQ(CheckAlive(machine->link), 0);
  // Nothing is waited for from here on, and the release is prompt.
  const std::uint32_t start = TickMs();
  row.call(*machine);
  EXPECT_LT(TickMs() - start, 1000u + kSlackMs);
  const std::uint32_t release = TickMs();
  SetMotorPower(machine->link, 0);
  DetachLink(*machine, kLinkNone);
  EXPECT_LT(TickMs() - release, 1000u + kSlackMs);
}

class LostLinkOf : public testing::TestWithParam<std::uint32_t> {};
INSTANTIATE_TEST_SUITE_P(, LostLinkOf, k7test::kBothLinks, k7test::LinkName);

TEST_P(LostLinkOf, EitherKindIsFoundOutWithinTwoSecondsAndNotBefore) {
  k7test::FakeController controller{GetParam()};
  k7test::AttachedDevice device{controller};
  const std::uint32_t start = TickMs();
  controller.HangUp();
  EXPECT_TRUE(WaitUntil([&] { return device->link.lost != 0; }));
  const std::uint32_t took = TickMs() - start;
  EXPECT_GE(took, 1900u);
  EXPECT_LT(took, 2000u + kSlackMs);
  EXPECT_EQ(device->link.readerRun, 1) << "it goes on trying";
}

TEST(LostLink, AStoppedReaderEndsTheWaitAtOnce) {
  TestMachine machine;
  InAJobThatIsNotAnswered(machine);
  machine->job.linesInFlight.Set(32);
  const HostCall host{[&] { SendMove(*machine, {.x = 2000}); }};
  ASSERT_TRUE(host.Waits());
  // As the sender of a line whose write has failed does.
  machine->link.readerRun = 0;
  machine->link.lost = 1;
  TellNews(machine->link);
  EXPECT_TRUE(host.Returns());
}

TEST(LostLink, EndsAJogWhoseKeyIsHeld) {
  const HostWindow window{HostWindow::Lives::OnItsOwnThread};
  constexpr std::uint32_t kJogEnd = WM_APP + 4;
  TestMachine machine;
  machine->notify.ownerWindow = window.Handle();
  const HeldKey key{VK_F13};
  StartJog(*machine, kJogXPlus, kJogFast, VK_F13, kJogEnd);
  ASSERT_TRUE(machine.controller.WaitForLines(4));
  machine.controller.HangUp();
  EXPECT_TRUE(window.WaitFor(kJogEnd)) << "the host always gets its end-of-jog message";
  EXPECT_TRUE(WaitUntil([&] { return machine->jog.jogActive == 0; }));
  EndWorkers(*machine);
}

TEST(LostLink, ASilentControllerOnALinkThatWorksIsWaitedFor) {
  TestMachine machine;
  machine.FitSwitches();
  const HostCall host{[&] { HomeToSwitches(*machine); }};
  ASSERT_TRUE(machine.controller.WaitForLine("G28 Z0\n"));
  EXPECT_TRUE(host.Waits(std::chrono::milliseconds{3500}));
  for (const char* axis : {"Z", "Y", "X"}) {
    EXPECT_TRUE(machine.controller.WaitForLine(std::string{"G28 "} + axis + "0\n"));
    machine.controller.Say(std::string{axis} + "_Limit 0\r\n");
  }
  EXPECT_TRUE(host.Returns());
}

// The head did not reach its switches: the place where it stands is not zero.
TEST(LostLink, WhileHomingDeclaresNothingAndKeepsTheLocation) {
  TestMachine machine;
  machine.FitSwitches();
  machine.StandAt(111, 222, 333, kCutterUp);
  const HostCall host{[&] { HomeToSwitches(*machine); }};
  ASSERT_TRUE(machine.controller.WaitForLine("G28 Z0\n"));
  machine.controller.HangUp();
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine->position.last.x, 111);
  EXPECT_EQ(machine->position.last.y, 222);
  EXPECT_EQ(machine->position.last.z, 333);
}

// An offset taken off a surface that was never found would wander with every try.
TEST(LostLink, WhileProbingLeavesTheCutterHome) {
  TestMachine machine;
  machine->tools.probeOffset = 0.5f;
  machine->position.cutterHome = 4000;
  const HostCall host{[&] { ProbeAndLift(*machine, 100); }};
  ASSERT_TRUE(machine.controller.WaitForLine("G30 F12.700\n"));
  machine.controller.HangUp();
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine->position.cutterHome, 4000);
}

// Without the room in the queue to wait for, lines would go out as fast as they are made.
TEST(LostLink, IsALinkAgainWhenItBringsSomething) {
  TestMachine machine;
  machine->link.lost = 1;
  machine.controller.Say("ok\r\n");
  EXPECT_TRUE(WaitUntil([&] { return machine->link.lost == 0; }));
}

TEST(LostLink, IsForgottenByTheNextAttach) {
  k7test::FakeController first;
  DeviceState record;
  AttachLink(record, first.DriverEnd(), kLinkSerial, L"first");
  record.link.lost = 1;
  DetachLink(record, kLinkNone);
  k7test::FakeController second;
  second.Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  AttachLink(record, second.DriverEnd(), kLinkSerial, L"second");
  EXPECT_EQ(record.link.lost, 0);
  EXPECT_EQ(CheckAlive(record.link), 1);
  EXPECT_TRUE(WaitUntil([&] { return record.link.connected == 1; }));
  DetachLink(record, kLinkNone);
}

// ------------------------------------------------------------- the queue while no job is open

// A controller need not report anything then.
TEST(QueueOutsideAJob, EndsItsWaitAfterTwoSecondsWithoutAReport) {
  TestMachine machine;
  machine->job.linesInFlight.Set(32);
  machine->job.blocksRunning.Set(3);
  const std::uint32_t start = TickMs();
  EXPECT_EQ(SendMove(*machine, {.x = 2000}), kStatusSent);
  EXPECT_GE(TickMs() - start, 1900u);
  EXPECT_LT(TickMs() - start, 2000u + kSlackMs);
  EXPECT_EQ(LinesInFlight(machine->job), 1) << "both counts were 0 before the line";
  EXPECT_EQ(BlocksRunning(machine->job), 0);
}

TEST(QueueOutsideAJob, EachReportStartsTheTwoSecondsAnew) {
  TestMachine machine;
  machine->job.linesInFlight.Set(34);
  const std::uint32_t start = TickMs();
  std::atomic<bool> over{false};
  std::thread controller{[&] {
    for (int i = 0; i < 3; ++i) {
      Sleep(1200);
      machine.controller.Say("QX\r\n");
    }
    over = true;
  }};
  SendMove(*machine, {.x = 2000});
  EXPECT_TRUE(over) << "reports came every 1.2 s";
  EXPECT_GE(TickMs() - start, 3600u + 1900u);
  controller.join();
}

TEST(QueueOutsideAJob, GoesOnAsSoonAsThereIsRoom) {
  TestMachine machine;
  machine->job.linesInFlight.Set(32);
  const HostCall host{[&] { SendMove(*machine, {.x = 2000}); }};
  EXPECT_TRUE(host.Waits());
  machine.controller.Say("BX\r\n");
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(LinesInFlight(machine->job), 32);
}

TEST(QueueOutsideAJob, DrainingEndsAfterTwoSecondsWithBothCountsZero) {
  TestMachine machine;
  machine->job.linesInFlight.Set(1);
  machine->job.blocksRunning.Set(1);
  const std::uint32_t start = TickMs();
  DrainAndSetHold(machine->job, machine->link, 1);
  EXPECT_GE(TickMs() - start, 1900u);
  EXPECT_EQ(LinesInFlight(machine->job), 0);
  EXPECT_EQ(BlocksRunning(machine->job), 0);
  EXPECT_EQ(machine->job.plungeHold, 1);
}

TEST(QueueInAJob, HasNoSuchEnd) {
  TestMachine machine;
  InAJobThatIsNotAnswered(machine);
  machine->job.linesInFlight.Set(32);
  const HostCall host{[&] { SendMove(*machine, {.x = 2000}); }};
  EXPECT_TRUE(host.Waits(std::chrono::milliseconds{3000}));
  machine.controller.Say("BX\r\n");
  EXPECT_TRUE(host.Returns());
}

}  // namespace
}  // namespace k7
