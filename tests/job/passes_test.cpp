#include "job/passes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "device/polling.h"
#include "device/progress.h"
#include "support/host_call.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

class StartPassTest : public testing::Test {
 protected:
  StartPassTest() {
    machine_->passes.passCount = 4;
    machine_->passes.passDepths.reset(new float[4]{0.019167f, 0.038333f, 0.0575f, 0.0625f});
  }
  std::wstring Start(std::uint32_t pass, std::uint32_t x = 0, std::uint32_t y = 0) {
    wchar_t status[128] = L"(untouched)";
    EXPECT_EQ(StartPass(*machine_, pass, x, y, status, 128), 0u);
    return status;
  }

  k7test::TestMachine machine_;
};

TEST_F(StartPassTest, TakesTheDepthOfThePassAndSaysSo) {
  EXPECT_EQ(Start(3), L"Pass 3 of 4 - 0.058");
  EXPECT_EQ(machine_->passes.passDepth, 0.0575f);
  EXPECT_EQ(machine_->passes.currentPass, 3u);
  machine_->host.gridMode = kRunGrid;
  EXPECT_EQ(Start(2), L"Pass 2 of 4 - 0.038 - GRID");
  EXPECT_EQ(machine_.Sent(), "");  // the cutter is up: the strokes will plunge
}

TEST_F(StartPassTest, OfAPneumaticHeadSaysAirZ) {
  machine_->tools.cutterMode = kCutterAirZ;
  machine_->passes.passCount = 1;
  machine_->passes.passDepths.reset(new float[1]{0.01f});
  EXPECT_EQ(Start(1), L"Pass 1 of 1 - Air Z");
}

TEST_F(StartPassTest, ANumberOutsideTheTableKeepsTheDepth) {
  machine_->passes.passDepth = 0.03125f;
  EXPECT_EQ(Start(5), L"Pass 5 of 4 - 0.031");
  EXPECT_EQ(machine_->passes.passDepth, 0.03125f);
  EXPECT_EQ(machine_->passes.currentPass, 5u);
  Start(0);
  EXPECT_EQ(machine_->passes.passDepth, 0.03125f);
  EXPECT_EQ(machine_->passes.currentPass, 0u);
}

TEST_F(StartPassTest, WithoutATableKeepsTheDepth) {
  machine_->passes.passDepths.reset();
  machine_->passes.passDepth = 0.03125f;
  EXPECT_EQ(Start(1), L"Pass 1 of 4 - 0.031");
  EXPECT_EQ(machine_->passes.passDepth, 0.03125f);
}

TEST_F(StartPassTest, ACutterInTheWorkOverTheFirstPointIsPlungedAgain) {
  machine_->tools.cutterState = kCutterDown;
  machine_->position.last.x = 4000;
  machine_->position.last.y = 8000;
  machine_->position.last.z = 4000 + 77;
  Start(2, 4000, 8000);
  EXPECT_EQ(machine_.Sent(), "G0 F762.000\nG0 Z26.371550\n");  // 4000 + 153 steps
  EXPECT_EQ(machine_->position.last.z, 4153);
  EXPECT_EQ(machine_->tools.cutterState, kCutterDown);
  EXPECT_EQ(machine_->job.zMoveCount, 1);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRing[0], CommandTag::Plunge);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRingIndex, 1);
}

// The dry run of the move decides: nothing is sent when the cutter would have to travel first.
TEST_F(StartPassTest, ACutterInTheWorkElsewhereStaysAsItIs) {
  machine_->tools.cutterState = kCutterDown;
  Start(2, 4000, 8000);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(machine_->passes.passDepth, 0.038333f);
}

// The least depth of a stroke's plunge does not hold here.
TEST_F(StartPassTest, PlungesToADepthOfNothingAsItStands) {
  machine_->tools.cutterState = kCutterDown;
  machine_->passes.passDepths[0] = 0.0f;
  Start(1);
  EXPECT_EQ(machine_->position.last.z, 4000);
}

TEST_F(StartPassTest, APlungeThatIsRefusedLeavesTheCutterAndTheCount) {
  machine_->tools.cutterState = kCutterDown;
  machine_->position.tableSurface = 4000;
  EXPECT_EQ(Start(2), L"Pass 2 of 4 - 0.038");
  EXPECT_EQ(machine_.Sent(), "G0 F762.000\n");
  EXPECT_EQ(machine_->job.zMoveCount, 0);
  EXPECT_EQ(machine_->job.tagRing.Alone().ackRingIndex, 0);
}

TEST_F(StartPassTest, WithoutABufferStillTakesTheDepthAndPlunges) {
  machine_->tools.cutterState = kCutterDown;
  StartPass(*machine_, 2, 0, 0, nullptr, 128);
  EXPECT_EQ(machine_->position.last.z, 4153);
  machine_->job.linesInFlight.Alone() = 0;  // the plunge has been carried out
  wchar_t status[4] = L"abc";
  StartPass(*machine_, 3, 0, 0, status, 0);
  EXPECT_EQ(machine_->passes.passDepth, 0.0575f);
  EXPECT_STREQ(status, L"abc");
}

TEST_F(StartPassTest, WithoutAConnectionDoesNothing) {
  machine_->link.connected = 0;
  EXPECT_EQ(Start(3), L"(untouched)");
  EXPECT_EQ(machine_->passes.currentPass, 0u);
}

TEST_F(StartPassTest, WaitsUntilEveryMoveOfThePassBeforeIsCarriedOut) {
  for (const bool begun : {false, true}) {
    machine_->passes.currentPass = 0;
    (begun ? machine_->job.blocksRunning.Alone() : machine_->job.linesInFlight.Alone()) = 1;
    const k7test::HostCall pass{[&] { StartPass(*machine_, 2, 0, 0, nullptr, 0); }};
    EXPECT_TRUE(pass.Waits()) << begun;
    EXPECT_EQ(machine_->passes.currentPass, 0u) << begun;
    machine_.controller.Say(begun ? "EX\r\n" : "BX\r\nEX\r\n");
    EXPECT_TRUE(pass.Returns()) << begun;
    EXPECT_EQ(machine_->passes.currentPass, 2u) << begun;
    EXPECT_TRUE(k7test::WaitUntil([&] { return !MovesRemain(machine_->job); })) << begun;
  }
}

TEST_F(StartPassTest, WithAnEngraveDelayWaitsForTheToolAction) {
  machine_.OpenJob();
  machine_->tools.cutterState = kCutterDown;
  machine_->tools.engraveDelayMs = 150;
  const auto before = std::chrono::steady_clock::now();
  Start(2);
  const auto spent = std::chrono::steady_clock::now() - before;
  EXPECT_EQ(machine_->job.waitFlag.Alone(), 0);
  EXPECT_GE(spent, std::chrono::milliseconds{140});
}

}  // namespace
}  // namespace k7
