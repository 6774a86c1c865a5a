// The options of the command line, and the message for each wrong one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <sstream>
#include <vector>

#include "app/options.h"

namespace k7sim {
namespace {

using testing::HasSubstr;

std::optional<Options> Parse(std::initializer_list<const char*> arguments, int& exitCode,
                             std::string* message = nullptr) {
  std::vector<const char*> argv = {"k7sim"};
  argv.insert(argv.end(), arguments);
  testing::internal::CaptureStderr();
  auto options = ParseOptions(static_cast<int>(argv.size()), argv.data(), exitCode);
  const std::string text = testing::internal::GetCapturedStderr();
  if (message) *message = text;
  return options;
}

TEST(Options, HaveATableOf25By16By2Inches) {
  int exitCode = 0;
  const auto options = Parse({}, exitCode);
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->pty);
  EXPECT_FALSE(options->tcp);
  EXPECT_EQ(options->setup.speed, 1);
  const TableGeometry& table = options->setup.machine.geometry;
  EXPECT_EQ(table.size, (Vec3{25, 16, 2}));
  EXPECT_EQ(table.travel, (Vec3{25.5, 16.5, 2.25}));
  EXPECT_EQ(options->setup.machine.surface.Description(), "plane:1.75");
}

TEST(Options, TakeTheLinksFromTheCommandLine) {
  int exitCode = 0;
  const auto options = Parse({"--pty", "/tmp/link", "--tcp", "2300", "--wire", "uart", "--baud",
                              "115200", "--speed", "50", "--control", "/tmp/pipe"},
                             exitCode);
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->pty);
  EXPECT_EQ(options->ptyLink, "/tmp/link");
  EXPECT_TRUE(options->tcp);
  EXPECT_EQ(options->tcpPort, 2300);
  EXPECT_EQ(options->ptyWire, WireKind::Uart);
  EXPECT_EQ(options->setup.baud, 115200);
  EXPECT_EQ(options->setup.speed, 50);
  EXPECT_EQ(options->controlPath, "/tmp/pipe");
  EXPECT_EQ(Parse({"--wire", "tcp"}, exitCode)->ptyWire, WireKind::Tcp);
  EXPECT_EQ(Parse({"--wire", "usb"}, exitCode)->ptyWire, WireKind::Usb);
  EXPECT_EQ(Parse({"--speed", "max"}, exitCode)->setup.speed, 0);
  EXPECT_FALSE(Parse({"--tcp", "0"}, exitCode)->pty);
}

TEST(Options, TakeTheMachineFromTheCommandLine) {
  int exitCode = 0;
  const auto options = Parse({"--id",
                              "ABCDEFGHIJKLMNOP",
                              "--config",
                              "/tmp/card",
                              "--table",
                              "10,6,1",
                              "--table-home",
                              "0.5,0.25",
                              "--surface",
                              "tilt:1,0.01,0",
                              "--position",
                              "1,2,0.5",
                              "--homed",
                              "--tool",
                              "air",
                              "--switch",
                              "x=1",
                              "--switch",
                              "probe=0",
                              "--fault",
                              "match=G28,do=withhold",
                              "--hard-limits",
                              "--silent-zero-moves",
                              "--fault",
                              "atMs=5,do=close"},
                             exitCode);
  ASSERT_TRUE(options);
  const MachineSetup& machine = options->setup.machine;
  EXPECT_EQ(options->setup.id, "ABCDEFGHIJKLMNOP");
  EXPECT_EQ(options->setup.configPath, "/tmp/card");
  EXPECT_EQ(machine.geometry.size, (Vec3{10, 6, 1}));
  EXPECT_EQ(machine.geometry.homeX, 0.5);
  EXPECT_EQ(machine.geometry.homeY, 0.25);
  EXPECT_EQ(machine.geometry.travel, (Vec3{11, 6.75, 1.25}));
  EXPECT_EQ(Parse({"--travel", "9,8,7"}, exitCode)->setup.machine.geometry.travel, (Vec3{9, 8, 7}));
  EXPECT_EQ(machine.surface.Description(), "tilt:1,0.01,0");
  EXPECT_EQ(machine.positionInches, (Vec3{1, 2, 0.5}));
  EXPECT_TRUE(machine.homed);
  EXPECT_TRUE(machine.hardLimits);
  EXPECT_TRUE(machine.silentZeroMoves);
  EXPECT_EQ(machine.tool, ToolKind::Air);
  EXPECT_EQ(options->switches,
            (std::vector<std::pair<std::string, std::string>>{{"x", "1"}, {"probe", "0"}}));
  ASSERT_EQ(options->setup.faults.size(), 2u);
  EXPECT_EQ(options->setup.faults[0].action, FaultAction::Withhold);
  EXPECT_EQ(options->setup.faults[1].action, FaultAction::Close);
}

TEST(Options, TakeTheFilesFromTheCommandLine) {
  int exitCode = 0;
  const auto options = Parse({"--picture", "p.svg", "--picture-home", "top-left", "--transcript",
                              "t.txt", "--transcript-times", "wire", "--report", "r.json"},
                             exitCode);
  ASSERT_TRUE(options);
  EXPECT_EQ(options->picturePath, "p.svg");
  EXPECT_EQ(options->corner, HomeCorner::TopLeft);
  EXPECT_EQ(options->transcriptPath, "t.txt");
  EXPECT_EQ(options->transcriptTimes, TranscriptTimes::Wire);
  EXPECT_EQ(options->reportPath, "r.json");
  EXPECT_EQ(Parse({"--transcript-times", "off"}, exitCode)->transcriptTimes, TranscriptTimes::Off);
}

TEST(Options, AnswerEachErrorInOneLineWithCodeTwo) {
  constexpr struct {
    const char* option;
    const char* value;
    const char* want;
  } kCases[] = {
      {"--speed", "fast", "k7sim: --speed takes a factor above 0, or max\n"},
      {"--speed", "0", "k7sim: --speed takes a factor above 0, or max\n"},
      {"--table", "10,6", "k7sim: --table takes three lengths in inches above 0, as 25,16,2\n"},
      {"--table", "10,0,1", "k7sim: --table takes three lengths in inches above 0, as 25,16,2\n"},
      {"--travel", "1,2", "k7sim: --travel takes three lengths in inches, as 25.5,16.5,2.25\n"},
      {"--table-home", "1", "k7sim: --table-home takes two lengths in inches, as 0.5,0.5\n"},
      {"--position", "1,2,x", "k7sim: --position takes three lengths in inches, as 1,1,0.5\n"},
      {"--id", "two words", "k7sim: --id takes one word of up to 64 characters\n"},
      {"--switch", "w=1", "k7sim: --switch takes x, y, z or probe, then =1, =0 or =auto: w=1\n"},
      {"--surface", "plane:", "k7sim: surface: plane takes 1 number\n"},
      {"--fault", "match=G28", "k7sim: fault: needs a 'do': {\"match\":\"G28\"}\n"},
      {"--fault", "lin=1,do=drop",
       "k7sim: fault: unknown key 'lin' in {\"do\":\"drop\",\"lin\":1}; did you mean line?\n"},
      {"--fault", "line=1,do=dorp",
       "k7sim: fault: bad value for 'do' in {\"do\":\"dorp\",\"line\":1}; did you mean drop?\n"},
      {"--wire", "usbb", "k7sim: --wire: takes usb, uart or tcp, not 'usbb'; did you mean usb?\n"},
      {"--tool", "hammer", "k7sim: --tool: takes spindle or air, not 'hammer'\n"},
      {"--spede", "5", "k7sim: unknown option --spede; did you mean --speed? (--help lists all)\n"},
      {"--quux=1", "", "k7sim: unknown option --quux (--help lists all)\n"},
      {"word", "", "k7sim: unexpected word 'word'; each option starts with --\n"},
  };
  for (const auto& c : kCases) {
    int exitCode = 0;
    std::string message;
    EXPECT_FALSE(Parse({c.option, c.value}, exitCode, &message));
    EXPECT_EQ(exitCode, 2);
    EXPECT_EQ(message, c.want);
  }
  int exitCode = 0;
  std::string message;
  EXPECT_FALSE(Parse({"--bogus"}, exitCode, &message));
  EXPECT_EQ(exitCode, 2);
  EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1);
}

TEST(Options, OnlyOneFileGoesToStandardOutput) {
  int exitCode = 0;
  std::string message;
  EXPECT_TRUE(Parse({"--report", "-"}, exitCode));
  EXPECT_FALSE(Parse({"--report", "-", "--picture", "-"}, exitCode, &message));
  EXPECT_EQ(message, "k7sim: only one of --picture, --transcript and --report can be -\n");
}

TEST(Options, PrintTheVersion) {
  int exitCode = 9;
  testing::internal::CaptureStdout();
  EXPECT_FALSE(Parse({"--version"}, exitCode));
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              testing::MatchesRegex("k7sim [0-9]+\\.[0-9]+\\.[0-9]+\n"));
  EXPECT_EQ(exitCode, 0);
}

TEST(Options, HelpNamesEveryOption) {
  int exitCode = 9;
  testing::internal::CaptureStdout();
  EXPECT_FALSE(Parse({"--help"}, exitCode));
  const std::string help = testing::internal::GetCapturedStdout();
  EXPECT_EQ(exitCode, 0);
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
  for (const char* option : {"--pty PATH",
                             "--tcp PORT",
                             "--wire usb|uart|tcp",
                             "--baud BAUD",
                             "--speed FACTOR|max",
                             "--config FILE",
                             "--id ID",
                             "--table W,H,D",
                             "--table-home X,Y",
                             "--travel X,Y,Z",
                             "--surface WORK",
                             "--tool spindle|air",
                             "--position X,Y,Z",
                             "--homed",
                             "--hard-limits",
                             "--silent-zero-moves",
                             "--switch NAME=STATE",
                             "--version",
                             "--fault FAULT",
                             "--control PATH",
                             "--picture FILE.svg",
                             "--picture-home CORNER",
                             "--transcript FILE",
                             "--transcript-times machine|wire|off",
                             "--report FILE.json"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

}  // namespace
}  // namespace k7sim
