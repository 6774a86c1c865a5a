#include "motion/tool_wait.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "device/polling.h"
#include "device/record_lock.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::TestMachine;
using k7test::WaitUntil;

std::uint8_t WaitFlag(const DeviceState& record) {
  return ReadLocked<waitMutex>(record, std::uint8_t{99}, [&] { return record.waitFlag; });
}

std::uint32_t Plunge(DeviceState& record, bool wait) {
  return MoveCutter(record, 4250, CommandTag::Plunge, kCutterDown, wait);
}

// The pneumatic head: the reader ends a wait after every lift and plunge.
struct AirMachine : TestMachine {
  AirMachine() {
    OpenJob();
    (*this)->cutterMode = kCutterAirZ;
  }
};

TEST(MoveCutter, SendsZAloneAndCountsIt) {
  TestMachine machine;
  machine.OpenJob();
  EXPECT_EQ(Plunge(*machine, false), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z26.987499\n");
  EXPECT_EQ(machine->zMoveCount, 1);
  EXPECT_EQ(machine->cutterState, kCutterDown);
  EXPECT_EQ(MoveCutter(*machine, 3500, CommandTag::Lift, kCutterUp, false), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z22.225000\n");
  EXPECT_EQ(machine->zMoveCount, 2);
  EXPECT_EQ(machine->cutterState, kCutterUp);
  EXPECT_EQ(machine.Tags(), (std::vector<int>{2, 4}));
}

TEST(MoveCutter, ThatSendsNothingChangesNothing) {
  AirMachine machine;
  machine.StandAt(0, 0, 4250, kCutterUp);
  EXPECT_EQ(Plunge(*machine, true), kStatusNothing);
  machine->tableSurface = 100;
  EXPECT_EQ(Plunge(*machine, true), kStatusRefused);
  EXPECT_EQ(machine->zMoveCount, 0);
  EXPECT_EQ(machine->cutterState, kCutterUp);
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
  machine->engraveDelayMs = 200;
  const std::uint32_t start = TickMs();
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_GE(TickMs() - start, 180u);
}

TEST(MoveCutter, KeepsWaitingUntilTheEndIsReported) {
  AirMachine machine;
  machine.controller.OnPrefix(
      "G0 Z", [](k7test::FakeController& fake, const std::string&) { fake.Say("QX\r\nBX\r\n"); });
  std::atomic<bool> back{false};
  std::thread host{[&] {
    Plunge(*machine, true);
    back = true;
  }};
  EXPECT_TRUE(WaitUntil([&] { return BlocksRunning(*machine) == 1; }));
  EXPECT_FALSE(WaitUntil([&] { return back.load(); }, std::chrono::milliseconds{150}));
  machine.controller.Say("EX\r\n");
  EXPECT_TRUE(WaitUntil([&] { return back.load(); }));
  host.join();
}

// Each of these would wait for ever: nothing would clear the flag.
TEST(MoveCutter, DoesNotWaitWhileNobodyListens) {
  AirMachine machine;
  machine->notifyCallback = nullptr;
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(WaitFlag(*machine), 0);
}

TEST(MoveCutter, DoesNotWaitWhileMovesAreQuiet) {
  AirMachine machine;
  machine->quietMoves = 1;
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(WaitFlag(*machine), 0);
}

TEST(MoveCutter, DoesNotWaitDuringAJog) {
  AirMachine machine;
  machine->jogActive = 1;
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(WaitFlag(*machine), 0);
}

TEST(MoveCutter, DoesNotWaitWithoutAnOpenJob) {
  TestMachine machine;
  machine->cutterMode = kCutterAirZ;
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(WaitFlag(*machine), 0);
}

TEST(MoveCutter, AReaderThatIsStoppedEndsTheWait) {
  AirMachine machine;
  machine.controller.AnswerMoves(false);
  std::atomic<bool> back{false};
  std::thread host{[&] {
    Plunge(*machine, true);
    back = true;
  }};
  EXPECT_TRUE(machine.controller.WaitForLine("G0 Z26.987499\n"));
  machine->readerRun = 0;
  EXPECT_TRUE(WaitUntil([&] { return back.load(); }));
  host.join();
}

TEST(MoveCutter, AWindowAloneIsAListenerToo) {
  AirMachine machine;
  machine->notifyCallback = nullptr;
  machine->ownerWindow = GetDesktopWindow();
  EXPECT_EQ(Plunge(*machine, true), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Z26.987499\nM42\n");
}

}  // namespace
}  // namespace k7
