#include "core/progress.h"

#include <gtest/gtest.h>

namespace k7host {
namespace {

TEST(ProgressText, ShowsBarStrokesQueueAndTimeLeft) {
  EXPECT_EQ(ProgressText({12, 24, 50, 100, 8, true, 41}),
            "[##########..........]  50%  strokes 12/24  queue  8  left 0:00:41");
  EXPECT_EQ(ProgressText({0, 300, 0, 1000, 0, false, 0}),
            "[....................]   0%  strokes   0/300  queue  0  left unknown");
  EXPECT_EQ(ProgressText({300, 300, 1000, 1000, 0, true, 0}),
            "[####################] 100%  strokes 300/300  queue  0  left 0:00:00");
  EXPECT_EQ(ProgressText({1, 3, 999, 1000, 32, true, 3600}),
            "[###################.]  99%  strokes 1/3  queue 32  left 1:00:00");
}

TEST(ProgressText, AJobWithoutMovesIsDone) {
  EXPECT_EQ(ProgressPercent({}), 100u);
}

TEST(JobProgress, CountsWhatTheDriverReports) {
  MoveCounters counters;
  JobProgress progress(counters, 2, 4, 40);
  progress.Sent(false);  // travel
  progress.Sent(true);   // cut
  progress.Sent(false);
  EXPECT_EQ(progress.Waiting(), 3u);
  counters.queued = 3;
  counters.started = 2;
  EXPECT_EQ(progress.Waiting(), 1u);
  EXPECT_EQ(progress.Outstanding(), 3u);
  EXPECT_EQ(progress.View().movesDone, 0u);
  EXPECT_EQ(progress.View().secondsLeft, 40u);
  counters.finished = 2;
  const ProgressView view = progress.View();
  EXPECT_EQ(view.movesDone, 2u);
  EXPECT_EQ(view.strokesDone, 1u);
  EXPECT_EQ(view.outstanding, 1u);
  EXPECT_EQ(view.secondsLeft, 20u);
  EXPECT_TRUE(view.timeKnown);
}

TEST(JobProgress, StartsFromTheCountersAsTheyStand) {
  MoveCounters counters;
  counters.queued = counters.started = counters.finished = 7;
  JobProgress progress(counters, 1, 2, 0);
  progress.Sent(false);
  EXPECT_EQ(progress.Outstanding(), 1u);
  counters.finished = 8;
  EXPECT_EQ(progress.Outstanding(), 0u);
  EXPECT_FALSE(progress.View().timeKnown);
}

TEST(JobProgress, CountersMayRunRoundTheirEnd) {
  MoveCounters counters;
  counters.started = counters.finished = 0xFFFFFFFFu;
  JobProgress progress(counters, 1, 2, 0);
  progress.Sent(false);
  progress.Sent(true);
  counters.started = 1;
  counters.finished = 0;
  EXPECT_EQ(progress.Waiting(), 0u);
  EXPECT_EQ(progress.Outstanding(), 1u);
}

TEST(JobProgress, MoreReportsThanLinesDoNoHarm) {
  MoveCounters counters;
  JobProgress progress(counters, 1, 1, 0);
  progress.Sent(true);
  counters.started = counters.finished = 5;
  EXPECT_EQ(progress.Waiting(), 0u);
  EXPECT_EQ(progress.View().movesDone, 1u);
}

TEST(JobProgress, ASkippedMoveIsDoneWithTheLineBeforeIt) {
  MoveCounters counters;
  JobProgress progress(counters, 2, 3, 0);
  progress.Skipped(true);
  EXPECT_EQ(progress.View().strokesDone, 1u);
  progress.Sent(false);
  progress.Skipped(true);
  EXPECT_EQ(progress.View().movesDone, 1u);
  counters.finished = 1;
  EXPECT_EQ(progress.View().movesDone, 3u);
  EXPECT_EQ(progress.View().strokesDone, 2u);
}

TEST(JobProgress, AnUncertainLineCountsAsSentWhenItWasReported) {
  MoveCounters counters;
  JobProgress reported(counters, 1, 2, 0);
  counters.queued = counters.started = 1;
  reported.SentPerhaps(false);
  EXPECT_EQ(reported.Outstanding(), 1u);
  JobProgress silent(counters, 1, 2, 0);
  silent.SentPerhaps(false);
  EXPECT_EQ(silent.Outstanding(), 0u);
  EXPECT_EQ(silent.View().movesDone, 1u);
}

}  // namespace
}  // namespace k7host
