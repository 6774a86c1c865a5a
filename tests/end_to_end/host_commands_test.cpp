// Each command of the reference host against the real driver and the simulated machine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cctype>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

constexpr char kId[] = "ENDTOENDHOST0001";

class HostCommand : public testing::Test {
 protected:
  // What a command prints; its exit code is checked here.
  static std::string Host(const std::vector<std::string>& arguments, int exitCode = 0) {
    const HostRun run = RunHost(arguments);
    EXPECT_EQ(run.exitCode, exitCode) << run.output;
    return run.output;
  }

  FreshController controller{kId, FullMachine(), FullTable()};
};

TEST_F(HostCommand, ListNamesTheController) {
  const std::string line = "0\t" + std::string(kId) + "\tK7 System Controller\t";
  const std::string output = Host({"list"});
  EXPECT_THAT(output, HasSubstr("\n" + line));
  EXPECT_THAT(output,
              testing::ContainsRegex("k7host: the search took [0-9.]+ s: looked at .*COM7"));
  EXPECT_THAT(Host({"list", "--ports"}), EndsWith(line + "COM7\tserial\n"));
}

TEST_F(HostCommand, InfoTellsTheMachine) {
  const std::string want = "id: " + std::string(kId) +
                           "\nname: K7 System Controller\nport: \\\\.\\COM7\nlink: serial\n"
                           "table: 25.000 x 16.000 inches\n"
                           "resolution: 4000.000 x 4000.000 x 4000.000 steps per inch\npasses: 3\n"
                           "location: -1.000 -1.000 inches\nfitted: spindle\nsettings: ";
  const std::string output = Host({"info", kId});
  EXPECT_EQ(output.substr(0, want.size()), want);
  EXPECT_THAT(output, EndsWith("\\Controllers\\" + std::string(kId) + ".ini\n"));
}

TEST_F(HostCommand, HomeDrivesToTheSwitches) {
  EXPECT_EQ(Host({"home"}), "position: -1.000 -1.000 inches\n");
  EXPECT_THAT(controller.Transcript(), HasSubstr("G28 Z0\nM43\nG28 Y0\nG28 X0\nSetTableHomed\n"));
  EXPECT_EQ(controller.Number("homed"), 1);
}

// A search writes the controller's name into the file, which then has a section of settings.
TEST_F(HostCommand, AFileThatIsNoSettingsFileIsNamedAndNothingIsSent) {
  std::ofstream(SettingsFile(kId)) << "<html>not found</html>\n";
  EXPECT_THAT(Host({"home"}, 2), HasSubstr(std::string(kId) + ".ini: is no settings file: it has "
                                                              "none of the sections of one"));
  EXPECT_THAT(controller.Transcript(), Not(HasSubstr("G28")));
}

TEST_F(HostCommand, SwitchesAreShownOnceOrWatched) {
  EXPECT_EQ(Host({"switches"}), "switches: x=0 y=0 z=0 prox=0\n");
  Process watch({"wine", "k7host.exe", "switches", "--watch"}, Places::Get().windowsPrograms);
  EXPECT_THAT(watch.ReadUntil("\n"), HasSubstr("switches: x=0 y=0 z=0 prox=0"));
  controller.Control("switch y 1");
  EXPECT_THAT(watch.ReadUntil("y=1"), HasSubstr("switches: x=0 y=1"));
  controller.Control("switch probe 1");
  EXPECT_THAT(watch.ReadUntil("prox=1"), HasSubstr("switches: x=0 y=1 z=0 prox=1"));
  watch.Signal(SIGINT);
  EXPECT_EQ(watch.Wait(), 0);
}

TEST_F(HostCommand, JogMakesAtLeastOneStep) {
  EXPECT_EQ(Host({"jog", "--direction", "x+", "--key", "120"}), "position: -0.975 -1.000 inches\n");
  EXPECT_EQ(Host({"jog", "--direction", "y+", "--slow"}), "position: -0.975 -0.995 inches\n");
  EXPECT_EQ(Host({"jog", "--direction", "down"}), "z: 100 steps\n");
  EXPECT_EQ(Host({"jog", "--direction", "x-"}), "position: -1.000 -0.995 inches\n");
  EXPECT_EQ(Host({"jog", "--direction", "x-"}, 1),
            "k7host: the jog was refused or stands at its limit\n");
}

// What a terminal shows of the bytes: control sequences left out, a step to the right as a blank.
std::string Shown(const std::string& bytes) {
  std::string shown;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '\x1b') {
      shown += bytes[i];
      continue;
    }
    while (++i < bytes.size() && !std::isalpha(static_cast<unsigned char>(bytes[i]))) {
    }
    if (i < bytes.size() && bytes[i] == 'C') shown += ' ';
  }
  return shown;
}

// A person at a terminal: a tap of the arrow key is one step, a held one many, Esc ends.
TEST_F(HostCommand, JogFollowsTheArrowKeysWhileTheyAreHeld) {
  Process host({"wine", "k7host.exe", "jog"}, Places::Get().windowsPrograms, Talk::Terminal);
  // The terminal takes keys once something is shown on it.
  EXPECT_THAT(Shown(host.ReadUntil("\n")), HasSubstr("Arrow keys: X and Y"));
  const std::string right = "\x1b[C", up = "\x1b[A", escape = "\x1b";
  host.Write(up);
  ASSERT_TRUE(controller.WaitForTranscript("> G0 Y0.635000"));
  EXPECT_TRUE(controller.WaitForTranscript("> M107"));
  Slots desk;
  desk.Ask("key 39 down");
  host.Write(right);
  ASSERT_TRUE(controller.WaitForTranscript("> G0 X6.350000"));  // the tenth step
  desk.Ask("key 39 up");
  EXPECT_TRUE(controller.WaitForTranscript("> M107", 2));
  host.Write(escape);
  EXPECT_EQ(host.Wait(), 0);
  EXPECT_THAT(controller.Transcript(), Not(HasSubstr("G0 Y1.270000")));  // a tap is one step
  EXPECT_GE(controller.Number("blocks"), 11);
}

TEST_F(HostCommand, GotoTravelsToAPlaceOnTheTable) {
  EXPECT_EQ(Host({"goto", "2", "1.5"}), "position: 2.000 1.500 inches\n");
  EXPECT_THAT(Host({"goto", "26", "1"}, 2), HasSubstr("is off the table"));
  EXPECT_NEAR(controller.Number("positionInches.x"), 4 + 2, 0.001);
  EXPECT_EQ(ReadSettings(kId).at("Current Location/X Axis"), "12000");
}

// Each is a process of its own. The second finds the head at its lift, and asks for a move that
// moves nothing.
TEST_F(HostCommand, GotoTwiceInARowArrivesTwice) {
  EXPECT_EQ(Host({"goto", "2", "2"}), "position: 2.000 2.000 inches\n");
  EXPECT_EQ(Host({"goto", "3", "3"}), "position: 3.000 3.000 inches\n");
  EXPECT_NEAR(controller.Number("positionInches.x"), 4 + 3, 0.001);
}

TEST_F(HostCommand, SpindleRunsWhileTheCommandDoes) {
  EXPECT_EQ(Host({"spindle", "on", "--seconds", "0.2"}), "spindle: 9000 rpm\nspindle: 0 rpm\n");
  EXPECT_EQ(Host({"spindle", "full", "--seconds", "0.2"}), "spindle: 13000 rpm\nspindle: 0 rpm\n");
  EXPECT_THAT(Host({"spindle", "ramp", "up"}), EndsWith("spindle: 0 rpm\n"));
  EXPECT_EQ(Host({"spindle", "off"}), "spindle: 0 rpm\n");
  const std::string lines = controller.Transcript();
  EXPECT_THAT(lines, HasSubstr("M42\nM44 S175\nM43\n"));
  EXPECT_THAT(lines, HasSubstr("M42\nM44 S252\nM43\n"));
  EXPECT_EQ(controller.Number("spindle.on"), 0);
}

TEST_F(HostCommand, EstimateMovesNothing) {
  const std::string output = Host({"estimate", Sample("grid.plt"), "--passes", "1"});
  EXPECT_THAT(output, testing::ContainsRegex("^job: strokes [0-9]+, dots 0, cuts [0-9]+, passes 1, "
                                             "X [0-9.]+ to [0-9.]+, Y [0-9.]+ to [0-9.]+ inches\n"
                                             "estimate: [0-9]+ s \\([0-9]:[0-9][0-9]:[0-9][0-9]\\)"
                                             "\nparts: travels and cuts [0-9]+ s by the driver, "
                                             "lifts and plunges [0-9]+ s, dwells 0 s, spindle "
                                             "[0-9]+ s\n$"));
  EXPECT_EQ(controller.Number("blocks"), 0);
}

TEST_F(HostCommand, EngraveRunsAGridInAllItsPasses) {
  const std::string output = Host({"engrave", Sample("grid.plt"), "--grid", "--home"});
  EXPECT_THAT(output, HasSubstr("\npass: Pass 1 of 3 - 0.010 - GRID\n"));
  EXPECT_THAT(output, HasSubstr("\npass: Pass 2 of 3 - 0.020 - GRID\n"));
  EXPECT_THAT(output, HasSubstr("\npass: Pass 3 of 3 - 0.030 - GRID\n"));
  EXPECT_THAT(output,
              testing::ContainsRegex("\ndone: strokes 54/54, moves [0-9]+/[0-9]+, passes 3"));
  EXPECT_EQ(controller.Number("errors.total"), 0) << controller.Report();
  EXPECT_NEAR(controller.Number("depthInches.deepest"), 0.03, 0.0006);
}

TEST_F(HostCommand, EngraveDrillsBrailleInTheFirstPassesAlone) {
  const std::string output =
      Host({"engrave", Sample("braille.plt"), "--braille-drill", "--passes", "2", "--home"});
  EXPECT_THAT(output, HasSubstr("\npass: Pass 2 of 3 - 0.020 - BRAILLE DRILL\n"));
  EXPECT_THAT(output, Not(HasSubstr("pass: Pass 3")));
  EXPECT_THAT(output, HasSubstr("\ndone: strokes 50/50"));
  EXPECT_EQ(Host({"engrave", Sample("braille.plt"), "--braille-bead"}, 1),
            "k7host: the machine has no bead insert tool\n");
  EXPECT_EQ(controller.Number("errors.total"), 0) << controller.Report();
  EXPECT_EQ(controller.Number("cutInches"), 0);
}

// The board is on a serial port and on the network, as boards with both are; what the host does
// goes over the network.
TEST(HostOverTcp, EveryCommandTakesAnAddress) {
  const std::string address = "127.0.0.1:" + std::to_string(20000 + getpid() % 20000);
  FreshController controller(kId, FullMachine(),
                             With(FullTable(), {"--tcp", address.substr(address.find(':') + 1)}));
  HostRun run = RunHost({"info", "--tcp", address});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_THAT(run.output, HasSubstr("\nport: 127.0.0.1\nlink: tcp\n"));
  EXPECT_EQ(RunHost({"list", "--tcp", address}).output,
            "0\t" + std::string(kId) + "\tK7 System Controller\t127.0.0.1\ttcp\n");
  run = RunHost({"home", "--tcp", address});
  EXPECT_EQ(run.output, "position: -1.000 -1.000 inches\n");
  run = RunHost({"engrave", Sample("grid.plt"), "--passes", "1", "--tcp", address});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_EQ(RunHost({"home", "--tcp", "127.0.0.1:1"}).output,
            "k7host: --tcp 127.0.0.1:1: nobody answers at port 1\n");
  EXPECT_GT(controller.Number("cutInches"), 70);
}

constexpr char kWaitForDialog[] = "dialog-wait K7 System Controller";
constexpr char kRunJob[] = "1", kCancel[] = "2", kApply[] = "1059", kTableSetup[] = "1068";

// Opens the dialog by the command, looks whether "Run Job" and "Table Setup..." can be pressed and
// presses a button; what the command has printed.
struct DialogRun {
  const char* command;
  const char* runEnabled;
  const char* setupEnabled;
  const char* button;
  const char* want;
};

void PrintTo(const DialogRun& run, std::ostream* out) {
  *out << run.command;
}

class HostSettings : public HostCommand, public testing::WithParamInterface<DialogRun> {};

TEST_P(HostSettings, OpensTheDialogAndPrintsItsResult) {
  const DialogRun& run = GetParam();
  std::vector<std::string> words = {"wine", "k7host.exe"};
  std::istringstream split(run.command);
  for (std::string word; split >> word;) words.push_back(word);
  Slots desk;
  desk.Ask("dialog-enabled 2");  // it has found its display by then
  // On a machine that is held up for two seconds the dialog takes the controller for silent, and
  // closes: one opens it again.
  constexpr int kTries = 3;
  std::optional<Process> host;
  std::string seen;
  for (int i = 0; i < kTries && seen != "open"; ++i) {
    host.emplace(words, Places::Get().windowsPrograms);
    seen = desk.Ask(kWaitForDialog);
  }
  ASSERT_EQ(seen, "open") << host->ReadAll(1);
  EXPECT_EQ(desk.Ask(std::string("dialog-enabled ") + kRunJob), run.runEnabled);
  EXPECT_EQ(desk.Ask(std::string("dialog-enabled ") + kTableSetup), run.setupEnabled);
  EXPECT_EQ(desk.Ask(std::string("dialog-press ") + run.button), "closed");
  EXPECT_THAT(host->ReadAll(60), HasSubstr(run.want));
  EXPECT_EQ(host->Wait(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, HostSettings,
    testing::Values(DialogRun{"settings", "0", "1", kApply, "settings: applied"},
                    DialogRun{"settings --before-job", "1", "1", kRunJob, "settings: run job"},
                    DialogRun{"settings --before-job --read-only", "0", "0", kCancel,
                              "settings: cancelled"},
                    DialogRun{"setup", "0", "1", kCancel, "settings: cancelled"}),
    [](const auto& test) {
      std::string name = test.param.command;
      for (char& c : name) {
        if (c == '-' || c == ' ') c = '_';
      }
      return name;
    });

}  // namespace
}  // namespace k7test
