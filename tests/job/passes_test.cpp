#include "job/passes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "support/attached_device.h"

namespace k7 {
namespace {

class StartPassTest : public testing::Test {
 protected:
  StartPassTest() {
    k7test::GiveDefaults(*device_);
    device_->passCount = 4;
    device_->passDepths.reset(new float[4]{0.019167f, 0.038333f, 0.0575f, 0.0625f});
  }
  std::wstring Start(std::uint32_t pass, std::uint32_t x = 0, std::uint32_t y = 0) {
    wchar_t status[128] = L"(untouched)";
    EXPECT_EQ(StartPass(*device_, pass, x, y, status, 128), 0u);
    return status;
  }
  std::string Lines() {
    SendLine(*device_, "mark\n");
    EXPECT_TRUE(controller_.WaitForLine("mark\n"));
    const std::string all = controller_.Transcript();
    return all.substr(0, all.find("mark\n"));
  }

  k7test::FakeController controller_;
  k7test::AttachedDevice device_{controller_};
};

TEST_F(StartPassTest, TakesTheDepthOfThePassAndSaysSo) {
  EXPECT_EQ(Start(3), L"Pass 3 of 4 - 0.058");
  EXPECT_EQ(device_->passDepth, 0.0575f);
  EXPECT_EQ(device_->currentPass, 3u);
  device_->gridMode = kRunGrid;
  EXPECT_EQ(Start(2), L"Pass 2 of 4 - 0.038 - GRID");
  EXPECT_EQ(Lines(), "");  // the cutter is up: the strokes will plunge
}

TEST_F(StartPassTest, OfAPneumaticHeadSaysAirZ) {
  device_->cutterMode = kCutterAirZ;
  device_->passCount = 1;
  device_->passDepths.reset(new float[1]{0.01f});
  EXPECT_EQ(Start(1), L"Pass 1 of 1 - Air Z");
}

TEST_F(StartPassTest, ANumberOutsideTheTableKeepsTheDepth) {
  device_->passDepth = 0.03125f;
  EXPECT_EQ(Start(5), L"Pass 5 of 4 - 0.031");
  EXPECT_EQ(device_->passDepth, 0.03125f);
  EXPECT_EQ(device_->currentPass, 5u);
  Start(0);
  EXPECT_EQ(device_->passDepth, 0.03125f);
  EXPECT_EQ(device_->currentPass, 0u);
}

TEST_F(StartPassTest, WithoutATableKeepsTheDepth) {
  device_->passDepths.reset();
  device_->passDepth = 0.03125f;
  EXPECT_EQ(Start(1), L"Pass 1 of 4 - 0.031");
  EXPECT_EQ(device_->passDepth, 0.03125f);
}

TEST_F(StartPassTest, ACutterInTheWorkOverTheFirstPointIsPlungedAgain) {
  device_->cutterState = kCutterDown;
  device_->lastX = 4000;
  device_->lastY = 8000;
  device_->lastZ = 4000 + 77;
  Start(2, 4000, 8000);
  EXPECT_EQ(Lines(), "G0 F1524.000\nG0 Z26.371550\n");  // 4000 + 153 steps
  EXPECT_EQ(device_->lastZ, 4153);
  EXPECT_EQ(device_->cutterState, kCutterDown);
  EXPECT_EQ(device_->zMoveCount, 1);
  EXPECT_EQ(device_->ackRing[0], CommandTag::Plunge);
  EXPECT_EQ(device_->ackRingIndex, 1);
}

// The dry run of the move decides: nothing is sent when the cutter would have to travel first.
TEST_F(StartPassTest, ACutterInTheWorkElsewhereStaysAsItIs) {
  device_->cutterState = kCutterDown;
  Start(2, 4000, 8000);
  EXPECT_EQ(Lines(), "");
  EXPECT_EQ(device_->passDepth, 0.038333f);
}

// The least depth of a stroke's plunge does not hold here.
TEST_F(StartPassTest, PlungesToADepthOfNothingAsItStands) {
  device_->cutterState = kCutterDown;
  device_->passDepths[0] = 0.0f;
  Start(1);
  EXPECT_EQ(device_->lastZ, 4000);
}

TEST_F(StartPassTest, APlungeThatIsRefusedLeavesTheCutterAndTheCount) {
  device_->cutterState = kCutterDown;
  device_->tableSurface = 4000;
  EXPECT_EQ(Start(2), L"Pass 2 of 4 - 0.038");
  EXPECT_EQ(Lines(), "G0 F1524.000\n");
  EXPECT_EQ(device_->zMoveCount, 0);
  EXPECT_EQ(device_->ackRingIndex, 0);
}

TEST_F(StartPassTest, WithoutABufferStillTakesTheDepthAndPlunges) {
  device_->cutterState = kCutterDown;
  StartPass(*device_, 2, 0, 0, nullptr, 128);
  EXPECT_EQ(device_->lastZ, 4153);
  device_->linesInFlight = 0;  // the plunge has been carried out
  wchar_t status[4] = L"abc";
  StartPass(*device_, 3, 0, 0, status, 0);
  EXPECT_EQ(device_->passDepth, 0.0575f);
  EXPECT_STREQ(status, L"abc");
}

TEST_F(StartPassTest, WithoutAConnectionDoesNothing) {
  device_->connected = 0;
  EXPECT_EQ(Start(3), L"(untouched)");
  EXPECT_EQ(device_->currentPass, 0u);
}

TEST_F(StartPassTest, WaitsUntilEveryMoveOfThePassBeforeIsCarriedOut) {
  device_->linesInFlight = 1;
  std::atomic<bool> started{false};
  std::thread host{[&] {
    StartPass(*device_, 2, 0, 0, nullptr, 0);
    started = true;
  }};
  const auto stillWaiting = [&] {
    return !k7test::WaitUntil([&] { return started.load(); }, std::chrono::milliseconds{200});
  };
  EXPECT_TRUE(stillWaiting());
  controller_.Say("BX\r\n");  // begun, not ended
  EXPECT_TRUE(stillWaiting());
  EXPECT_EQ(device_->currentPass, 0u);
  controller_.Say("EX\r\n");
  EXPECT_TRUE(k7test::WaitUntil([&] { return started.load(); }));
  host.join();
  EXPECT_EQ(device_->currentPass, 2u);
}

TEST_F(StartPassTest, WithAnEngraveDelayWaitsForTheToolAction) {
  controller_.BehaveWell();
  controller_.Answer("mark\n", "");
  device_->cutterState = kCutterDown;
  device_->engraveDelayMs = 150;
  device_->notifyCallback = [](std::uint32_t, std::uint64_t) {};
  SendLine(*device_, "SendBlockMessagesOn\n");
  ASSERT_TRUE(k7test::WaitUntil([&] { return device_->jobOpen == 1; }));
  const auto before = std::chrono::steady_clock::now();
  Start(2);
  const auto spent = std::chrono::steady_clock::now() - before;
  EXPECT_EQ(device_->waitFlag, 0);
  EXPECT_GE(spent, std::chrono::milliseconds{140});
}

}  // namespace
}  // namespace k7
