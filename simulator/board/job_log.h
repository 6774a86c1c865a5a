// The jobs that the board has carried out: the times, blocks and distances of each.
#pragma once

#include <cstddef>
#include <vector>

#include "board/planner.h"
#include "common/clock.h"
#include "machine/recorder.h"

namespace k7sim {

// Times in machine seconds.
struct JobRecord {
  TimeUs startUs = 0;
  double simulatedSeconds = 0;  // from the start of the job to the end of its last block, as it ran
  double plannedSeconds = 0;    // for the same blocks with a host that is never late
  double motionSeconds = 0;     // sum of the blocks
  std::size_t blocks = 0;
  Distances distances;
  bool ended = false;  // the host has closed it
};

class JobLog {
 public:
  explicit JobLog(const MotionLimits& limits) : limits_(limits) {}

  // Opens a job. One that is still open ends.
  void Begin(TimeUs nowUs);
  void End();
  // Closes the open job, whose host never ended it.
  void Abandon();

  // Adds a block that has ended to the open job.
  void AddBlock(const Block& block, double seconds, TimeUs nowUs);

  // The distances of the open job, for the recorder to add to; null while no job is open.
  Distances* OpenDistances() { return open_ ? &jobs_.back().distances : nullptr; }

  // Computes the planned time of the open job. A job that has ended has its own already.
  void Settle();

  const std::vector<JobRecord>& Records() const { return jobs_; }

 private:
  MotionLimits limits_;
  std::vector<JobRecord> jobs_;
  std::vector<Block> blocks_;  // of the job that is open
  bool open_ = false;
};

}  // namespace k7sim
