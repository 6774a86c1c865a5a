#include "board/planner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace k7sim {
namespace {

struct EventLog : BlockListener {
  void OnBlockBegun(const Block& block, TimeUs nowUs) override {
    entries.push_back("B" + std::to_string(block.lineId));
    times.push_back(nowUs);
  }
  void OnBlockEnded(const Block& block, double, TimeUs nowUs) override {
    entries.push_back("E" + std::to_string(block.lineId));
    times.push_back(nowUs);
  }
  std::vector<std::string> entries;
  std::vector<TimeUs> times;
};

Block Move(std::uint64_t id, Vec3 from, Vec3 to, double feed = 50) {
  Block block;
  block.from = from;
  block.to = to;
  block.feedMmPerSec = feed;
  block.lineId = id;
  return block;
}

struct LoggedPlanner {
  MotionLimits limits;
  EventLog log;
  Planner planner{limits, log};
};

TEST(Planner, MotionStartsAHundredMillisecondsAfterTheFirstBlock) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {100, 0, 0}), 5000);
  logged.planner.Advance(104'999);
  EXPECT_TRUE(logged.log.entries.empty());
  logged.planner.Advance(105'000);
  EXPECT_EQ(logged.log.entries, std::vector<std::string>{"B1"});
  logged.planner.Advance(10'000'000);
  EXPECT_EQ(logged.log.times, (std::vector<TimeUs>{105'000, 2'205'000}));
}

TEST(Planner, MotionStartsAtOnceWhenThirtyOneBlocksAreIn) {
  LoggedPlanner logged;
  for (int i = 0; i < 31; ++i) {
    EXPECT_FALSE(logged.planner.IsFull());
    logged.planner.Push(
        Move(static_cast<std::uint64_t>(i), {i * 10.0, 0, 0}, {i * 10.0 + 10, 0, 0}), 20'000);
  }
  EXPECT_TRUE(logged.planner.IsFull());
  EXPECT_EQ(logged.planner.NextEvent(), 20'000);
  logged.planner.Advance(20'000);
  EXPECT_EQ(logged.log.entries, std::vector<std::string>{"B0"});
  EXPECT_TRUE(logged.planner.IsFull());  // the running block keeps its place
}

TEST(Planner, EachBlockEndsBeforeTheNextBegins) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {10, 0, 0}), 0);
  logged.planner.Push(Move(2, {10, 0, 0}, {20, 0, 0}), 0);
  logged.planner.Push(Move(3, {20, 0, 0}, {30, 0, 0}), 0);
  logged.planner.Advance(60'000'000);
  EXPECT_THAT(logged.log.entries, testing::ElementsAre("B1", "E1", "B2", "E2", "B3", "E3"));
  EXPECT_TRUE(logged.planner.IsIdle());
  EXPECT_EQ(logged.planner.NextEvent(), kNever);
}

TEST(Planner, StraightOnGoesThroughWithoutSlowing) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {50, 0, 0}), 0);
  logged.planner.Push(Move(2, {50, 0, 0}, {100, 0, 0}), 0);
  logged.planner.Advance(60'000'000);
  // As one move of 100 mm, 2.1 s: each half takes 0.1 s for its ramp and 47.5 / 50 s for the rest.
  EXPECT_THAT(logged.log.times, testing::ElementsAre(100'000, 1'150'000, 1'150'000, 2'200'000));
}

TEST(Planner, StraightBackComesToAStop) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {50, 0, 0}), 0);
  logged.planner.Push(Move(2, {50, 0, 0}, {0, 0, 0}), 0);
  logged.planner.Advance(60'000'000);
  EXPECT_THAT(logged.log.times, testing::ElementsAre(100'000, 1'200'000, 1'200'000, 2'300'000));
}

TEST(Planner, ARightAngleIsTakenAtTheJunctionSpeed) {
  LoggedPlanner logged;
  // sin(45 deg) = 0.70711: sqrt(500 * 0.05 * 0.70711 / 0.29289) = 7.7689 mm/s.
  const double corner = std::sqrt(500 * 0.05 * std::sqrt(0.5) / (1 - std::sqrt(0.5)));
  EXPECT_NEAR(corner, 7.7689, 1e-4);
  Block first = Move(1, {0, 0, 0}, {50, 0, 0});
  Block second = Move(2, {50, 0, 0}, {50, 50, 0});
  first.lengthMm = second.lengthMm = 50;
  EXPECT_NEAR(CornerSpeed(first, second, logged.limits), corner, 1e-9);
  logged.planner.Push(first, 0);
  logged.planner.Push(second, 0);
  logged.planner.Advance(60'000'000);
  // Speeding up takes 0.1 s and 2.5 mm, then it slows down to the corner speed; the rest is at 50
  // mm/s.
  const double down = (50 - corner) / 500;
  const double downMm = (2500 - corner * corner) / 1000;
  const double seconds = 0.1 + down + (50 - 2.5 - downMm) / 50;
  EXPECT_NEAR(SecondsFromUs(logged.log.times[1] - logged.log.times[0]), seconds, 2e-6);
  EXPECT_NEAR(SecondsFromUs(logged.log.times[3] - logged.log.times[2]), seconds, 2e-6);
}

TEST(Planner, LookAheadSlowsDownOverSeveralShortBlocks) {
  LoggedPlanner logged;
  // Five blocks of 1 mm in one line: 2.5 mm to speed up to 50 mm/s and 2.5 mm to slow down.
  for (int i = 0; i < 5; ++i) {
    logged.planner.Push(Move(static_cast<std::uint64_t>(i), {1.0 * i, 0, 0}, {1.0 * i + 1, 0, 0}),
                        0);
  }
  logged.planner.Advance(60'000'000);
  EXPECT_NEAR(SecondsFromUs(logged.log.times.back() - logged.log.times.front()), 0.2, 1e-5);
}

TEST(Planner, ABlockThatComesTooLateFindsTheLastOneStopped) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {50, 0, 0}), 0);
  logged.planner.Advance(100'000);
  // The first block already runs, so it ends at rest as it was planned.
  logged.planner.Push(Move(2, {50, 0, 0}, {100, 0, 0}), 150'000);
  logged.planner.Advance(60'000'000);
  EXPECT_THAT(logged.log.times, testing::ElementsAre(100'000, 1'200'000, 1'200'000, 2'300'000));
}

TEST(Planner, AnEmptyQueueWaitsAgainBeforeItStarts) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {50, 0, 0}), 0);
  logged.planner.Advance(5'000'000);
  logged.planner.Push(Move(2, {50, 0, 0}, {0, 0, 0}), 5'000'000);
  EXPECT_EQ(logged.planner.NextEvent(), 5'100'000);
}

TEST(Planner, TheHeadIsWhereTheProfileHasCarriedIt) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {100, 0, 0}), 0);
  EXPECT_EQ(logged.planner.PositionAt(50'000, {0, 0, 0})[0], 0);
  logged.planner.Advance(100'000);
  EXPECT_NEAR(logged.planner.PositionAt(200'000, {0, 0, 0})[0], 2.5, 1e-9);
  EXPECT_NEAR(logged.planner.PositionAt(1'200'000, {0, 0, 0})[0], 52.5, 1e-9);
}

TEST(Planner, AFlushForgetsEveryBlock) {
  LoggedPlanner logged;
  logged.planner.Push(Move(1, {0, 0, 0}, {100, 0, 0}), 0);
  logged.planner.Advance(100'000);
  logged.planner.Flush();
  logged.planner.Advance(60'000'000);
  EXPECT_EQ(logged.log.entries, std::vector<std::string>{"B1"});
  EXPECT_EQ(logged.planner.NextEvent(), kNever);
}

TEST(PlannedSeconds, IsTheTimeOfAHostThatIsNeverLate) {
  const MotionLimits limits;
  EXPECT_DOUBLE_EQ(PlannedSeconds({}, limits), 0);
  std::vector<Block> blocks = {Move(1, {0, 0, 0}, {50, 0, 0}), Move(2, {50, 0, 0}, {100, 0, 0})};
  EXPECT_NEAR(PlannedSeconds(blocks, limits), 2.2, 1e-5);
  // A block before which the queue had to be empty starts from rest, after the start delay.
  blocks[1].afterDrain = true;
  EXPECT_NEAR(PlannedSeconds(blocks, limits), 0.1 + 1.1 + 0.1 + 1.1, 1e-5);
}

}  // namespace
}  // namespace k7sim
