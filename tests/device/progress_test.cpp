#include "device/progress.h"

#include <gtest/gtest.h>

namespace k7 {
namespace {

void Open(DeviceState& record) {
  ForEachGuarded(record, [](auto& guarded) { guarded.Open(); });
}

TEST(Counts, AreZeroAndStayWithoutALink) {
  DeviceState record;
  record.job.linesInFlight.Alone() = 5;
  EXPECT_EQ(LinesInFlight(record.job), 0);
  EXPECT_EQ(BlocksRunning(record.job), 0);
  EXPECT_EQ(JobOpen(record.job), 0);
  EXPECT_FALSE(MovesRemain(record.job));
  AwaitFewerInFlight(record.link, record.job, 1);  // does not wait
  ForgetMoves(record.job);
  EXPECT_EQ(record.job.linesInFlight.Alone(), 5);
}

TEST(MovesRemain, WhileALineHasNotBegunOrABegunOneHasNotEnded) {
  DeviceState record;
  Open(record);
  constexpr struct {
    std::int32_t linesInFlight, blocksRunning;
    bool want;
  } kCases[] = {{0, 0, false}, {1, 0, true}, {0, 1, true}, {-1, -1, false}, {1, -1, true}};
  for (const auto& c : kCases) {
    record.job.linesInFlight.Set(c.linesInFlight);
    record.job.blocksRunning.Set(c.blocksRunning);
    EXPECT_EQ(MovesRemain(record.job), c.want) << c.linesInFlight << ' ' << c.blocksRunning;
  }
  ForgetMoves(record.job);
  EXPECT_FALSE(MovesRemain(record.job));
}

TEST(IsIdle, WithAConnectionAndNoJob) {
  DeviceState record;
  EXPECT_FALSE(IsIdle(record));
  record.link.connected = 1;
  EXPECT_TRUE(IsIdle(record));
  Open(record);
  record.job.jobOpen.Set(1);
  EXPECT_FALSE(IsIdle(record));
}

TEST(ClearAliveTicks, ClearsThemEvenWithoutALink) {
  DeviceState record;
  record.link.alive.Alone() = {.lastCheckTick = 1, .lastAnswerTick = 2};
  ClearAliveTicks(record.link);
  EXPECT_EQ(record.link.alive.Alone().lastCheckTick, 0u);
  EXPECT_EQ(record.link.alive.Alone().lastAnswerTick, 0u);
}

}  // namespace
}  // namespace k7
