// The room in the controller's queue: when a move waits for it.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "device/polling.h"
#include "device/record_lock.h"
#include "motion/move.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::TestMachine;
using k7test::WaitUntil;

std::uint32_t MoveX(DeviceState& record, std::int32_t x) {
  return EmitMove(record, &x, nullptr, nullptr, 1, CommandTag::Move);
}

TEST(MoveRoom, WithNoJobOpenTheThirtyThirdLineGoesOut) {
  TestMachine machine;
  machine.controller.AnswerMoves(false);
  for (std::int32_t i = 1; i <= 32; ++i) ASSERT_EQ(MoveX(*machine, 1000 * i), kStatusSent);
  ASSERT_EQ(LinesInFlight(*machine), 32);
  std::atomic<bool> sent{false};
  std::thread host{[&] {
    MoveX(*machine, 40000);
    sent = true;
  }};
  EXPECT_TRUE(WaitUntil([&] { return sent.load(); }));
  if (!sent) machine.controller.Say("BX\r\n");  // let the thread go, so that the test can fail
  host.join();
  EXPECT_TRUE(machine.controller.WaitForLine("G0 X254.000000\n"));
  EXPECT_EQ(machine.controller.Lines().size(), 33u);
  EXPECT_EQ(LinesInFlight(*machine), 33);
}

TEST(MoveRoom, WithAJobOpenTheThirtyThirdLineWaitsUntilOneHasBegun) {
  TestMachine machine;
  machine.OpenJob();
  machine.controller.AnswerMoves(false);
  for (std::int32_t i = 1; i <= 32; ++i) ASSERT_EQ(MoveX(*machine, 1000 * i), kStatusSent);
  ASSERT_TRUE(machine.controller.WaitForLines(32));
  std::atomic<bool> sent{false};
  std::thread host{[&] {
    MoveX(*machine, 40000);
    sent = true;
  }};
  EXPECT_FALSE(WaitUntil([&] { return sent.load(); }, std::chrono::milliseconds{150}));
  EXPECT_EQ(machine.controller.Lines().size(), 32u);
  machine.controller.Say("QX\r\n");  // queued is not begun
  EXPECT_FALSE(WaitUntil([&] { return sent.load(); }, std::chrono::milliseconds{100}));
  machine.controller.Say("BX\r\n");
  EXPECT_TRUE(WaitUntil([&] { return sent.load(); }));
  host.join();
  EXPECT_TRUE(machine.controller.WaitForLine("G0 X254.000000\n"));
  EXPECT_EQ(LinesInFlight(*machine), 32);
}

TEST(MoveRoom, TheEndOfTheJobEndsTheWait) {
  TestMachine machine;
  machine.OpenJob();
  machine.controller.AnswerMoves(false);
  for (std::int32_t i = 1; i <= 32; ++i) ASSERT_EQ(MoveX(*machine, 1000 * i), kStatusSent);
  std::atomic<bool> sent{false};
  std::thread host{[&] {
    MoveX(*machine, 40000);
    sent = true;
  }};
  EXPECT_FALSE(WaitUntil([&] { return sent.load(); }, std::chrono::milliseconds{100}));
  {
    const RecordLock<jobMutex> lock{*machine};
    machine->jobOpen = 0;
  }
  EXPECT_TRUE(WaitUntil([&] { return sent.load(); }));
  machine.controller.Say("BX\r\n");  // let the thread go, so that the test can fail
  host.join();
}

TEST(MoveRoom, AnAbandonedQueueMutexEndsTheWaitAndTheLineIsSentAnyway) {
  TestMachine machine;
  machine.OpenJob();
  machine.controller.AnswerMoves(false);
  std::thread{[&] {
    WaitForSingleObject(machine->mutexes[flightMutex], INFINITE);
    machine->linesInFlight = 40;
  }}.join();
  EXPECT_EQ(MoveX(*machine, 2000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 X12.700000\n");
  EXPECT_EQ(LinesInFlight(*machine), 41);
}

}  // namespace
}  // namespace k7
