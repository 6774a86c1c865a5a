#include "device/progress.h"

#include "device/polling.h"

namespace k7 {

namespace {

constexpr std::uint32_t kQuietMs = 2000;

// Of two times of the wrapping clock, the later.
std::uint32_t Later(std::uint32_t a, std::uint32_t b) noexcept {
  return a - b < 0x80000000u ? a : b;
}

template <typename Done>
void AwaitQueue(LinkState& link, JobState& job, Done done, const Awaited& what) noexcept {
  std::uint32_t quietSince = TickMs();
  bool quiet = false;
  const auto doneOrQuiet = [&] {
    if (done()) return true;
    const std::uint32_t now = TickMs();
    quietSince = JobOpen(job) != 0 ? now : Later(quietSince, job.lastReportTick);
    quiet = now - quietSince >= kQuietMs;
    return quiet;
  };
  AwaitReader(link, job, doneOrQuiet, what);
  if (quiet) ForgetMoves(job);
}

}  // namespace

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

void AwaitFewerInFlight(LinkState& link, JobState& job, std::int32_t lines) noexcept {
  const auto fewer = [&] {
    const auto inFlight = job.linesInFlight.Lock();
    return !inFlight || *inFlight < lines;
  };
  AwaitQueue(link, job, fewer, awaited::kRoom);
}

void AwaitNoMoves(LinkState& link, JobState& job) noexcept {
  AwaitQueue(
      link, job, [&] { return !MovesRemain(job); }, awaited::kNoMoves);
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
