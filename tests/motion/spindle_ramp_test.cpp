#include "motion/spindle_ramp.h"

#include <cstdlib>
#include <cstring>

#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::HeldKey;
using k7test::HostMessage;
using k7test::HostWindow;
using k7test::WaitUntil;

constexpr std::uint8_t kKey = VK_F14;

class SpindleRamp : public k7test::MachineTest {
 protected:
  SpindleRamp() {
    FitSpindle();
    record_.spindle.spindleOn = 1;
    record_.spindle.spindleValue = 6500;
  }
  ~SpindleRamp() override { EndWorkers(record_); }

  bool Start(std::int32_t direction) {
    return StartSpindleRamp(record_, direction, window_.Handle(), kRampEnd, kKey);
  }
  // The levels sent; -1 for any other line.
  std::vector<int> Levels() {
    std::vector<int> levels;
    const std::string sent = machine_.Sent();
    for (std::size_t at = 0; at < sent.size(); at = sent.find('\n', at) + 1) {
      const bool level = sent.compare(at, 5, "M44 S") == 0;
      levels.push_back(level ? std::atoi(sent.c_str() + at + 5) : -1);
    }
    return levels;
  }

  HostWindow window_;
};

TEST_F(SpindleRamp, UpEndsAtLevel252) {
  WriteKey(L"Spindle", L"Ramp Time", L"1");
  const HeldKey key{kKey};
  ASSERT_TRUE(Start(0));
  ASSERT_TRUE(window_.WaitFor(kRampEnd));
  const std::vector<int> levels = Levels();
  ASSERT_GE(levels.size(), 10u);
  EXPECT_GE(levels.front(), 126);
  EXPECT_EQ(levels.back(), 252);
  for (std::size_t i = 1; i < levels.size(); ++i) EXPECT_GT(levels[i], levels[i - 1]);
  // Level 252 is reached a little below the maximum: the ramp ends there.
  EXPECT_GE(record_.spindle.spindleValue, 12975);
  EXPECT_LE(record_.spindle.spindleValue, 13000);
  EXPECT_EQ(record_.spindle.spindleRpm, record_.spindle.spindleValue);
  EXPECT_EQ(record_.spindle.rampDirection, kRampIdle);
  EXPECT_EQ(Key(L"Spindle", L"Spindle RPM"), std::to_wstring(record_.spindle.spindleValue));
  EXPECT_EQ(window_.Seen(),
            (std::vector<HostMessage>{{kRampEnd, record_.spindle.spindleValue, 0}}));
}

TEST_F(SpindleRamp, DownEndsAtLevelZeroAndNeverBelowOneRpm) {
  WriteKey(L"Spindle", L"Ramp Time", L"1");
  const HeldKey key{kKey};
  ASSERT_TRUE(Start(1));
  ASSERT_TRUE(window_.WaitFor(kRampEnd));
  const std::vector<int> levels = Levels();
  ASSERT_GE(levels.size(), 10u);
  EXPECT_EQ(levels.back(), 0);
  for (std::size_t i = 1; i < levels.size(); ++i) EXPECT_LT(levels[i], levels[i - 1]);
  EXPECT_GE(record_.spindle.spindleValue, 1);
  EXPECT_LE(record_.spindle.spindleValue, 25);
  EXPECT_EQ(Key(L"Spindle", L"Spindle RPM"), std::to_wstring(record_.spindle.spindleValue));
  EXPECT_EQ(record_.spindle.spindleOn, 1);
}

TEST_F(SpindleRamp, ReleasingTheKeyEndsItWithTheReachedSpeed) {
  HeldKey key{kKey};
  ASSERT_TRUE(Start(0));  // 30 s for the whole range
  EXPECT_TRUE(WaitUntil([&] { return record_.spindle.spindleValue > 6700; }));
  EXPECT_FALSE(Start(1));  // one at a time
  EXPECT_EQ(record_.spindle.rampDirection, kRampUp);
  key.Release();
  ASSERT_TRUE(window_.WaitFor(kRampEnd));
  EXPECT_LT(record_.spindle.spindleValue, 12000);
  EXPECT_EQ(record_.spindle.spindleRpm, record_.spindle.spindleValue);
  EXPECT_EQ(Key(L"Spindle", L"Spindle RPM"), std::to_wstring(record_.spindle.spindleValue));
  EXPECT_EQ(window_.Seen(),
            (std::vector<HostMessage>{{kRampEnd, record_.spindle.spindleValue, 0}}));
}

TEST_F(SpindleRamp, AlreadyAtItsEndItWritesNothing) {
  const HeldKey key{kKey};
  record_.spindle.spindleValue = 12990;            // level 252
  WriteKey(L"Spindle", L"Ramp Time", L"2000000");  // no speed of its own within the test
  ASSERT_TRUE(Start(0));
  ASSERT_TRUE(window_.WaitFor(kRampEnd));
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(Key(L"Spindle", L"Spindle RPM"), L"(none)");
  EXPECT_EQ(window_.Seen(), (std::vector<HostMessage>{{kRampEnd, 12990, 0}}));
}

TEST_F(SpindleRamp, WithoutATimeTheEndIsReachedAtOnce) {
  WriteKey(L"Spindle", L"Ramp Time", L"0");
  ASSERT_TRUE(Start(0));
  ASSERT_TRUE(window_.WaitFor(kRampEnd));
  EXPECT_EQ(machine_.Sent(), "M44 S252\n");
  EXPECT_EQ(record_.spindle.spindleValue, 13000);
  ASSERT_TRUE(WaitUntil([&] { return Start(1); }));
  ASSERT_TRUE(window_.WaitFor(kRampEnd, 2));
  EXPECT_EQ(machine_.Sent(), "M44 S0\n");
  EXPECT_EQ(record_.spindle.spindleValue, 1);
  EXPECT_EQ(Key(L"Spindle", L"Spindle RPM"), L"1");
}

TEST_F(SpindleRamp, IsRefusedWithoutARunningSpindleOrSomewhereToGo) {
  record_.spindle.spindlePresent = 2;
  EXPECT_FALSE(Start(0));
  record_.spindle.spindlePresent = 1;
  record_.spindle.spindleOn = 0;
  EXPECT_FALSE(Start(0));
  record_.spindle.spindleOn = 1;
  EXPECT_FALSE(Start(2));
  EXPECT_FALSE(Start(-1));
  record_.spindle.spindleValue = 13000;
  EXPECT_FALSE(Start(0));
  record_.spindle.spindleValue = 0;
  EXPECT_FALSE(Start(1));
  record_.spindle.spindleValue = 6500;
  machine_.OpenJob();
  EXPECT_FALSE(Start(0));
  EXPECT_FALSE(Start(1));
  EXPECT_EQ(record_.spindle.rampThread, nullptr);
  EXPECT_EQ(record_.spindle.rampDirection, kRampIdle);
  EXPECT_TRUE(window_.Seen().empty());
}

}  // namespace
}  // namespace k7
