// How far a job has come: the driver's progress messages counted, and turned into one line of text.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace k7host {

// Moves that the driver has reported so far. It reports each travel, each cut and each plunge that
// the host asked for, at three stages. It does not report lifts, nor the plunges that it makes for
// a cut.
struct MoveCounters {
  std::atomic<std::uint32_t> queued{0};    // accepted by the controller; [reader] stores
  std::atomic<std::uint32_t> started{0};   // begun
  std::atomic<std::uint32_t> finished{0};  // carried out
};

// One moment of a job.
struct ProgressView {
  std::uint32_t strokesDone = 0;
  std::uint32_t strokesTotal = 0;  // of all passes
  std::uint32_t movesDone = 0;
  std::uint32_t movesTotal = 0;   // of all passes
  std::uint32_t outstanding = 0;  // lines sent that are not carried out
  bool timeKnown = false;         // the driver could estimate the job
  std::uint32_t secondsLeft = 0;
  std::uint32_t linesSent = 0;  // that the driver reports, as MoveCounters count them
};

// Follows one job. Counters of earlier jobs in the same session are left out. [host]
class JobProgress {
 public:
  // `estimateSeconds` for the whole job, 0 when the driver gives none.
  JobProgress(const MoveCounters& counters, std::uint32_t strokesTotal, std::uint32_t movesTotal,
              std::uint32_t estimateSeconds);

  // Notes that a planned move has been issued: with a line that the driver will report, or without
  // one, because the cutter is there already.
  void Sent(bool endsStroke);
  void Skipped(bool endsStroke);

  // Notes a travel whose status does not say whether a line was sent. To be called when everything
  // sent has been carried out: the line counts as sent if the driver has reported one more than the
  // host has noted.
  void SentPerhaps(bool endsStroke);

  // Lines sent that have not begun; the driver itself waits at 32.
  std::uint32_t Waiting() const;

  // Lines sent that are not carried out.
  std::uint32_t Outstanding() const;

  ProgressView View() const;

  // Moves issued, of all passes.
  std::uint32_t Issued() const { return issued_.moves; }

 private:
  struct Done {
    std::uint32_t strokes = 0;
    std::uint32_t moves = 0;
  };

  std::uint32_t Reported(const std::atomic<std::uint32_t>& counter, std::uint32_t base) const;
  void Count(bool endsStroke);

  const MoveCounters& counters_;
  std::uint32_t queuedBase_;
  std::uint32_t startedBase_;
  std::uint32_t finishedBase_;
  std::uint32_t strokesTotal_;
  std::uint32_t movesTotal_;
  std::uint32_t estimateSeconds_;
  Done issued_;             // every move issued
  std::vector<Done> done_;  // [n]: what is done once n lines are carried out
};

// "[##########..........]  50%  strokes 12/24  queue 8  left 0:00:41"; the last part reads
// "left unknown" without an estimate. Always the same columns for the same totals. [any]
std::string ProgressText(const ProgressView& view);

// Whole percent of the moves, rounded down; 100 for a job without moves. [any]
std::uint32_t ProgressPercent(const ProgressView& view);

}  // namespace k7host
