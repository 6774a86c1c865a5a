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
  EXPECT_EQ(run.out,
            "0\t0000000000000000\tMachine 0\t-\t-\n1\t0000000000000001\tMachine 1\t-\t-\n");
  EXPECT_EQ(run.log, "");
  EXPECT_EQ(run.err.substr(0, 24), "k7host: the search took ");
  EXPECT_EQ(Host("list --ports").out,
            "0\t0000000000000000\tMachine 0\tCOM7\tserial\n"
            "1\t0000000000000001\tMachine 1\tCOM7\tserial\n");
}

TEST_F(Program, ASearchCanBeEndedAtOnce) {
  ShareConsole();
  Set("K7_FAKE_HANG", "EnumerateControllers");
  for (const char* command : {"list", "home"}) {
    ForgetLog();
    const HANDLE process = Start(command);
    for (int i = 0; i < 1500 && Log().empty(); ++i) Sleep(20);
    Break();
    const Outcome run = Finish(process);
    EXPECT_EQ(run.exitCode, 1u);
    EXPECT_EQ(run.err, "k7host: the search was ended by the user\n");
  }
}

TEST_F(Program, NoControllerIsTheMachinesNo) {
  Set("K7_FAKE_COUNT", "0");
  for (const char* command : {"list", "home"}) {
    const Outcome run = Host(command);
    EXPECT_EQ(run.exitCode, 1u);
    EXPECT_NE(run.err.find("k7host: no controller found"), std::string::npos) << run.err;
    // Which ports there are is the system's.
    EXPECT_NE(run.err.find("COM"), std::string::npos) << run.err;
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

TEST_F(Program, AnotherProgramWithTheDriverIsNamedWhereNothingIsFound) {
  Set("K7_FAKE_COUNT", "0");
  EXPECT_EQ(Host("list").err.find("the driver loaded"), std::string::npos);
  const HMODULE driver = LoadLibraryW((folder_ / "k7driver.dll").c_str());
  ASSERT_NE(driver, nullptr);
  const std::string want = "(process " + std::to_string(GetCurrentProcessId()) +
                           ") has the driver loaded and may have the port: end it first";
  for (const char* command : {"list", "home"}) {
    const Outcome run = Host(command);
    EXPECT_NE(run.err.find(want), std::string::npos) << run.err;
  }
  FreeLibrary(driver);
}

TEST_F(Program, AControllerThatDoesNotAnswerIsTheMachinesNo) {
  Set("K7_FAKE_NO_CONNECT", "1");
  const Outcome run = Host("home");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err.substr(0, 70),
            "k7host: controller 0000000000000000 was not found or does not answer; ");
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

TEST_F(Program, SettingsThatMakeNoSenseAreNamed) {
  Set("K7_FAKE_RESOLUTION", "0");
  const std::string file = File("PD1016,0;");
  const std::string commands[] = {"engrave " + file, "estimate " + file, "goto 1 1", "home",
                                  "jog --direction x+"};
  for (const std::string& command : commands) {
    ForgetLog();
    const Outcome run = Host(command);
    EXPECT_EQ(run.exitCode, 2u) << command;
    EXPECT_EQ(
        run.err,
        "k7host: C:\\k7.ini: no resolution on X: in section [Axis X] \"Motor Steps\", \"Micro "
        "Steps\" and \"Screw Pitch\" must be above 0, the pitch as its float bits\n");
    EXPECT_EQ(run.log, "Connect 0000000000000000\nRelease\n");
  }
  EXPECT_NE(Host("info").out.find("resolution: 0.000 x 4000.000"), std::string::npos);
}

TEST_F(Program, AnIdentityThatCameTooLateIsAskedForAgain) {
  Set("K7_FAKE_UNSETTLED", "1");
  const Outcome run = Host("goto 1 1");
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_NE(run.log.find("GoToAsJob(4000,4000,0)"), std::string::npos);
}

TEST_F(Program, AUnixPathIsUnderstood) {
  const Outcome run = Host("engrave /no/such/file.plt");
  EXPECT_EQ(run.err,
            "k7host: cannot open /no/such/file.plt, nor Z:/no/such/file.plt, as Wine names a Unix "
            "file\n");
}

TEST_F(Program, TellsItsVersion) {
  const Outcome run = Host("--version");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out.substr(0, 7), "k7host ");
}

TEST_F(Program, HelpGoesToTheStandardOutput) {
  const Outcome run = Host("engrave --help");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_NE(run.out.find("Usage: k7host engrave"), std::string::npos);
  EXPECT_EQ(run.err, "");
}

}  // namespace
}  // namespace k7test
