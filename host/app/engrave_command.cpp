// Engraving and estimating a drawing.
#include <string>
#include <vector>

#include "app/commands.h"
#include "app/console.h"
#include "app/job_preparation.h"
#include "app/load_drawing.h"
#include "app/stop_request.h"
#include "core/job_plan.h"
#include "core/job_runner.h"
#include "core/text.h"

namespace k7host {
namespace {

constexpr DWORD kWaitMs = 50;
constexpr std::uint64_t kRefreshMs = 100;

// A drawing made ready for the connected machine.
struct Job {
  JobPlan plan;
  JobOptions options;
  int exitCode = kExitOk;  // anything else has been explained
};

Job Prepare(Session& session, const Arguments& arguments, Drawing& drawing) {
  Job job;
  ArrangeStrokes(session, arguments, drawing);
  const Table table = session.MachineTable();
  PlanResult result = BuildPlan(drawing.strokes, table);
  if (!result.error.empty()) {
    job.exitCode = Fail(kExitUsage, arguments.file + ": " + result.error);
    return job;
  }
  job.plan = std::move(result.plan);
  const std::uint32_t passes = session.Device().GetPassCount();
  if (arguments.passes > passes) {
    job.exitCode = Fail(kExitUsage, "--passes " + std::to_string(arguments.passes) +
                                        ": the engrave settings make " + std::to_string(passes) +
                                        "; set more in the settings dialog");
    return job;
  }
  const bool braille =
      arguments.runKind == k7::kRunBrailleDrill || arguments.runKind == k7::kRunBrailleBeadInsert;
  if (braille && job.plan.strokes != 0) {
    job.exitCode =
        Fail(kExitUsage, arguments.file + ": a braille run takes dots only, the drawing has " +
                             std::to_string(job.plan.strokes) + " strokes");
    return job;
  }
  if (arguments.runKind == k7::kRunBrailleBeadInsert && session.Device().HasBeadInsertTool() == 0) {
    job.exitCode = Fail(kExitMachine, "the machine has no bead insert tool");
    return job;
  }
  job.options.passes = arguments.passes != 0 ? arguments.passes : passes;
  job.options.runKind = arguments.runKind;
  job.options.spindle = arguments.spindle;
  Print("job", "strokes " + std::to_string(job.plan.strokes) + ", dots " +
                   std::to_string(job.plan.dots) + ", cuts " + std::to_string(job.plan.cuts) +
                   ", passes " + std::to_string(job.options.passes) + ", " +
                   ExtentText(job.plan, table) + " inches");
  job.options.estimateSeconds =
      EstimateAndPrint(session, job.plan, table, job.options, arguments.home);
  job.exitCode = WritePreview(arguments, job.plan, table);
  return job;
}

// Prints the progress of the job: on a console one line that is written over, else a line for each
// tenth of the moves.
class ConsoleObserver : public JobObserver {
 public:
  explicit ConsoleObserver(Session& session) : session_(session) {}

  bool StopRequested() override { return k7host::StopRequested(); }

  void WaitForProgress() override { session_.Window().Wait(kWaitMs); }

  void OnPass(const std::string& status) override { Print("pass", status); }

  void OnProgress(const ProgressView& view) override {
    session_.Window().Wait(0);
    const std::uint64_t now = GetTickCount64();
    const bool done = view.movesDone == view.movesTotal;
    if (now - shownAt_ < kRefreshMs && !(done && !shownDone_)) return;
    shownAt_ = now;
    shownDone_ = done;
    const std::string line = "progress: " + ProgressText(view);
    if (PrintOver(line)) return;
    const std::uint32_t tenth = ProgressPercent(view) / 10;
    if (tenth <= shownTenth_) return;
    shownTenth_ = tenth;
    PrintLine(line);
  }

  bool OnManualCutter() override {
    if (ConsoleInput() == nullptr) {
      Print("cutter", "manual, kept as it is");
      return true;
    }
    Print("cutter",
          "manual: lower it onto the work with Page Down (Shift: slowly), then Enter; "
          "Esc ends the job");
    if (!JogByKeys(session_, false, false)) return false;
    session_.Device().FindCutterHome();
    return true;
  }

 private:
  Session& session_;
  std::uint64_t shownAt_ = 0;
  bool shownDone_ = false;
  std::uint32_t shownTenth_ = 0;
};

}  // namespace

int RunEngrave(const Arguments& arguments) {
  Drawing drawing;
  if (const int bad = LoadDrawing(arguments, drawing); bad != kExitOk) return bad;
  Session session;
  int code = session.Open(arguments);
  if (code != kExitOk) return code;
  if (arguments.showSettings && ShowSettingsWithColours(session, drawing) != k7::kSettingsRunJob) {
    return Fail(kExitMachine, "the job was not released in the settings dialog");
  }
  const Job job = Prepare(session, arguments, drawing);
  if (job.exitCode != kExitOk) return job.exitCode;
  if (arguments.dryRun) {
    Print("dry run", "the job fits the machine; nothing was moved");
    return kExitOk;
  }
  if (arguments.home) code = HomeMachine(session);
  if (code != kExitOk) return code;
  // Takes the window back only here, because the end of a homing is reported to it.
  if (arguments.batch) session.Window().Attach(session.Device(), true);
  ConsoleObserver observer(session);
  if (arguments.frame) code = ShowFrame(session, job.plan, observer);
  if (code != kExitOk) return code;
  const std::uint64_t start = GetTickCount64();
  const JobResult result =
      RunJob(session.Device(), job.plan, job.options, session.Window().Counters(), observer);
  const ProgressView& view = result.progress;
  Print(result.end == JobEnd::Done ? "done" : "stopped",
        "strokes " + std::to_string(view.strokesDone) + "/" + std::to_string(view.strokesTotal) +
            ", moves " + std::to_string(view.movesDone) + "/" + std::to_string(view.movesTotal) +
            ", passes " + std::to_string(job.options.passes) + ", elapsed " +
            DurationText((GetTickCount64() - start + 500) / 1000));
  if (result.end != JobEnd::Done) return Fail(kExitMachine, JobEndText(result.end));
  return kExitOk;
}

int RunEstimate(const Arguments& arguments) {
  Drawing drawing;
  if (const int bad = LoadDrawing(arguments, drawing); bad != kExitOk) return bad;
  Session session;
  const int code = session.Open(arguments);
  if (code != kExitOk) return code;
  return Prepare(session, arguments, drawing).exitCode;
}

}  // namespace k7host
