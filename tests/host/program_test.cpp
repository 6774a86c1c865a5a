// k7host.exe as a program: which controller, what it prints, exit codes, help.
#include <gtest/gtest.h>

#include "host_program.h"

namespace k7test {
namespace {

TEST_F(Program, SaysInOneLineThatTheDriverIsMissing) {
  std::filesystem::remove(folder_ / "k7driver.dll");
  const Outcome run = Host("list");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "k7host: k7driver.dll is missing from " + folder_.string() + "\\\n");
}

TEST_F(Program, ListsControllers) {
  Set("K7_FAKE_COUNT", "2");
  const Outcome run = Host("list");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "0\t0000000000000000\tMachine 0\n1\t0000000000000001\tMachine 1\n");
}

TEST_F(Program, NoControllerIsTheMachinesNo) {
  Set("K7_FAKE_COUNT", "0");
  for (const char* command : {"list", "home"}) {
    const Outcome run = Host(command);
    EXPECT_EQ(run.exitCode, 1u);
    EXPECT_EQ(run.err, "k7host: no controller found\n");
  }
}

TEST_F(Program, SeveralControllersNeedAnId) {
  Set("K7_FAKE_COUNT", "2");
  const Outcome run = Host("home");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err,
            "k7host: several controllers found, choose one with --id: 0000000000000000 "
            "(Machine 0), 0000000000000001 (Machine 1)\n");
  EXPECT_EQ(run.log, "");
  EXPECT_EQ(Host("goto 1 1 --id 0000000000000001").log,
            "Connect 0000000000000001\nGoToAsJob(4000,4000,0)\nRelease\n");
}

TEST_F(Program, AControllerThatDoesNotAnswerIsTheMachinesNo) {
  Set("K7_FAKE_NO_CONNECT", "1");
  const Outcome run = Host("home");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: controller 0000000000000000 was not found or does not answer\n");
}

TEST_F(Program, ShowsTheMachine) {
  const Outcome run = Host("info");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out,
            "id: 0000000000000000\nname: Fr\xc3\xa4se\nport: \\\\.\\COM7\nlink: serial\n"
            "table: 25.000 x 16.000 inches\n"
            "resolution: 4000.000 x 4000.000 x 4000.000 steps per inch\npasses: 1\n"
            "location: 1.250 -0.500 inches\nfitted: nothing\nsettings: C:\\k7.ini\n");
}

TEST_F(Program, WrongUsageIsExitCodeTwo) {
  const Outcome run = Host("goto 1");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err.substr(0, 8), "k7host: ");
  EXPECT_EQ(run.log, "");
}

TEST_F(Program, HelpGoesToTheStandardOutput) {
  const Outcome run = Host("engrave --help");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_NE(run.out.find("Usage: k7host engrave"), std::string::npos);
  EXPECT_EQ(run.err, "");
}

}  // namespace
}  // namespace k7test
