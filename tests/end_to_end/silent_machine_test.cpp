// A machine that falls silent, halts, misses its probe or loses its link in the middle of a job, as
// the user of the reference host meets it; and a job that is gone on with afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cmath>
#include <filesystem>
#include <set>
#include <sstream>
#include <tuple>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::Not;

constexpr char kId[] = "ENDTOENDSILENT01";

// Ctrl-C twice, each once the program has said what it awaits; the rest of what it prints.
std::string EndAtOnce(Process& host) {
  host.Signal(SIGINT);
  std::string text = host.ReadUntil("Ctrl-C again ends at once");
  host.Signal(SIGINT);
  text += host.ReadAll(30);
  EXPECT_EQ(host.Wait(), 3) << text;
  EXPECT_THAT(text, HasSubstr("ended at once, cutter position unknown"));
  return text;
}

// What is wrong with the machine, and what the user is told of it.
struct Trouble {
  const char* name;
  std::vector<std::string> arguments;  // of the simulated machine
  const char* control;                 // a command to it once a stroke is done; empty: none
  const char* told;
};

void PrintTo(const Trouble& trouble, std::ostream* out) {
  *out << trouble.name;
}

class SilentMachine : public testing::TestWithParam<Trouble> {};

TEST_P(SilentMachine, IsToldOfAndCanBeLeft) {
  const Trouble& trouble = GetParam();
  FreshController controller(
      kId, FullMachine(),
      With({"--table-home", "1,1", "--position", "4,3,0.2"}, trouble.arguments));
  Process host({"wine", "k7host.exe", "engrave", Sample("grid.plt"), "--home", "--resume-to",
                "C:\\silent.resume"},
               Places::Get().windowsPrograms);
  if (*trouble.control != 0) {
    ASSERT_TRUE(controller.WaitForTranscript("< EX", 5));
    controller.Control(trouble.control);
  }
  EXPECT_THAT(host.ReadUntil(" - Ctrl-C to stop waiting"), HasSubstr(trouble.told));
  EndAtOnce(host);
}

INSTANTIATE_TEST_SUITE_P(
    , SilentMachine,
    testing::Values(
        Trouble{"Silent",
                {"--surface", "plane:1.25", "--speed", "20"},
                "fault do=silent,atMs=1",
                "no word from the machine for"},
        Trouble{"Halted",
                {"--surface", "plane:1.25", "--speed", "20"},
                "halt ALARM: Hard limit +X",
                "the machine answers, but has reported nothing done for 5 s"},
        Trouble{"ReportLost",
                {"--surface", "plane:1.25", "--fault", "reply=EX,nth=30,do=drop"},
                "",
                "a report that was lost"},
        Trouble{"ProbeMissed", {"--surface", "none"}, "", "the probe may have missed the surface"}),
    [](const auto& test) { return std::string(test.param.name); });

// Depth in steps of the picture, and both ends.
using DrawnCut = std::tuple<long, double, double, double, double>;

// The cuts of a picture, whatever their order and however often they were made.
std::set<DrawnCut> CutsOf(const fs::path& picture) {
  std::set<DrawnCut> cuts;
  std::istringstream lines(ReadFile(picture));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t depth = line.find("data-depth=\"");
    if (depth == line.npos) continue;
    const long step = std::lround(std::stod(line.substr(depth + 12)) / 0.002);
    std::istringstream path(line.substr(line.find(" d=\"") + 4));
    char kind = 0;
    double fromX = 0, fromY = 0, x = 0, y = 0;
    while (path >> kind >> x >> y) {
      if (kind == 'L') cuts.insert({step, fromX, fromY, x, y});
      fromX = x;
      fromY = y;
    }
  }
  return cuts;
}

std::vector<std::string> Drawing(const fs::path& picture) {
  return With(FullTable(), {"--picture", picture, "--speed", "100"});
}

TEST(LostLink, IsNamedAndTheNextRunGivesThePictureOfAnUndisturbedJob) {
  const fs::path folder = Places::Get().prefix / "drive_c";
  {
    FreshController undisturbed(kId, FullMachine(), Drawing(folder / "whole.svg"));
    const HostRun run = RunHost({"engrave", Sample("grid.plt"), "--home"});
    ASSERT_EQ(run.exitCode, 0) << run.output;
  }
  {
    FreshController controller(kId, FullMachine(), Drawing(folder / "parts.svg"));
    const std::string kept = "C:\\parts.resume";
    Process host(
        {"wine", "k7host.exe", "engrave", Sample("grid.plt"), "--home", "--resume-to", kept},
        Places::Get().windowsPrograms);
    EXPECT_THAT(host.ReadUntil("pass: Pass 2 of 3"), HasSubstr("Pass 2"));
    EXPECT_THAT(host.ReadUntil("strokes 2"), HasSubstr("strokes 2"));
    controller.Control("close 100");  // the board goes on with the lines that it has
    const std::string text = host.ReadAll(60);
    EXPECT_THAT(text, testing::ContainsRegex("k7host: link lost after stroke [0-9]+ of 54, cutter "
                                             "position unknown"));
    EXPECT_EQ(host.Wait(), 3) << text;
    const HostRun run = RunHost({"engrave", "--resume", kept});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_THAT(run.output, Not(HasSubstr("Pass 1 of 3")));
    EXPECT_THAT(run.output, HasSubstr("\ndone: strokes 54/54"));
    EXPECT_FALSE(fs::exists(folder / "parts.resume"));
  }
  const std::set<DrawnCut> whole = CutsOf(folder / "whole.svg");
  EXPECT_GE(whole.size(), 54u);
  EXPECT_EQ(CutsOf(folder / "parts.svg"), whole);
}

TEST(SwitchWatch, SaysThatTheMachineNoLongerAnswers) {
  FreshController controller(kId, FullMachine(), FullTable());
  Process watch({"wine", "k7host.exe", "switches", "--watch"}, Places::Get().windowsPrograms);
  EXPECT_THAT(watch.ReadUntil("\n"), HasSubstr("switches: x=0"));
  controller.Control("fault do=silent,atMs=1");
  EXPECT_THAT(watch.ReadAll(30), HasSubstr("k7host: the machine no longer answers"));
  EXPECT_EQ(watch.Wait(), 3);
}

// The driver closes its dialog as if it had been cancelled.
TEST(SilentDialog, IsNotTakenForOneThatWasCancelled) {
  FreshController controller(kId, FullMachine(), FullTable());
  Slots desk;
  desk.Ask("dialog-enabled 2");  // it has found its display by then
  Process host({"wine", "k7host.exe", "dialog"}, Places::Get().windowsPrograms);
  ASSERT_EQ(desk.Ask("dialog-wait K7 System Controller"), "open") << host.ReadAll(1);
  controller.Control("fault do=silent,atMs=1");
  EXPECT_THAT(host.ReadAll(30), HasSubstr("k7host: the dialog was closed because the controller "
                                          "has fallen silent"));
  EXPECT_EQ(host.Wait(), 3);
}

}  // namespace
}  // namespace k7test
