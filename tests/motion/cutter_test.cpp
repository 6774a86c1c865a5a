#include "motion/cutter.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <utility>

#include "device/guarded.h"
#include "device/polling.h"
#include "support/host_call.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::HostCall;
using k7test::TestMachine;

std::uint8_t WaitFlag(const DeviceState& record) {
  return record.job.waitFlag.ValueOr(99);
}

std::uint32_t Plunge(DeviceState& record, bool wait) {
  return MoveCutter(record, 4250, CommandTag::Plunge, kCutterDown, wait);
}

// The pneumatic head: the reader ends a wait after every lift and plunge.
struct AirMachine : TestMachine {
  AirMachine() {
    OpenJob();
    (*this)->tools.cutterMode = kCutterAirZ;
  }
};

TEST(MoveCutter, SendsZAloneAndCountsIt) {
  TestMachine machine;
  machine.OpenJob();
  EXPECT_EQ(Plunge(*machine, false), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z26.987499\n");
  EXPECT_EQ(machine->job.zMoveCount, 1);
  EXPECT_EQ(machine->tools.cutterState, kCutterDown);
  EXPECT_EQ(MoveCutter(*machine, 3500, CommandTag::Lift, kCutterUp, false), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z22.225000\n");
  EXPECT_EQ(machine->job.zMoveCount, 2);
  EXPECT_EQ(machine->tools.cutterState, kCutterUp);
  EXPECT_EQ(machine.Tags(), (std::vector<int>{2, 4}));
}

TEST(MoveCutter, ThatSendsNothingChangesNothing) {
  AirMachine machine;
  machine.StandAt(0, 0, 4250, kCutterUp);
  EXPECT_EQ(Plunge(*machine, true), kStatusNothing);
  machine->position.tableSurface = 100;
  EXPECT_EQ(Plunge(*machine, true), kStatusRefused);
  EXPECT_EQ(machine->job.zMoveCount, 0);
  EXPECT_EQ(machine->tools.cutterState, kCutterUp);
  EXPECT_EQ(WaitFlag(*machine), 0);  // raised before the line, taken back without one
  EXPECT_TRUE(machine.Tags().empty());
}

TEST(MoveCutter, WaitsUntilTheReaderHasSwitchedTheTool) {
  AirMachine machine;
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(WaitFlag(*machine), 0);
  EXPECT_EQ(machine.Sent(), "G0 Z26.987499\nM42\n");
  EXPECT_EQ(MoveCutter(*machine, 3500, CommandTag::Lift, kCutterUp, true), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z22.225000\nM43\n");
}

TEST(MoveCutter, TheFlagIsUpBeforeTheLineIsOnTheWire) {
  AirMachine machine;
  std::atomic<int> seen{-1};
  machine.controller.OnPrefix("G0 Z", [&](k7test::FakeController& fake, const std::string&) {
    seen = WaitFlag(*machine);
    fake.Say("QX\r\nBX\r\nEX\r\n");
  });
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(seen, 1);
}

TEST(MoveCutter, WaitsOutTheEngraveDelay) {
  TestMachine machine;
  machine.OpenJob();
  machine->tools.engraveDelayMs = 200;
  const std::uint32_t start = TickMs();
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_GE(TickMs() - start, 180u);
}

TEST(MoveCutter, KeepsWaitingUntilTheEndIsReported) {
  AirMachine machine;
  machine.controller.AnswerMoves(false);
  const HostCall host{[&] { Plunge(*machine, true); }};
  EXPECT_TRUE(machine.controller.WaitForLine("G0 Z26.987499\n"));
  machine.controller.Say("QX\r\nBX\r\n");
  EXPECT_TRUE(host.Waits());
  machine.controller.Say("EX\r\n");
  EXPECT_TRUE(host.Returns());
}

// Each of these would wait for ever: nothing would clear the flag.
TEST(MoveCutter, DoesNotWaitWhenNothingWouldEndTheWait) {
  constexpr struct {
    const char* name;
    void (*arrange)(DeviceState&);
  } kCases[] = {
      {"nobody listens", [](DeviceState& record) { record.notify.notifyCallback = nullptr; }},
      {"moves are quiet", [](DeviceState& record) { record.job.quietMoves = 1; }},
      {"a jog runs", [](DeviceState& record) { record.jog.jogActive = 1; }},
      {"no job is open", [](DeviceState& record) { record.job.jobOpen.Set(0); }},
      {"the reader is stopped", [](DeviceState& record) { record.link.readerRun = 0; }},
  };
  for (const auto& c : kCases) {
    AirMachine machine;
    c.arrange(*machine);
    const HostCall host{[&] { EXPECT_EQ(Plunge(*machine, true), kStatusSent); }};
    EXPECT_TRUE(host.Returns()) << c.name;
    EXPECT_EQ(WaitFlag(*machine), 0) << c.name;
  }
}

TEST(MoveCutter, AReaderThatIsStoppedEndsTheWait) {
  AirMachine machine;
  machine.controller.AnswerMoves(false);
  const HostCall host{[&] { Plunge(*machine, true); }};
  EXPECT_TRUE(machine.controller.WaitForLine("G0 Z26.987499\n"));
  EXPECT_TRUE(host.Waits());
  machine->link.readerRun = 0;
  EXPECT_TRUE(host.Returns());
}

TEST(MoveCutter, AFlagThatIsClosedEndsTheWait) {
  AirMachine machine;
  machine.controller.AnswerMoves(false);
  machine->job.waitFlag.Close();
  machine->job.waitFlag.Alone() = 1;
  const HostCall host{[&] { Plunge(*machine, true); }};
  EXPECT_TRUE(host.Returns());
}

TEST(MoveCutter, AWindowAloneIsAListenerToo) {
  AirMachine machine;
  machine->notify.notifyCallback = nullptr;
  machine->notify.ownerWindow = GetDesktopWindow();
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z26.987499\nM42\n");
}

}  // namespace
}  // namespace k7
