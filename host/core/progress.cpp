// Counting of a job's lines and the progress line.
#include "core/progress.h"

#include <algorithm>

#include "core/scaling.h"

namespace k7host {
namespace {

constexpr std::size_t kBarWidth = 20;

std::string Right(const std::string& text, std::size_t width) {
  return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

}  // namespace

JobProgress::JobProgress(const MoveCounters& counters, std::uint32_t strokesTotal,
                         std::uint32_t movesTotal, std::uint32_t estimateSeconds)
    : counters_(counters),
      queuedBase_(counters.queued),
      startedBase_(counters.started),
      finishedBase_(counters.finished),
      strokesTotal_(strokesTotal),
      movesTotal_(movesTotal),
      estimateSeconds_(estimateSeconds),
      done_(1) {}

void JobProgress::Count(bool endsStroke) {
  ++issued_.moves;
  if (endsStroke) ++issued_.strokes;
}

void JobProgress::Sent(bool endsStroke) {
  Count(endsStroke);
  done_.push_back(issued_);
}

void JobProgress::Skipped(bool endsStroke) {
  Count(endsStroke);
  done_.back() = issued_;  // done together with the line before it
}

void JobProgress::SentPerhaps(bool endsStroke) {
  if (Reported(counters_.queued, queuedBase_) >= done_.size()) {
    Sent(endsStroke);
  } else {
    Skipped(endsStroke);
  }
}

std::uint32_t JobProgress::Reported(const std::atomic<std::uint32_t>& counter,
                                    std::uint32_t base) const {
  return counter.load() - base;
}

std::uint32_t JobProgress::Waiting() const {
  const auto sent = static_cast<std::uint32_t>(done_.size() - 1);
  return sent - std::min(sent, Reported(counters_.started, startedBase_));
}

std::uint32_t JobProgress::Outstanding() const {
  const auto sent = static_cast<std::uint32_t>(done_.size() - 1);
  return sent - std::min(sent, Reported(counters_.finished, finishedBase_));
}

ProgressView JobProgress::View() const {
  ProgressView view;
  view.outstanding = Outstanding();
  view.linesSent = finishedBase_ + static_cast<std::uint32_t>(done_.size() - 1);
  const Done& done = done_[done_.size() - 1 - view.outstanding];
  view.strokesDone = done.strokes;
  view.strokesTotal = strokesTotal_;
  view.movesDone = done.moves;
  view.movesTotal = movesTotal_;
  view.timeKnown = estimateSeconds_ != 0 && movesTotal_ != 0;
  if (view.timeKnown) {
    const std::uint64_t left = movesTotal_ - std::min(movesTotal_, done.moves);
    view.secondsLeft =
        static_cast<std::uint32_t>((left * estimateSeconds_ + movesTotal_ / 2) / movesTotal_);
  }
  return view;
}

std::uint32_t ProgressPercent(const ProgressView& view) {
  if (view.movesTotal == 0) return 100;
  const std::uint64_t done = std::min(view.movesDone, view.movesTotal);
  return static_cast<std::uint32_t>(done * 100 / view.movesTotal);
}

std::string ProgressText(const ProgressView& view) {
  const std::uint32_t percent = ProgressPercent(view);
  const std::size_t filled = percent * kBarWidth / 100;
  const std::string total = std::to_string(view.strokesTotal);
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " +
         Right(std::to_string(percent), 3) + "%  strokes " +
         Right(std::to_string(view.strokesDone), total.size()) + "/" + total + "  queue " +
         Right(std::to_string(view.outstanding), 2) + "  left " +
         (view.timeKnown ? DurationText(view.secondsLeft) : "unknown");
}

}  // namespace k7host
