// k7host.exe as a program: exit codes, what it prints and what it asks of the driver. A recording
// driver stands in for k7driver.dll, in a folder of its own beside a copy of the program.
#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace k7test {
namespace {

namespace fs = std::filesystem;

struct Outcome {
  DWORD exitCode = 0;
  std::string out;
  std::string err;
  std::string log;  // the driver's
};

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::erase(text, '\r');
  return text;
}

fs::path BinFolder() {
  wchar_t path[1024] = {};
  GetModuleFileNameW(nullptr, path, 1024);
  return fs::path(path).parent_path();
}

class Program : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = BinFolder() / "host_program_test" /
              (std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    fs::create_directories(folder_);
    fs::copy_file(BinFolder() / "k7host.exe", folder_ / "k7host.exe");
    fs::copy_file(BinFolder() / "host_fake" / "k7driver.dll", folder_ / "k7driver.dll");
    Set("K7_FAKE_LOG", (folder_ / "log.txt").string());
  }

  void TearDown() override {
    for (const auto& [name, value] : set_) SetEnvironmentVariableA(name.c_str(), nullptr);
  }

  void Set(const std::string& name, const std::string& value) {
    set_[name] = value;
    SetEnvironmentVariableA(name.c_str(), value.c_str());
  }

  std::string File(const std::string& text) {
    std::ofstream(folder_ / "a.plt", std::ios::binary) << text;
    return "a.plt";
  }

  // Starts k7host; its outputs go to files, its input is empty.
  HANDLE Start(const std::string& arguments) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = Open(L"NUL", GENERIC_READ, OPEN_EXISTING, inherit);
    startup.hStdOutput = Open(folder_ / "out.txt", GENERIC_WRITE, CREATE_ALWAYS, inherit);
    startup.hStdError = Open(folder_ / "err.txt", GENERIC_WRITE, CREATE_ALWAYS, inherit);
    std::wstring line = L"k7host.exe " + std::wstring(arguments.begin(), arguments.end());
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(CreateProcessW((folder_ / "k7host.exe").c_str(), line.data(), nullptr, nullptr,
                               TRUE, CREATE_NEW_PROCESS_GROUP, nullptr, folder_.c_str(), &startup,
                               &process));
    CloseHandle(process.hThread);
    CloseHandle(startup.hStdInput);
    CloseHandle(startup.hStdOutput);
    CloseHandle(startup.hStdError);
    processId_ = process.dwProcessId;
    return process.hProcess;
  }

  Outcome Finish(HANDLE process) {
    Outcome run;
    EXPECT_EQ(WaitForSingleObject(process, 60000), WAIT_OBJECT_0);
    GetExitCodeProcess(process, &run.exitCode);
    if (run.exitCode == STILL_ACTIVE) TerminateProcess(process, 99);
    CloseHandle(process);
    run.out = ReadAll(folder_ / "out.txt");
    run.err = ReadAll(folder_ / "err.txt");
    run.log = ReadAll(folder_ / "log.txt");
    return run;
  }

  Outcome Host(const std::string& arguments) { return Finish(Start(arguments)); }

  // A request to stop travels through a console that both share; there may be none yet.
  static void ShareConsole() {
    const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    if (console != INVALID_HANDLE_VALUE) {
      CloseHandle(console);
      return;
    }
    FreeConsole();
    EXPECT_TRUE(AllocConsole());
  }

  // Asks the program to stop as the console does: with Ctrl-Break, or where the platform knows
  // none, with Ctrl-C.
  void Break() {
    EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, processId_) ||
                GenerateConsoleCtrlEvent(CTRL_C_EVENT, processId_));
  }

  fs::path folder_;
  DWORD processId_ = 0;

 private:
  static HANDLE Open(const fs::path& path, DWORD access, DWORD how, SECURITY_ATTRIBUTES& inherit) {
    return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit, how, 0,
                       nullptr);
  }

  std::map<std::string, std::string> set_;
};

TEST_F(Program, SaysInOneLineThatTheDriverIsMissing) {
  fs::remove(folder_ / "k7driver.dll");
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

TEST_F(Program, EngravesAPlotterFile) {
  const Outcome run = Host("engrave " + File("IN;SP1;PU1016,1016;PD2032,1016;PU;"));
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.log,
            "Connect 0000000000000000\nEstimateJobTime(2)\nSetGridMode(0)\nBeginJob\n"
            "StartPass(1,4000,4000)\nMoveTo(4000,4000)\nEngraveTo(8000,4000)\nMoveTo(0,0)\n"
            "EndJob\nSetGridMode(0)\nRelease\n");
  EXPECT_EQ(run.out,
            "job: strokes 1, dots 0, cuts 1, passes 1, X 1.000 to 2.000, Y 1.000 to 1.000 inches\n"
            "estimate: 61 s (0:01:01)\npass: Pass 1 of 1 - 0.063\n"
            "progress: [##########..........]  50%  strokes 0/1  queue  0  left 0:00:31\n"
            "progress: [####################] 100%  strokes 1/1  queue  0  left 0:00:00\n"
            "done: strokes 1/1, moves 2/2, passes 1, elapsed 0:00:00\n");
}

TEST_F(Program, ABadFileMovesNothing) {
  const Outcome run = Host("engrave " + File("IN;\nPU1,2;PD3;\n"));
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err, "a.plt:2:9: X coordinate without a Y\n");
  EXPECT_EQ(run.log, "");
  EXPECT_EQ(Host("engrave nowhere.plt").err, "k7host: cannot open nowhere.plt\n");
}

TEST_F(Program, ADrawingOffTheTableMovesNothing) {
  const Outcome run = Host("engrave " + File("PU0,0;PD26000,0;"));
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err,
            "k7host: a.plt: the drawing does not fit the table: it spans X 0.000 to 25.591, Y "
            "0.000 to 0.000 inches, the table is 25.000 x 16.000\n");
  EXPECT_EQ(run.log, "Connect 0000000000000000\nRelease\n");
}

TEST_F(Program, PassesAreThoseOfTheSettingsOrFewer) {
  Set("K7_FAKE_PASSES", "3");
  const std::string file = File("PD1016,0;");
  EXPECT_NE(Host("engrave " + file).out.find("pass: Pass 3 of 3"), std::string::npos);
  const Outcome two = Host("engrave --passes 2 " + file);
  EXPECT_EQ(two.exitCode, 0u);
  EXPECT_NE(two.out.find("pass: Pass 2 of 3"), std::string::npos);
  EXPECT_EQ(two.out.find("pass: Pass 3 of 3"), std::string::npos);
  const Outcome four = Host("engrave --passes 4 " + file);
  EXPECT_EQ(four.exitCode, 2u);
  EXPECT_EQ(four.err,
            "k7host: --passes 4: the engrave settings make 3; set more in the settings dialog\n");
}

TEST_F(Program, StatusesOfTheDriverAreAnswered) {
  const std::string file = File("PU1016,0;PD2032,0;");
  Set("K7_FAKE_MOVE", "4");
  Set("K7_FAKE_ENGRAVE", "3");
  Outcome run = Host("engrave " + file);  // armed, probed, issued again
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_NE(run.log.find("EngraveTo(8000,0)\nEngraveTo(8000,0)\nMoveTo(0,0)\nEndJob"),
            std::string::npos);
  Set("K7_FAKE_MOVE", "2");
  Set("K7_FAKE_ENGRAVE", "");
  run = Host("engrave " + file);  // manual cutter, nobody there to set it
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_NE(run.out.find("cutter: manual, kept as it is\n"), std::string::npos);
  Set("K7_FAKE_MOVE", "");
  Set("K7_FAKE_ENGRAVE", "9");
  run = Host("engrave " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: stopped: the stroke would cut into the table\n");
  Set("K7_FAKE_BEGIN", "0");
  run = Host("engrave " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err,
            "k7host: the machine refused to begin the job: its proximity switch is closed\n");
}

TEST_F(Program, ABrailleRunTakesDotsOnly) {
  const Outcome run = Host("engrave --braille-drill " + File("PD1016,0;"));
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err, "k7host: a.plt: a braille run takes dots only, the drawing has 1 strokes\n");
  const Outcome good = Host("engrave --braille-drill " + File("PU1016,0;PD;"));
  EXPECT_EQ(good.exitCode, 0u);
  EXPECT_NE(good.log.find("SetGridMode(2)\nBeginJob\nStartPass(1,4000,0)\nMoveTo(4000,0)\n"
                          "LowerCutter\n"),
            std::string::npos);
  EXPECT_EQ(Host("engrave --braille-bead a.plt").err,
            "k7host: the machine has no bead insert tool\n");
}

TEST_F(Program, StoppingLiftsTheCutterAndEndsTheJob) {
  ShareConsole();
  Set("K7_FAKE_HOLD", "1");  // the machine takes lines and never begins: the host waits
  std::string drawing = "PU0,1016;PD";
  for (int i = 1; i <= 50; ++i) drawing += (i == 1 ? "" : ",") + std::to_string(i * 10) + ",1016";
  const HANDLE process = Start("engrave " + File(drawing));
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (ReadAll(folder_ / "log.txt").find("EngraveTo(1220,4000)") == std::string::npos &&
         std::chrono::steady_clock::now() < deadline) {
    Sleep(20);
  }
  Break();
  const Outcome run = Finish(process);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: stopped by the user\n");
  EXPECT_NE(run.log.find("EngraveTo(1220,4000)\nMoveTo(1219,4000)\nEndJob\nSetGridMode(0)\n"
                         "Release\n"),
            std::string::npos)
      << run.log;
  EXPECT_NE(run.out.find("stopped: strokes 0/1, moves 0/51, passes 1"), std::string::npos);
}

TEST_F(Program, HomesOnlyAMachineThatCan) {
  Outcome run = Host("home");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: the machine did not home: it needs all four switches\n");
  Set("K7_FAKE_SWITCHES", "1");
  run = Host("home");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "position: 1.250 -0.500\n");
}

TEST_F(Program, ABatchJobHomesToo) {
  Set("K7_FAKE_SWITCHES", "1");
  const Outcome run = Host("engrave --batch --home " + File("PD1016,0;"));
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_LT(run.log.find("HomeTable\n"), run.log.find("Window(0)\n"));
  EXPECT_LT(run.log.find("Window(0)\n"), run.log.find("BeginJob\n"));
}

TEST_F(Program, ShowsTheSwitches) {
  EXPECT_EQ(Host("switches").exitCode, 1u);
  Set("K7_FAKE_SWITCHES", "1");
  EXPECT_EQ(Host("switches").out, "switches: x=1 y=0 z=1 prox=0\n");
}

TEST_F(Program, JogsUntilTheDriverTellsItsEnd) {
  Outcome run = Host("jog --direction x- --key 37 --slow");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "position: 1.000 -0.500\n");
  EXPECT_EQ(run.log, "Connect 0000000000000000\nStartJog(3,1,37)\nRelease\n");
  EXPECT_EQ(Host("jog --direction down").out, "z: 123\n");
  run = Host("jog --direction up");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: the jog was refused or stands at its limit\n");
  EXPECT_EQ(Host("jog").exitCode, 2u);  // no console to read keys from
}

TEST_F(Program, GoesToAPlaceOnTheTable) {
  const Outcome run = Host("goto 12.5 16");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "position: 1.250 -0.500\n");
  EXPECT_NE(run.log.find("GoToAsJob(50000,64000,0)"), std::string::npos);
  EXPECT_EQ(Host("goto 25.001 1").err,
            "k7host: 25.001 1.000 is off the table of 25.000 x 16.000 inches\n");
}

TEST_F(Program, RunsTheSpindleOnlyWhileTheCommandRuns) {
  EXPECT_EQ(Host("spindle on --seconds 0.1").err, "k7host: the machine has no spindle\n");
  Set("K7_FAKE_SPINDLE", "1");
  Outcome run = Host("spindle full --seconds 0.1");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "spindle: 20000\nspindle: 0\n");
  EXPECT_EQ(Host("spindle on").exitCode, 2u);  // nobody could stop it
  run = Host("spindle ramp up --key 38");
  EXPECT_EQ(run.out, "spindle: 6000\nspindle: 7500\nspindle: 0\n");
  run = Host("spindle ramp down");
  EXPECT_EQ(run.exitCode, 1u);
  fs::remove(folder_ / "log.txt");
  run = Host("spindle off");
  EXPECT_EQ(run.log, "Connect 0000000000000000\nSendLine M43\n\nRelease\n");
}

TEST_F(Program, ShowsTheSettingsDialog) {
  EXPECT_EQ(Host("settings --before-job --read-only").out, "settings: cancelled\n");
  Set("K7_FAKE_SETTINGS", "1");
  EXPECT_EQ(Host("setup").out, "settings: run job\n");
  Set("K7_FAKE_SETTINGS", "101");
  const Outcome run = Host("settings");
  EXPECT_EQ(run.out, "settings: applied\n");
  EXPECT_EQ(run.log,
            "Connect 0000000000000000\nShowSettingsDialog(1,1,0,1)\nRelease\n"
            "Connect 0000000000000000\nShowSettingsDialog(1,0,1,1)\nRelease\n"
            "Connect 0000000000000000\nShowSettingsDialog(1,0,1,1)\nRelease\n");
}

TEST_F(Program, EngravesAfterTheDialogOnlyWhenItSaysRun) {
  const std::string file = File("PD1016,0;");
  const Outcome run = Host("engrave --settings " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.log.find("BeginJob"), std::string::npos);
  Set("K7_FAKE_SETTINGS", "1");
  EXPECT_EQ(Host("engrave --settings " + file).exitCode, 0u);
}

TEST_F(Program, EstimatesWithoutMoving) {
  const Outcome run = Host("estimate " + File("PU1016,1016;PD2032,1016;PU;"));
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.log, "Connect 0000000000000000\nEstimateJobTime(2)\nRelease\n");
  EXPECT_EQ(run.out,
            "job: strokes 1, dots 0, cuts 1, passes 1, X 1.000 to 2.000, Y 1.000 to 1.000 inches\n"
            "estimate: 61 s (0:01:01)\n");
}

}  // namespace
}  // namespace k7test
