#include "board/job_log.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/simulator/support/small_job.h"

namespace k7sim {
namespace {

using k7test::Bench;
using k7test::InchDeep;
using k7test::RunJob;

TEST(JobLog, TimesAJobFromItsOutputSwitchToItsLastBlock) {
  Bench bench(InchDeep());
  RunJob(bench);
  const TimeUs ended = bench.now;
  bench.PassSeconds(5);
  bench.Send("SendBlockMessagesOff");
  bench.Send("M107");
  const std::vector<JobRecord>& jobs = bench.board.Jobs().Records();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_TRUE(jobs[0].ended);
  EXPECT_EQ(jobs[0].blocks, 5u);
  EXPECT_DOUBLE_EQ(jobs[0].simulatedSeconds, SecondsFromUs(ended));
  // All lines came before motion began, so the host was never late.
  EXPECT_NEAR(jobs[0].plannedSeconds, jobs[0].simulatedSeconds, 1e-5);
  EXPECT_NEAR(jobs[0].motionSeconds, jobs[0].simulatedSeconds - 0.1, 1e-5);
}

TEST(JobLog, AJobWithALateHostIsSlowerThanPlanned) {
  Bench bench(InchDeep());
  for (const char* line : {"SendBlockMessagesOn", "G0 F3000"}) bench.Send(line);
  bench.Send("G0 X50");
  bench.PassAll();
  bench.Send("G0 X100");
  bench.PassAll();
  bench.Send("SendBlockMessagesOff");
  const JobRecord& job = bench.board.Jobs().Records().at(0);
  EXPECT_NEAR(job.plannedSeconds, 2.2, 1e-5);
  EXPECT_NEAR(job.simulatedSeconds, 2.4, 1e-5);
}

}  // namespace
}  // namespace k7sim
