#include "core/job_runner.h"

#include <gtest/gtest.h>

#include <deque>
#include <ostream>
#include <string>

#include "drawing/hpgl/hpgl.h"
#include "recording_engraver.h"

namespace k7host {
namespace {

constexpr std::uint32_t kQueued = 1;
constexpr std::uint32_t kStarted = 2;
constexpr std::uint32_t kFinished = 3;

// A device, its counters and an observer that stops, or releases held reports, on demand.
struct Fixture : JobObserver {
  k7test::RecordingEngraver device;
  MoveCounters counters;
  JobOptions options;
  std::vector<std::string> passes;
  ProgressView last;
  int waits = 0;
  std::uint32_t queuedAtFirstWait = 0;
  int stopAfterViews = -1;  // progress views until StopRequested
  int views = 0;
  bool manualAnswer = true;
  int lostAfterViews = -1;  // progress views until the link is lost
  std::string calls;        // P for each plunge asked for, D for each that went down

  Fixture() {
    device.SetNotifyCallback(&Notify, reinterpret_cast<std::uint64_t>(&counters), kQueued, kStarted,
                             kFinished);
  }

  static void Notify(std::uint32_t message, std::uint64_t context) {
    auto& to = *reinterpret_cast<MoveCounters*>(context);
    ++(message == kQueued ? to.queued : message == kStarted ? to.started : to.finished);
  }

  bool LinkLost() override { return lostAfterViews >= 0 && views >= lostAfterViews; }
  void OnCall(JobCall call) override {
    if (call == JobCall::Plunge) calls += 'P';
  }
  void OnCutterDown() override { calls += 'D'; }
  bool StopRequested() override { return stopAfterViews >= 0 && views >= stopAfterViews; }
  void WaitForProgress() override {
    if (waits++ == 0) queuedAtFirstWait = counters.queued;
    // The machine carries one more move out.
    if (counters.started < counters.queued) ++counters.started;
    if (counters.finished < counters.started) ++counters.finished;
  }
  void OnPass(const std::string& status) override { passes.push_back(status); }
  void OnProgress(const ProgressView& view) override {
    ++views;
    last = view;
  }
  bool OnManualCutter() override {
    device.Record("ManualCutter");
    return manualAnswer;
  }

  JobResult Run(std::string_view file) {
    const Table table{1016.0, 1016.0, 10000, 10000};
    const PlanResult plan = BuildPlan(ReadHpgl(file).strokes, table);
    EXPECT_EQ(plan.error, "");
    return RunJob(device, plan.plan, options, counters, *this);
  }
};

TEST(JobRunner, RunsStrokesBetweenBeginAndEndAndParksOverTheTableHome) {
  Fixture f;
  const JobResult result = f.Run("PU10,20;PD30,40,50,60;PU70,80;PD70,90");
  EXPECT_EQ(result.end, JobEnd::Done);
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) EngraveTo(30,40) "
            "EngraveTo(50,60) MoveTo(70,80) EngraveTo(70,90) MoveTo(0,0) EndJob SetGridMode(0)");
  EXPECT_EQ(result.progress.strokesDone, 2u);
  EXPECT_EQ(result.progress.movesDone, 5u);
  EXPECT_EQ(f.passes, std::vector<std::string>{"Pass 1 of 1 - 0.063"});
}

TEST(JobRunner, EachPassStartsAtTheFirstPoint) {
  Fixture f;
  f.options.passes = 2;
  f.device.passCount = 2;
  const JobResult result = f.Run("PU10,20;PD30,40;PU50,60;PD");
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) EngraveTo(30,40) "
            "MoveTo(50,60) LowerCutter StartPass(2,10,20) MoveTo(10,20) EngraveTo(30,40) "
            "MoveTo(50,60) LowerCutter MoveTo(0,0) EndJob SetGridMode(0)");
  EXPECT_EQ(f.passes, (std::vector<std::string>{"Pass 1 of 2 - 0.063", "Pass 2 of 2 - 0.063"}));
  EXPECT_EQ(result.progress.strokesDone, 4u);
  EXPECT_EQ(result.progress.strokesTotal, 4u);
}

TEST(JobRunner, AClosedContourIsCutAgainWithoutALift) {
  Fixture f;
  f.options.passes = 2;
  const JobResult result = f.Run("PU10,10;PD20,10,20,20,10,10");
  EXPECT_EQ(result.end, JobEnd::Done);  // the second travel moves nothing: status 0
  EXPECT_EQ(result.progress.movesDone, 8u);
  EXPECT_EQ(result.progress.outstanding, 0u);
}

TEST(JobRunner, SetsTheKindOfRunForTheJobOnly) {
  Fixture f;
  f.options.runKind = k7::kRunGrid;
  f.Run("PD5,5");
  EXPECT_EQ(f.device.log.front(), "SetGridMode(1)");
  EXPECT_EQ(f.device.log.back(), "SetGridMode(0)");
}

TEST(JobRunner, ABeadInsertRunTravelsWithTheBeadTool) {
  Fixture f;
  f.options.runKind = k7::kRunBrailleBeadInsert;
  f.Run("PU5,5;PD;PU9,5;PD");
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(3) BeginJob StartPass(1,5,5) MoveBeadToolTo(5,5) LowerCutter "
            "MoveBeadToolTo(9,5) LowerCutter MoveTo(0,0) EndJob SetGridMode(0)");
}

TEST(JobRunner, TheSpindleStopsOnlyAfterTheLastMove) {
  Fixture f;
  f.device.hasSpindle = true;
  f.options.spindle = true;
  f.Run("PD5,5");
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(0) BeginJob SetSpindle(1) StartPass(1,0,0) MoveTo(0,0) EngraveTo(5,5) "
            "MoveTo(0,0) EndJob SetSpindle(0) SetGridMode(0)");
}

TEST(JobRunner, ARefusedBeginSendsNothing) {
  Fixture f;
  f.device.beginAnswers = {false};
  EXPECT_EQ(f.Run("PD5,5").end, JobEnd::Refused);
  EXPECT_EQ(f.device.Log(), "SetGridMode(0) BeginJob SetGridMode(0)");
}

// What the runner makes of each answer of the device to "PU10,20;PD30,40" or a drawing like it.
using Answers = std::deque<std::uint32_t>;
struct AnswerCase {
  const char* name;
  const char* file;
  Answers move, engrave, lower;
  JobEnd end;
  const char* calls;  // between the travel to (10, 20) and the end of the run
};

void PrintTo(const AnswerCase& c, std::ostream* out) {
  *out << c.name;
}

class JobRunnerAnswers : public testing::TestWithParam<AnswerCase> {};

TEST_P(JobRunnerAnswers, AreFollowed) {
  const AnswerCase& c = GetParam();
  Fixture f;
  f.device.moveAnswers = c.move;
  f.device.engraveAnswers = c.engrave;
  f.device.lowerAnswers = c.lower;
  const JobResult result = f.Run(c.file);
  EXPECT_EQ(result.end, c.end);
  EXPECT_EQ(f.device.Log(), "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) " +
                                std::string(c.calls) + " SetGridMode(0)");
  EXPECT_EQ(result.progress.outstanding, 0u);
  if (c.end == JobEnd::Done) {
    EXPECT_EQ(result.progress.movesDone, 2u);
  }
}

constexpr std::uint32_t kSent = k7::kStatusSent;
constexpr std::uint32_t kProbed = k7::kStatusProbed;
constexpr std::uint32_t kRefused = k7::kStatusRefused;

INSTANTIATE_TEST_SUITE_P(
    Each, JobRunnerAnswers,
    testing::Values(AnswerCase{"AnArmedFirstTravelGoesOn",
                               "PU10,20;PD30,40",
                               {k7::kStatusArmed},
                               {},
                               {},
                               JobEnd::Done,
                               "EngraveTo(30,40) MoveTo(0,0) EndJob"},
                    AnswerCase{"AProbedStrokeIsIssuedAgain",
                               "PU10,20;PD30,40",
                               {k7::kStatusArmed},
                               {kProbed},
                               {},
                               JobEnd::Done,
                               "EngraveTo(30,40) EngraveTo(30,40) MoveTo(0,0) EndJob"},
                    AnswerCase{"AProbedDotIsIssuedAgain",
                               "PU10,20;PD",
                               {},
                               {},
                               {kProbed},
                               JobEnd::Done,
                               "LowerCutter LowerCutter MoveTo(0,0) EndJob"},
                    AnswerCase{"AStrokeProbedTwiceEndsTheJob",
                               "PU10,20;PD30,40",
                               {},
                               {kProbed, kProbed},
                               {},
                               JobEnd::NotProbed,
                               "EngraveTo(30,40) EngraveTo(30,40) EndJob"},
                    AnswerCase{"ADotProbedTwiceEndsTheJob",
                               "PU10,20;PD",
                               {},
                               {},
                               {kProbed, kProbed},
                               JobEnd::NotProbed,
                               "LowerCutter LowerCutter EndJob"},
                    AnswerCase{"AManualCutterIsSetBetweenTwoJobs",
                               "PU10,20;PD30,40",
                               {k7::kStatusOneShot},
                               {},
                               {},
                               JobEnd::Done,
                               "EndJob ManualCutter BeginJob EngraveTo(30,40) MoveTo(0,0) EndJob"},
                    AnswerCase{"AStrokeIntoTheTableEndsTheJob",
                               "PU10,20;PD30,40,50,60",
                               {},
                               {kRefused},
                               {},
                               JobEnd::TableViolation,
                               "EngraveTo(30,40) EndJob"},
                    AnswerCase{"ADeeperPassIntoTheTableLiftsTheCutterFirst",
                               "PU10,20;PD30,40,50,60",
                               {},
                               {kSent, kRefused},
                               {},
                               JobEnd::TableViolation,
                               "EngraveTo(30,40) EngraveTo(50,60) MoveTo(29,40) EndJob"},
                    AnswerCase{"ATravelThatIsRefusedEndsTheJob",
                               "PU10,20;PD30,40",
                               {kRefused},
                               {},
                               {},
                               JobEnd::TableViolation,
                               "EndJob"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(JobRunner, GivingUpAtTheManualCutterLeavesNoJobOpen) {
  Fixture f;
  f.manualAnswer = false;
  f.device.moveAnswers = {k7::kStatusOneShot};
  EXPECT_EQ(f.Run("PU10,20;PD30,40").end, JobEnd::Stopped);
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) EndJob ManualCutter "
            "SetGridMode(0)");
}

TEST(JobRunner, ARefusalAfterTheManualCutterLeavesNoJobOpen) {
  Fixture f;
  f.device.beginAnswers = {true, false};
  f.device.moveAnswers = {k7::kStatusOneShot};
  EXPECT_EQ(f.Run("PU10,20;PD30,40").end, JobEnd::Refused);
  EXPECT_EQ(f.device.log[f.device.log.size() - 2], "BeginJob");
}

TEST(JobRunner, ALostControllerEndsTheJob) {
  Fixture f;
  f.device.connected = false;
  f.device.moveAnswers = {k7::kStatusNothing};
  EXPECT_EQ(f.Run("PU10,20;PD30,40").end, JobEnd::Disconnected);
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) EndJob SetGridMode(0)");
}

TEST(JobRunner, ALostLinkEndsTheJobAndAsksNothingMore) {
  Fixture f;
  f.device.hasSpindle = true;
  f.lostAfterViews = 3;
  const JobResult result = f.Run("PU10,20;PD30,40;PU50,60;PD70,80;PU90,90;PD99,99");
  EXPECT_EQ(result.end, JobEnd::LinkLost);
  EXPECT_EQ(f.device.Log(),
            "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) EngraveTo(30,40) "
            "MoveTo(50,60) SetGridMode(0)");
  EXPECT_EQ(result.progress.strokesDone, 1u);
}

TEST(JobRunner, ALinkLostBeforeAnythingIsSentIsNotTakenForADoneJob) {
  Fixture f;
  f.lostAfterViews = 0;
  f.device.moveAnswers = {k7::kStatusNothing};
  const JobResult result = f.Run("PU10,20;PD30,40");
  EXPECT_EQ(result.end, JobEnd::LinkLost);
  EXPECT_EQ(result.progress.strokesDone, 0u);
}

TEST(JobRunner, ALinkLostWhileTheCallWaitedIsNotTakenForAMoveOfNothing) {
  Fixture f;
  f.device.moveAnswers = {k7::kStatusSent, k7::kStatusNothing};
  f.lostAfterViews = 2;
  EXPECT_EQ(f.Run("PU10,20;PD30,40;PU50,60;PD70,80").end, JobEnd::LinkLost);
}

struct FromCase {
  std::uint32_t firstStroke;
  const char* calls;
};

// Two passes of a stroke, a stroke that starts where that ends, and a dot.
TEST(JobRunner, BeginsWithTheStrokeAskedFor) {
  constexpr FromCase kCases[] = {
      {1,
       "StartPass(1,10,20) MoveTo(10,20) EngraveTo(30,40) EngraveTo(50,60) MoveTo(70,80) "
       "LowerCutter StartPass(2,10,20) MoveTo(10,20) EngraveTo(30,40) EngraveTo(50,60) "
       "MoveTo(70,80) LowerCutter"},
      {2,
       "StartPass(1,30,40) MoveTo(30,40) EngraveTo(50,60) MoveTo(70,80) LowerCutter "
       "StartPass(2,10,20) MoveTo(10,20) EngraveTo(30,40) EngraveTo(50,60) MoveTo(70,80) "
       "LowerCutter"},
      {3,
       "StartPass(1,70,80) MoveTo(70,80) LowerCutter StartPass(2,10,20) MoveTo(10,20) "
       "EngraveTo(30,40) EngraveTo(50,60) MoveTo(70,80) LowerCutter"},
      {4,
       "StartPass(2,10,20) MoveTo(10,20) EngraveTo(30,40) EngraveTo(50,60) MoveTo(70,80) "
       "LowerCutter"},
      {6, "StartPass(2,70,80) MoveTo(70,80) LowerCutter"},
  };
  for (const FromCase& c : kCases) {
    Fixture f;
    f.options.passes = 2;
    f.options.firstStroke = c.firstStroke;
    const JobResult result = f.Run("PU10,20;PD30,40;PU30,40;PD50,60;PU70,80;PD");
    EXPECT_EQ(result.end, JobEnd::Done);
    EXPECT_EQ(f.device.Log(), "SetGridMode(0) BeginJob " + std::string(c.calls) +
                                  " MoveTo(0,0) EndJob SetGridMode(0)");
    EXPECT_EQ(result.progress.strokesDone, 6u);
    EXPECT_EQ(result.progress.movesDone, result.progress.movesTotal);
  }
}

TEST(JobRunner, TellsOfThePlungesThatMayProbe) {
  Fixture f;
  f.device.engraveAnswers = {kProbed};
  f.Run("PU10,20;PD30,40,50,60;PU70,80;PD");
  EXPECT_EQ(f.calls, "PDPD");
}

struct StopCase {
  int views;  // progress views until the user stops
  const char* calls;
  std::uint32_t movesDone;
};

TEST(JobRunner, StoppingLiftsACutterThatIsDownOneStepAside) {
  constexpr StopCase kCases[] = {
      {1, "", 1},  // the cutter is up: nothing moves
      {2, "EngraveTo(30,40) MoveTo(29,40) ", 2},
  };
  for (const StopCase& c : kCases) {
    Fixture f;
    f.stopAfterViews = c.views;
    const JobResult result = f.Run("PU10,20;PD30,40,50,60");
    EXPECT_EQ(result.end, JobEnd::Stopped);
    EXPECT_EQ(f.device.Log(), "SetGridMode(0) BeginJob StartPass(1,10,20) MoveTo(10,20) " +
                                  std::string(c.calls) + "EndJob SetGridMode(0)");
    EXPECT_EQ(result.progress.movesDone, c.movesDone);
  }
}

TEST(JobRunner, StoppingAtTheLeftEdgeLiftsToTheRight) {
  Fixture f;
  f.stopAfterViews = 2;
  f.Run("PU5,0;PD0,7,50,60");
  EXPECT_EQ(f.device.log[f.device.log.size() - 3], "MoveTo(1,7)");
}

TEST(JobRunner, AJobThatEndsOverTheTableHomeIsLiftedThereToo) {
  Fixture f;
  f.Run("PU9,9;PD0,0");
  EXPECT_EQ(f.device.log[f.device.log.size() - 3], "MoveTo(1,0)");
}

std::string LineOfFortyCuts() {
  std::string file = "PU0,10;PD";
  for (int i = 1; i <= 40; ++i) file += std::to_string(i) + ",10" + (i < 40 ? "," : "");
  return file;
}

TEST(JobRunner, WaitsItselfWhileThirtyTwoLinesHaveNotBegun) {
  Fixture f;
  f.device.holdReports = true;
  const JobResult result = f.Run(LineOfFortyCuts());
  EXPECT_EQ(result.end, JobEnd::Done);
  EXPECT_EQ(result.progress.movesDone, 41u);
  EXPECT_EQ(f.queuedAtFirstWait, 32u);
  EXPECT_EQ(f.waits, 41);  // nine for room, the rest for the end
}

TEST(JobRunner, StopsWhileItWaits) {
  Fixture f;
  f.device.holdReports = true;
  f.stopAfterViews = 34;  // 32 sent; the second wait
  EXPECT_EQ(f.Run(LineOfFortyCuts()).end, JobEnd::Stopped);
  EXPECT_EQ(f.device.log[f.device.log.size() - 2], "EndJob");
}

TEST(JobRunner, APneumaticHeadIsNotWaitedForByTheHost) {
  Fixture f;
  f.device.airZ = true;
  f.device.holdReports = true;
  EXPECT_EQ(f.Run("PU10,20;PD30,40").end, JobEnd::Done);
  EXPECT_EQ(f.waits, 0);
}

TEST(JobRunner, EveryUnhappyEndHasAText) {
  EXPECT_EQ(JobEndText(JobEnd::Done), "");
  for (const JobEnd end : {JobEnd::Stopped, JobEnd::Refused, JobEnd::TableViolation,
                           JobEnd::NotProbed, JobEnd::Disconnected, JobEnd::LinkLost}) {
    EXPECT_NE(JobEndText(end), "");
  }
}

}  // namespace
}  // namespace k7host
