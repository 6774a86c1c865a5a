// The job as a sequence of the device's operations.
#include "core/job_runner.h"

#include "core/text.h"

namespace k7host {
namespace {

constexpr std::int32_t kStatusCapacity = 128;

class Runner {
 public:
  Runner(k7::IEngraver& device, const JobPlan& plan, const JobOptions& options,
         const MoveCounters& counters, JobObserver& observer)
      : device_(device),
        plan_(plan),
        options_(options),
        observer_(observer),
        progress_(counters, plan.strokes * options.passes + plan.dots * options.passes,
                  static_cast<std::uint32_t>(plan.moves.size()) * options.passes,
                  options.estimateSeconds) {}

  JobResult Run() {
    device_.SetGridMode(options_.runKind);
    observer_.OnCall(JobCall::Begin);
    JobEnd end = JobEnd::Refused;
    if (device_.BeginJob()) {
      end = Passes();
      if (end != JobEnd::LinkLost) Finish(end);
      if (observer_.LinkLost()) end = JobEnd::LinkLost;
    }
    device_.SetGridMode(k7::kRunEngraving);
    observer_.OnProgress(progress_.View());
    return {end, progress_.View()};
  }

 private:
  void Finish(JobEnd end) {
    observer_.OnCall(JobCall::End);
    LiftCutter(end == JobEnd::Done);
    // With a pneumatic head EndJob stops waiting for reports after some seconds; Drain has no
    // such end.
    if (end == JobEnd::Done && device_.IsAirZ() == 0) Drain();
    if (jobOpen_) device_.EndJob();
    if (device_.HasSpindle() != 0) device_.SetSpindle(k7::kSpindleOff);
  }

  JobEnd Passes() {
    if (options_.spindle) device_.SetSpindle(k7::kSpindleEngrave);
    std::uint32_t skip = options_.firstStroke - 1;  // strokes
    for (std::uint32_t i = 0; i < options_.passes; ++i) {
      if (observer_.StopRequested()) return JobEnd::Stopped;
      const std::size_t first = Skip(skip);
      if (first == plan_.moves.size()) continue;
      observer_.OnCall(JobCall::Moves);
      StartPass(options_.firstPass + i, plan_.moves[first]);
      for (std::size_t k = first; k < plan_.moves.size(); ++k) {
        Move move = plan_.moves[k];
        // Where the first stroke starts, which the stroke before it led to.
        if (k == first && first > 0) move.kind = MoveKind::Travel;
        if (!WaitForRoom()) return EndedWait();
        const JobEnd end = Issue(move);
        if (end != JobEnd::Done) return end;
        observer_.OnProgress(progress_.View());
      }
      if (device_.IsAirZ() == 0 && !Drain()) return EndedWait();
    }
    return JobEnd::Done;
  }

  // Counts the moves of up to `strokes` strokes as done and takes them off; the index of the move
  // to go on with. That is the travel to the next stroke, or where there is none, because it starts
  // where the last one ends, the last move of that one.
  std::size_t Skip(std::uint32_t& strokes) {
    std::size_t next = 0;
    while (strokes > 0 && next < plan_.moves.size()) {
      if (plan_.moves[next++].endsStroke) --strokes;
    }
    if (next > 0 && next < plan_.moves.size() && plan_.moves[next].kind != MoveKind::Travel) --next;
    for (std::size_t i = 0; i < next; ++i) progress_.Skipped(plan_.moves[i].endsStroke);
    return next;
  }

  JobEnd EndedWait() { return observer_.LinkLost() ? JobEnd::LinkLost : JobEnd::Stopped; }

  void StartPass(std::uint32_t pass, const Move& first) {
    wchar_t status[kStatusCapacity] = {};
    device_.StartPass(pass, first.xSteps, first.ySteps, status, kStatusCapacity);
    observer_.OnPass(NarrowText(status));
  }

  JobEnd Issue(const Move& move) {
    const bool plunges = move.kind != MoveKind::Travel && !cutterDown_;
    observer_.OnCall(plunges ? JobCall::Plunge : JobCall::Moves);
    const JobEnd end = Ask(move);
    observer_.OnCall(JobCall::Moves);
    return end;
  }

  JobEnd Ask(const Move& move) {
    switch (move.kind) {
      case MoveKind::Travel:
        return Travel(move);
      case MoveKind::Cut:
      case MoveKind::Plunge:
        return Engrave(move);
    }
    return JobEnd::Done;
  }

  JobEnd Travel(const Move& move) {
    const std::uint32_t status = options_.runKind == k7::kRunBrailleBeadInsert
                                     ? device_.MoveBeadToolTo(move.xSteps, move.ySteps)
                                     : device_.MoveTo(move.xSteps, move.ySteps);
    switch (status) {
      case k7::kStatusSent:
        cutterDown_ = false;
        Arrived(move);
        return JobEnd::Done;
      case k7::kStatusArmed:
        Arrived(move, false);
        return JobEnd::Done;
      case k7::kStatusOneShot:
        Arrived(move, false);
        return SetManualCutter();
      case k7::kStatusRefused:
        return JobEnd::TableViolation;
      default:
        return NothingMoved(move);
    }
  }

  JobEnd Engrave(const Move& move) {
    // A stroke that is answered "probed" has found the surface and cut nothing: it is asked for
    // once more.
    for (int attempt = 0; attempt < 2; ++attempt) {
      const std::uint32_t status = move.kind == MoveKind::Plunge
                                       ? device_.LowerCutter()
                                       : device_.EngraveTo(move.xSteps, move.ySteps);
      switch (status) {
        case k7::kStatusSent:
          if (!cutterDown_) observer_.OnCutterDown();
          cutterDown_ = true;
          Arrived(move);
          return JobEnd::Done;
        case k7::kStatusProbed:
          cutterDown_ = false;
          continue;
        case k7::kStatusRefused:
          return JobEnd::TableViolation;
        default:
          return NothingMoved(move);
      }
    }
    return JobEnd::NotProbed;
  }

  // With a manual cutter the driver stops over the first point, for the user to set the cutter by
  // jogging. It jogs only while no job is open, so this job is ended and another begun.
  JobEnd SetManualCutter() {
    device_.EndJob();
    jobOpen_ = false;
    if (!observer_.OnManualCutter()) return JobEnd::Stopped;
    jobOpen_ = device_.BeginJob();
    return jobOpen_ ? JobEnd::Done : JobEnd::Refused;
  }

  JobEnd NothingMoved(const Move& move) {
    if (observer_.LinkLost()) return JobEnd::LinkLost;
    if (device_.IsConnected() == 0) return JobEnd::Disconnected;
    progress_.Skipped(move.endsStroke);
    return JobEnd::Done;
  }

  void Arrived(const Move& move, bool certain = true) {
    x_ = move.xSteps;
    y_ = move.ySteps;
    if (certain) {
      progress_.Sent(move.endsStroke);
    } else {
      progress_.SentPerhaps(move.endsStroke);
    }
  }

  // In a job no operation of the driver only lifts: it lifts for a travel, if that leads elsewhere.
  void LiftCutter(bool park) {
    if (!jobOpen_ || !(park || cutterDown_)) return;
    const bool atHome = x_ == 0 && y_ == 0;
    if (park && !atHome) {
      device_.MoveTo(0, 0);
    } else if (cutterDown_) {
      device_.MoveTo(x_ > 0 ? x_ - 1 : 1, y_);
    }
    cutterDown_ = false;
  }

  // False when the user asked to stop meanwhile, or the link was lost.
  bool WaitForRoom() {
    while (!observer_.StopRequested() && !observer_.LinkLost()) {
      if (progress_.Waiting() < kLinesAhead) return true;
      observer_.WaitForProgress();
      observer_.OnProgress(progress_.View());
    }
    return false;
  }

  bool Drain() {
    while (!observer_.StopRequested() && !observer_.LinkLost()) {
      if (progress_.Outstanding() == 0) return true;
      observer_.WaitForProgress();
      observer_.OnProgress(progress_.View());
    }
    return false;
  }

  k7::IEngraver& device_;
  const JobPlan& plan_;
  const JobOptions& options_;
  JobObserver& observer_;
  JobProgress progress_;
  bool jobOpen_ = true;
  bool cutterDown_ = false;
  std::uint32_t x_ = 0;  // where the last line sent leads, host steps
  std::uint32_t y_ = 0;
};

}  // namespace

JobResult RunJob(k7::IEngraver& device, const JobPlan& plan, const JobOptions& options,
                 const MoveCounters& counters, JobObserver& observer) {
  return Runner(device, plan, options, counters, observer).Run();
}

std::string JobEndText(JobEnd end) {
  switch (end) {
    case JobEnd::Done:
      return "";
    case JobEnd::Stopped:
      return "stopped by the user";
    case JobEnd::Refused:
      return "the machine refused to begin the job: its proximity switch is closed";
    case JobEnd::TableViolation:
      return "stopped: the stroke would cut into the table";
    case JobEnd::NotProbed:
      return "stopped: the surface was probed but the stroke was not made";
    case JobEnd::Disconnected:
      return "stopped: the controller is no longer connected";
    case JobEnd::LinkLost:
      return "link lost";
  }
  return "";
}

}  // namespace k7host
