// The room in the controller's queue: when a move waits for it.
#include <gtest/gtest.h>
#include <windows.h>

#include "device/polling.h"
#include "device/progress.h"
#include "motion/move.h"
#include "support/host_call.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::HostCall;
using k7test::TestMachine;

std::uint32_t MoveX(DeviceState& record, std::int32_t x) {
  return SendMove(record, {.x = x}, CommandTag::Move);
}

class MoveRoom : public testing::Test {
 protected:
  MoveRoom() { machine_.controller.AnswerMoves(false); }
  TestMachine machine_;
};

TEST_F(MoveRoom, InAJobTheThirtyThirdLineWaitsUntilOneHasBegun) {
  machine_.OpenJob();
  for (std::int32_t i = 1; i <= 32; ++i) ASSERT_EQ(MoveX(*machine_, 1000 * i), kStatusSent);
  ASSERT_TRUE(machine_.controller.WaitForLines(32));
  const HostCall host{[&] { MoveX(*machine_, 40000); }};
  EXPECT_TRUE(host.Waits());
  EXPECT_EQ(machine_.controller.Lines().size(), 32u);
  machine_.controller.Say("QX\r\n");  // queued is not begun
  EXPECT_TRUE(host.Waits());
  machine_.controller.Say("BX\r\n");
  EXPECT_TRUE(host.Returns());
  EXPECT_TRUE(machine_.controller.WaitForLine("G0 X254.000000\n"));
  EXPECT_EQ(LinesInFlight(machine_->job), 32);
}

// The controller need not report anything then: the wait has an end of its own.
TEST_F(MoveRoom, WithNoJobOpenTheThirtyThirdLineWaitsTwoSecondsForAReport) {
  for (std::int32_t i = 1; i <= 32; ++i) MoveX(*machine_, 1000 * i);
  const HostCall host{[&] { MoveX(*machine_, 33000); }};
  EXPECT_TRUE(host.Waits(std::chrono::milliseconds{1500}));
  EXPECT_TRUE(host.Returns());
  EXPECT_TRUE(machine_.controller.WaitForLines(33));
  EXPECT_EQ(LinesInFlight(machine_->job), 1);
}

TEST_F(MoveRoom, AfterTheEndOfTheJobTheWaitGoesOnAsOutsideOne) {
  machine_.OpenJob();
  machine_->job.linesInFlight.Alone() = 32;
  const HostCall host{[&] { MoveX(*machine_, 2000); }};
  EXPECT_TRUE(host.Waits());
  machine_.controller.Say("SendBlockMessagesOff\r\n");
  EXPECT_TRUE(host.Waits(std::chrono::milliseconds{1500}));
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine_.Sent(), "G0 X12.700000\n");
}

TEST_F(MoveRoom, ACountThatIsClosedEndsTheWaitAndStays) {
  machine_.OpenJob();
  machine_->job.linesInFlight.Alone() = 40;
  const HostCall host{[&] { EXPECT_EQ(MoveX(*machine_, 2000), kStatusSent); }};
  EXPECT_TRUE(host.Waits());
  machine_->job.linesInFlight.Close();
  EXPECT_TRUE(host.Returns());
  EXPECT_EQ(machine_->job.linesInFlight.Alone(), 40);  // the guarded update is skipped
}

}  // namespace
}  // namespace k7
