#include "device/progress.h"

#include "device/polling.h"

namespace k7 {

std::int32_t LinesInFlight(const JobState& job) noexcept {
  return job.linesInFlight.ValueOr(0);
}

std::int32_t BlocksRunning(const JobState& job) noexcept {
  return job.blocksRunning.ValueOr(0);
}

std::uint8_t JobOpen(const JobState& job) noexcept {
  return job.jobOpen.ValueOr(0);
}

bool IsIdle(const DeviceState& record) noexcept {
  return record.link.connected == 1 && JobOpen(record.job) == 0;
}

bool MovesRemain(const JobState& job) noexcept {
  return LinesInFlight(job) > 0 || BlocksRunning(job) >= 1;
}

void WaitForFewerInFlight(JobState& job, std::int32_t lines) noexcept {
  PollUntil(0, [&] {
    if (JobOpen(job) == 0) return true;
    const auto inFlight = job.linesInFlight.Lock();
    return !inFlight || *inFlight < lines;
  });
}

void ForgetMoves(JobState& job) noexcept {
  job.linesInFlight.Set(0);
  job.blocksRunning.Set(0);
}

void ClearAliveTicks(LinkState& link) noexcept {
  const auto alive = link.alive.Lock();
  *alive = {};
}

}  // namespace k7
