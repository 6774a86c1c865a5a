// k7host settings as a program, and the replacing of a file that a death in the middle leaves
// whole.
#include "settings/replace_file.h"

#include <gtest/gtest.h>
#include <shlobj.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "host_program.h"

namespace k7test {
namespace {

namespace fs = std::filesystem;

std::string Bytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void Write(const fs::path& path, const std::string& bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

constexpr char kDieAt[] = "K7_TEST_DIE_AT";
constexpr char kFile[] = "K7_TEST_FILE";
constexpr DWORD kDied = 77;
const std::string kOld(5000, 'o');
const std::string kNew(9000, 'n');

// Replaces the file and dies at a step: run by the test below in a process of its own.
TEST(FileReplacing, DISABLED_DiesInTheMiddle) {
  static int dieAt = 0;
  dieAt = std::atoi(std::getenv(kDieAt));
  k7host::ReplaceFileInOneStep(fs::path(std::getenv(kFile)).wstring(), kNew,
                               [](k7host::ReplaceStep step) {
                                 if (static_cast<int>(step) == dieAt) {
                                   TerminateProcess(GetCurrentProcess(), kDied);
                                 }
                               });
}

TEST(FileReplacing, ADeathBetweenTwoStepsLeavesTheOldFileOrTheNewOne) {
  wchar_t program[1024] = {};
  GetModuleFileNameW(nullptr, program, 1024);
  const fs::path file = fs::path(program).parent_path() / "replace_file_test" / "a.ini";
  for (int step = 0; step < 4; ++step) {
    Write(file, kOld);
    SetEnvironmentVariableA(kDieAt, std::to_string(step).c_str());
    SetEnvironmentVariableA(kFile, file.string().c_str());
    std::wstring line =
        L"test --gtest_also_run_disabled_tests --gtest_filter=FileReplacing.DISABLED_*";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    // The other process has one test and shares it with nobody.
    SetEnvironmentVariableA("GTEST_TOTAL_SHARDS", nullptr);
    SetEnvironmentVariableA("GTEST_SHARD_INDEX", nullptr);
    ASSERT_TRUE(CreateProcessW(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &startup, &process));
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 60000), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    EXPECT_EQ(code, kDied) << step;
    const bool replaced = step == static_cast<int>(k7host::ReplaceStep::Replaced);
    EXPECT_EQ(Bytes(file), replaced ? kNew : kOld) << step;
    // What the dead process has left is no hindrance.
    EXPECT_EQ(k7host::ReplaceFileInOneStep(file.wstring(), "x"), "");
    EXPECT_EQ(Bytes(file), "x");
    EXPECT_FALSE(fs::exists(file.string() + ".new"));
  }
  EXPECT_NE(k7host::ReplaceFileInOneStep(file.wstring() + L"\\no\\folder", "x"), "");
}

using SettingsCommands = Program;

TEST_F(SettingsCommands, SetChangesOneKeyAndKeepsTheFileAsItWas) {
  const std::string before = "; by hand\n[Axis X]\nScrew Pitch=1056964608\nOwn=1\n";
  Write(folder_ / "a.ini", before);
  Outcome run = Host("settings set \"Axis X/Screw Pitch\" 0.25 --file a.ini");
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_EQ(run.out, "backup: a.ini.bak\nAxis X/Screw Pitch: 0.5 in a turn -> 0.25 in a turn\n");
  EXPECT_EQ(Bytes(folder_ / "a.ini"), "; by hand\n[Axis X]\nScrew Pitch=1048576000\nOwn=1\n");
  EXPECT_EQ(Bytes(folder_ / "a.ini.bak"), before);
  EXPECT_EQ(Host("settings get \"axis x/screw pitch\" --file a.ini").out,
            "Axis X/Screw Pitch: 0.25 in a turn\n");
  run = Host("settings set \"Axis X/Skrew Pitch\" 1 --file a.ini");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_NE(run.err.find("the nearest: \"Axis X/Screw Pitch\""), std::string::npos) << run.err;
  run = Host("settings set \"Axis X/Screw Pitch\" 0 --file a.ini");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err,
            "k7host: Axis X/Screw Pitch: '0' makes no sense; expected 0.001 to 10 in a turn\n");
  EXPECT_EQ(Bytes(folder_ / "a.ini.bak"), before);
}

TEST_F(SettingsCommands, ExportAndImportGiveTheSameSettings) {
  Write(folder_ / "a.ini", "[Axis X]\r\nScrew Pitch=1036831949\r\nMotor Steps=400\r\n");
  EXPECT_EQ(Host("settings export a.json --file a.ini").exitCode, 0u);
  EXPECT_EQ(Host("settings import a.json --file b.ini").exitCode, 0u);
  EXPECT_EQ(Host("settings diff .\\a.ini .\\b.ini").out, "same\n");
  Write(folder_ / "a.json", "{}");
  const Outcome run = Host("settings import a.json --file b.ini");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err.find("k7host: a.json: is no export of settings"), 0u) << run.err;
  EXPECT_EQ(Host("settings show --file nowhere.ini").err,
            "k7host: there is no settings file nowhere.ini\n");
}

// The controllers' folder of this computer, with the files of one controller in it.
class ControllerFiles : public Program {
 protected:
  void SetUp() override {
    Program::SetUp();
    wchar_t common[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_DEFAULT, common);
    all_ = fs::path(common) / "Penfold Hatch" / "Veltrana" / "Controllers";
    fs::remove_all(all_);
  }
  void TearDown() override {
    fs::remove_all(all_);
    Program::TearDown();
  }

  fs::path all_;
};

TEST_F(ControllerFiles, BackupAndRestoreTakeTheMaterialsWithThem) {
  Write(all_ / "AB.ini", "[Axis X]\r\nMotor Steps=400\r\n");
  Write(all_ / "AB" / "Material Library" / "Oak.ini", "[Engrave Settings]\r\n");
  Outcome run = Host("settings backup kept");
  EXPECT_EQ(run.out, "Material Library/Oak.ini\nsettings.ini\nbackup: AB to kept\n") << run.err;
  EXPECT_EQ(Host("settings backup kept").exitCode, 2u);  // never over another one
  Write(all_ / "AB.ini", "[Axis X]\r\nMotor Steps=1\r\n");
  fs::remove_all(all_ / "AB");
  run = Host("settings restore kept");
  EXPECT_EQ(run.out, "Material Library/Oak.ini\nsettings.ini\nrestored: kept to AB\n") << run.err;
  EXPECT_EQ(Bytes(all_ / "AB.ini"), "[Axis X]\r\nMotor Steps=400\r\n");
  EXPECT_EQ(Bytes(all_ / "AB.ini.bak"), "[Axis X]\r\nMotor Steps=1\r\n");
  EXPECT_TRUE(fs::exists(all_ / "AB" / "Material Library" / "Oak.ini"));
  EXPECT_EQ(Host("settings restore kept --id CD").exitCode, 0u);
  EXPECT_TRUE(fs::exists(all_ / "CD" / "Material Library" / "Oak.ini"));

  Write(folder_ / "kept" / "settings.ini", "cut sh");
  run = Host("settings restore kept");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_NE(run.err.find("is not what was backed up; nothing was restored"), std::string::npos)
      << run.err;
}

TEST_F(ControllerFiles, NothingIsMovedWithSettingsThatMakeNoSense) {
  Write(all_ / "0000000000000000.ini", "[Axis X]\r\nScrew Pitch=0.5\r\nMotor Steps=0\r\n");
  for (const std::string command : {"home", "goto 1 1", "jog --direction up", "engrave a.plt"}) {
    File("PU;PA0,0;PD;PA10,10;PU;");
    const Outcome run = Host(command);
    EXPECT_EQ(run.exitCode, 2u) << command;
    EXPECT_NE(
        run.err.find("0000000000000000.ini: [Axis X] Motor Steps: is 0 steps a turn; expected "
                     "1 to 10000 steps a turn (and 1 more: k7host doctor"),
        std::string::npos)
        << run.err;
    EXPECT_EQ(run.log, "") << command;
  }
  EXPECT_EQ(Host("info").exitCode, 0u);  // looking and mending stay possible
  EXPECT_EQ(Host("dialog").out, "settings: cancelled\n");
}

}  // namespace
}  // namespace k7test
