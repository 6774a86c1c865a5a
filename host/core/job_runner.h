// Carries a job plan out on a device: the order of the operations and what each status means.
#pragma once

#include <cstdint>
#include <string>

#include "core/job_plan.h"
#include "core/progress.h"
#include "k7/driver.h"

namespace k7host {

// The host waits while so many lines have been sent and have not begun. The driver would wait at
// the same number, but inside its call, where the host cannot react to Ctrl-C.
inline constexpr std::uint32_t kLinesAhead = 32;

enum class JobEnd {
  Done,
  Stopped,         // the user asked for it
  Refused,         // BeginJob: the proximity switch is closed
  TableViolation,  // a stroke would have cut into the table
  NotProbed,       // a stroke was answered "probed" twice
  Disconnected,    // the device says that it has no controller
  LinkLost,        // the link to the controller is gone
};

// What the runner is about to ask of the device, or waits for itself.
enum class JobCall {
  Begin,
  Moves,   // anything that may wait for moves to be carried out
  Plunge,  // a stroke that starts with the cutter up: the device may probe first
  End,
};

struct JobOptions {
  std::uint32_t firstPass = 1;
  std::uint32_t passes = 1;
  std::uint32_t firstStroke = 1;  // to begin with, of the strokes and dots of all passes
  std::uint32_t runKind = k7::kRunEngraving;
  bool spindle = false;               // on at the engraving speed before the first move
  std::uint32_t estimateSeconds = 0;  // for the whole job; 0: unknown
};

// What the runner asks of the program around it. [host]
class JobObserver {
 public:
  virtual bool StopRequested() = 0;
  virtual bool LinkLost() { return false; }
  virtual void OnCall(JobCall) {}
  // Returns after the next progress message or a short time, having served the thread's messages.
  virtual void WaitForProgress() = 0;
  virtual void OnPass(const std::string& status) = 0;
  // The cutter has been sent down.
  virtual void OnCutterDown() {}
  virtual void OnProgress(const ProgressView& view) = 0;
  // The head stands over the first point with no job open, so that the user can set the cutter by
  // hand; true: go on with the job.
  virtual bool OnManualCutter() = 0;

 protected:
  ~JobObserver() = default;
};

struct JobResult {
  JobEnd end = JobEnd::Done;
  ProgressView progress;
};

// Runs the job from BeginJob to EndJob. However it ends, once begun: the cutter is lifted, the job
// is ended and the spindle is off. A job that is done parks the cutter over the table home; one
// that ends early lifts it where it is, one step aside. On a lost link none of this is tried.
// `counters` must be fed by the device's callback. The plan must hold at least one move, and the
// job the first stroke asked for: what comes before it counts as done. [host]
JobResult RunJob(k7::IEngraver& device, const JobPlan& plan, const JobOptions& options,
                 const MoveCounters& counters, JobObserver& observer);

// One line for people; empty for Done. [any]
std::string JobEndText(JobEnd end);

}  // namespace k7host
