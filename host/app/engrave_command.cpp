// Engraving and estimating a drawing.
#include <atomic>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "app/commands.h"
#include "app/console.h"
#include "app/job_preparation.h"
#include "app/load_drawing.h"
#include "app/resume_file.h"
#include "app/stop_request.h"
#include "app/watchdog.h"
#include "core/job_estimate.h"
#include "core/job_plan.h"
#include "core/job_runner.h"
#include "core/job_summary.h"
#include "core/machine_check.h"
#include "core/text.h"

namespace k7host {
namespace {

constexpr DWORD kWaitMs = 50;
constexpr int kSwitchTries = 40;
constexpr std::uint64_t kRefreshMs = 100;

// A drawing made ready for the connected machine.
struct Job {
  JobPlan plan;
  JobOptions options;
  int exitCode = kExitOk;  // anything else has been explained
};

Job Prepare(Session& session, const Arguments& arguments, Drawing& drawing) {
  Job job;
  job.exitCode = session.CheckSettings();
  if (job.exitCode != kExitOk) return job;
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
  const std::uint64_t strokes =
      std::uint64_t{job.plan.strokes + job.plan.dots} * job.options.passes;
  if (arguments.fromStroke > strokes) {
    job.exitCode = Fail(kExitUsage, "--from-stroke " + std::to_string(arguments.fromStroke) +
                                        ": the job has " + std::to_string(strokes) +
                                        " strokes and dots in all its passes");
    return job;
  }
  if (arguments.fromStroke != 0) job.options.firstStroke = arguments.fromStroke;
  const std::uint32_t runSeconds = EstimateJob(session.Device(), job.plan, job.options.passes);
  if (runSeconds > kLongestJobSeconds) {
    job.exitCode =
        Fail(kExitUsage,
             "the job would take years: in section [Engrave Settings] \"Traverse Speed\" "
             "or \"Engrave Speed\" is zero or next to it; they are set as float bits");
    return job;
  }
  Print("job", "strokes " + std::to_string(job.plan.strokes) + ", dots " +
                   std::to_string(job.plan.dots) + ", cuts " + std::to_string(job.plan.cuts) +
                   ", passes " + std::to_string(job.options.passes) + ", " +
                   ExtentText(job.plan, table) + " inches");
  job.options.estimateSeconds =
      EstimateAndPrint(session, job.plan, table, job.options, arguments.home, runSeconds);
  job.exitCode = WritePreview(arguments, job.plan, table);
  return job;
}

// Prints the progress of the job: on a console one line that is written over, else a line for each
// tenth of the moves.
class ConsoleObserver : public JobObserver {
 public:
  explicit ConsoleObserver(Session& session) : session_(session), moves_(Waiting::Moves) {}
  ~ConsoleObserver() { TheWatch().ShowJob({}, nullptr); }

  bool StopRequested() override { return k7host::StopRequested(); }

  bool LinkLost() override { return session_.IsLinkLost(); }

  void OnCall(JobCall call) override {
    TheWatch().Exchange(call == JobCall::Begin    ? Waiting::JobStart
                        : call == JobCall::Plunge ? Waiting::Plunge
                        : call == JobCall::End    ? Waiting::JobEnd
                                                  : Waiting::Moves);
  }

  void OnCutterDown() override {
    if (depthAsked_) return;
    depthAsked_ = true;  // until the next pass, which goes deeper
    session_.Device().HomeCutter();
    const HostReports& reports = session_.Window().Reports();
    if (!reports.surfaceSteps || !reports.zSteps) return;
    depths_ = Depths{*reports.zSteps, *reports.surfaceSteps, session_.Device().GetZStepsPerInch()};
  }

  // Depth of the last pass begun, and where its first stroke went, as far as the driver tells.
  const std::optional<std::string>& Depth() const { return depth_; }
  const std::optional<Depths>& WhereItWent() const { return depths_; }

  // Strokes that the machine has reported as carried out. [any]
  std::uint32_t StrokesDone() const { return strokesDone_; }

  void WaitForProgress() override { session_.Window().Wait(kWaitMs); }

  void OnPass(const std::string& status) override {
    Print("pass", status);
    depth_ = DepthOfStatus(status);
    depthAsked_ = false;
  }

  void OnProgress(const ProgressView& view) override {
    session_.Window().Wait(0);
    strokesDone_ = view.strokesDone;
    TheWatch().ShowJob(view, &session_.Window().Counters());
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
    const WaitingFor user(Waiting::Nothing);
    if (!JogByKeys(session_, false, false)) return false;
    session_.Device().FindCutterHome();
    return true;
  }

 private:
  Session& session_;
  WaitingFor moves_;
  std::atomic<std::uint32_t> strokesDone_{0};
  bool depthAsked_ = false;
  std::optional<std::string> depth_;
  std::optional<Depths> depths_;
  std::uint64_t shownAt_ = 0;
  bool shownDone_ = false;
  std::uint32_t shownTenth_ = 0;
};

// "cut: 12.500 inches, strokes 54, depth 0.030 inches", and a warning where that was in the air.
void PrintSummary(const Job& job, const Table& table, const ConsoleObserver& observer,
                  const ProgressView& view) {
  const JobPlan& plan = job.plan;
  // What was skipped in front, in moves: it counts as done, and this run has not cut it.
  std::uint32_t first = 0;
  std::uint32_t skip = job.options.firstStroke - 1;
  for (; skip > 0; ++first) skip -= plan.moves[first % plan.moves.size()].endsStroke ? 1 : 0;
  const double inches = CutInches(plan, table, first, view.movesDone);
  const std::uint32_t skipped = job.options.firstStroke - 1;
  const std::uint32_t strokes = view.strokesDone > skipped ? view.strokesDone - skipped : 0;
  Print("cut", InchesText(inches) + " inches, strokes " + std::to_string(strokes) +
                   (observer.Depth() ? ", depth " + *observer.Depth() + " inches" : ""));
  if (!observer.WhereItWent() || !observer.Depth() || strokes == 0) return;
  const std::string warning =
      AirCutText(*observer.WhereItWent(), std::strtod(observer.Depth()->c_str(), nullptr));
  if (!warning.empty()) Notice(warning);
}

int ExplainEnd(JobEnd end, const ProgressView& view) {
  if (end == JobEnd::Done) return kExitOk;
  if (end != JobEnd::LinkLost) return Fail(kExitMachine, JobEndText(end));
  return Fail(kExitUnknown, JobEndText(end) + " after stroke " + std::to_string(view.strokesDone) +
                                " of " + std::to_string(view.strokesTotal) +
                                ", cutter position unknown");
}

// The driver refuses a job by the last report of the switches that it has. One from before the
// homing may have found the cutter in the work, as a lost link leaves it.
void RefreshSwitches(Session& session) {
  const WaitingFor waiting(Waiting::Switches);
  for (int i = 0; i < kSwitchTries && !StopRequested(); ++i) {
    std::uint8_t prox = 0;
    session.Device().ReadSwitches(nullptr, nullptr, nullptr, &prox);
    if (prox == 0) return;
    session.Window().Wait(kWaitMs);
  }
}

int Home(Session& session, const Arguments& arguments) {
  const bool goesOn = arguments.fromStroke != 0;
  if (!arguments.home && (!goesOn || arguments.noHome)) return kExitOk;
  const int code = HomeMachine(session);
  if (code == kExitOk) RefreshSwitches(session);
  if (code == kExitMachine && goesOn) {
    Notice(
        "without switches: set the table home by hand (k7host settings --before-job), then the "
        "same command with --no-home");
  }
  return code;
}

int Engrave(const Arguments& arguments, const std::optional<ResumePoint>& point) {
  Drawing drawing;
  if (const int bad = LoadDrawing(arguments, drawing); bad != kExitOk) return bad;
  Session session;
  int code = session.Open(arguments);
  if (code != kExitOk) return code;
  if (arguments.showSettings) {
    const std::int64_t result = ShowSettingsWithColours(session, drawing);
    if (result == kSettingsSilent) return kExitUnknown;
    if (result != k7::kSettingsRunJob) {
      return Fail(kExitMachine, "the job was not released in the settings dialog");
    }
  }
  const Job job = Prepare(session, arguments, drawing);
  if (job.exitCode != kExitOk) return job.exitCode;
  const std::string mark = PlanMark(job.plan);
  if (point && point->plan != mark) {
    return Fail(kExitUsage, arguments.resume +
                                ": the drawing or the machine's settings are not what they were; "
                                "if that is meant, give the drawing and --from-stroke " +
                                std::to_string(arguments.fromStroke));
  }
  if (arguments.dryRun) {
    Print("dry run", "the job fits the machine; nothing was moved");
    return kExitOk;
  }
  code = Home(session, arguments);
  if (code != kExitOk) return code;
  // Takes the window back only here, because the end of a homing is reported to it.
  if (arguments.batch) session.Window().Attach(session.Device(), true);
  ConsoleObserver observer(session);
  const ResumeKeeper keeper(arguments, session.Id(), mark,
                            (job.plan.strokes + job.plan.dots) * job.options.passes,
                            [&observer] { return observer.StrokesDone(); });
  if (arguments.frame) code = ShowFrame(session, job.plan, observer);
  if (code != kExitOk) return code;
  const Table table = session.MachineTable();
  const std::uint64_t start = GetTickCount64();
  const JobResult result =
      RunJob(session.Device(), job.plan, job.options, session.Window().Counters(), observer);
  const ProgressView& view = result.progress;
  PrintSummary(job, table, observer, view);
  Print(result.end == JobEnd::Done ? "done" : "stopped",
        "strokes " + std::to_string(view.strokesDone) + "/" + std::to_string(view.strokesTotal) +
            ", moves " + std::to_string(view.movesDone) + "/" + std::to_string(view.movesTotal) +
            ", passes " + std::to_string(job.options.passes) + ", elapsed " +
            DurationText((GetTickCount64() - start + 500) / 1000));
  code = ExplainEnd(result.end, view);
  if (result.end == JobEnd::Done) {
    keeper.Forget();
  } else {
    keeper.Keep();
  }
  return code;
}

}  // namespace

int RunEngrave(const Arguments& arguments) {
  if (arguments.resume.empty()) return Engrave(arguments, std::nullopt);
  ResumedJob resumed = LoadResume(arguments);
  return resumed.exitCode != kExitOk ? resumed.exitCode : Engrave(resumed.arguments, resumed.point);
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
