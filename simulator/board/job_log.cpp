#include "board/job_log.h"

namespace k7sim {

void JobLog::Begin(TimeUs nowUs) {
  End();
  JobRecord job;
  job.startUs = nowUs;
  jobs_.push_back(job);
  open_ = true;
}

void JobLog::End() {
  if (!open_) return;
  Abandon();
  jobs_.back().ended = true;
}

void JobLog::Abandon() {
  Settle();
  open_ = false;
  blocks_.clear();
}

void JobLog::Settle() {
  if (open_) jobs_.back().plannedSeconds = PlannedSeconds(blocks_, limits_);
}

void JobLog::AddBlock(const Block& block, double seconds, TimeUs nowUs) {
  if (!open_) return;
  JobRecord& job = jobs_.back();
  ++job.blocks;
  job.motionSeconds += seconds;
  job.simulatedSeconds = SecondsFromUs(nowUs - job.startUs);
  blocks_.push_back(block);
  blocks_.back().command.clear();  // a job may be long, and its times need no text
}

}  // namespace k7sim
