// k7host doctor and k7host settings against the real driver's files and the simulated machine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

constexpr char kId[] = "ENDTOENDDOCTOR01";

// Settings that every user may write, as a technician leaves them.
class Doctor : public testing::Test {
 protected:
  Doctor() { fs::permissions(SettingsFile(kId), fs::perms::all); }

  FreshController controller{kId, FullMachine(), FullTable()};
};

TEST_F(Doctor, AHealthyMachineIsOkInEveryLine) {
  // On a busy machine an answer can take longer than a healthy one does.
  HostRun run;
  for (int i = 0; i < 5 && run.exitCode != 0; ++i) run = RunHost({"doctor"});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_THAT(run.output, HasSubstr("ok    port COM7: opens\n"));
  EXPECT_THAT(run.output, ContainsRegex("ok    controller on COM7: answers after [0-9.]+ ms\n"));
  EXPECT_THAT(run.output, HasSubstr("ok    identity on COM7: " + std::string(kId) + "\n"));
  EXPECT_THAT(run.output, HasSubstr("ok    firmware on COM7: Build version: "));
  EXPECT_THAT(run.output, ContainsRegex("ok    latency on COM7: median [0-9.]+ ms, worst [0-9.]+ "
                                        "ms of 50\n"));
  EXPECT_THAT(run.output,
              HasSubstr("ok    settings of " + std::string(kId) + ": 17 keys, each makes sense\n"));
  EXPECT_THAT(run.output, ContainsRegex("doctor: [0-9]+ ok, 0 warnings, 0 failures\n$"));
  EXPECT_EQ(controller.Number("blocks"), 0);
}

TEST_F(Doctor, WritesNothing) {
  const fs::path folder = SettingsFile(kId).parent_path();
  const auto before = fs::last_write_time(SettingsFile(kId));
  const std::string bytes = ReadFile(SettingsFile(kId));
  RunHost({"doctor", "--json"});
  EXPECT_EQ(ReadFile(SettingsFile(kId)), bytes);
  EXPECT_EQ(fs::last_write_time(SettingsFile(kId)), before);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
  EXPECT_THAT(controller.Transcript(), Not(HasSubstr("M")));  // nothing but questions
}

// A file in the place of the port, because Wine hands a terminal that is in use to root all the
// same.
TEST(DoctorOfAPort, SaysThatAnotherProgramHasIt) {
  const fs::path file = Places::Get().prefix / "drive_c" / "held.txt";
  const fs::path port = Places::Get().prefix / "dosdevices" / "com9";
  fs::remove(port);
  fs::create_symlink(file, port);
  Process holder({"wine", "cmd", "/c", "pause > C:\\held.txt"}, Places::Get().windowsPrograms);
  EXPECT_TRUE(WaitFor([&] { return !ReadFile(file).empty(); }));
  const HostRun run = RunHost({"doctor", "--port", "COM9"});
  EXPECT_EQ(run.exitCode, 1) << run.output;
  EXPECT_THAT(run.output,
              HasSubstr("fail  port COM9: another program has it open; Windows does not "
                        "tell which -> end that program"));
  holder.WriteLine("");
  holder.Wait();
  fs::remove(port);
  fs::remove(file);
}

// Under Wine two that read may take each other's answers away.
TEST_F(Doctor, LeavesAPortAloneThatAnotherProgramMayHave) {
  Slots holder;
  ASSERT_EQ(holder.Ask("connect " + std::string(kId)), "connected");
  const HostRun run = RunHost({"doctor", "--port", "com7"});
  EXPECT_EQ(run.exitCode, 1) << run.output;
  EXPECT_THAT(run.output, ContainsRegex("fail  port COM7: not asked: the driver is loaded by "
                                        "k7_slots.exe .process [0-9]+.*-> end that program"));
  EXPECT_EQ(holder.Ask("release"), "released");
  EXPECT_EQ(holder.Quit(), 0);
}

TEST_F(Doctor, SaysWhatIsWrongWithTheSettings) {
  Settings settings = FullMachine();
  settings["Axis X/Screw Pitch"] = "0.5";
  WriteSettings(kId, settings);
  const HostRun run = RunHost({"doctor", "--port", "COM7"});
  EXPECT_EQ(run.exitCode, 2) << run.output;
  EXPECT_THAT(run.output, HasSubstr("fail  settings of " + std::string(kId) +
                                    ": [Axis X] Screw Pitch: \"0.5\" reads as 0 in a turn: decimal "
                                    "text where the bits of a float are due -> expected"));
  const HostRun home = RunHost({"home", "--id", kId});
  EXPECT_EQ(home.exitCode, 2);
  EXPECT_THAT(home.output, HasSubstr("[Axis X] Screw Pitch: \"0.5\" reads as 0 in a turn"));
  EXPECT_THAT(controller.Transcript(), Not(HasSubstr("G28")));
}

// Over a bare line, on which a board does not greet who opens it.
TEST(DoctorOfASilentMachine, SaysThatNothingAnswers) {
  FreshController controller{
      kId, FullMachine(),
      With(FullTable(), {"--wire", "uart", "--baud", "115200", "--fault", "line=1,do=silent"})};
  const HostRun run = RunHost({"doctor", "--port", "COM7"});
  EXPECT_EQ(run.exitCode, 1) << run.output;
  EXPECT_THAT(run.output, HasSubstr("fail  controller on COM7: nothing answers at 115200 baud"));
}

TEST(SettingsTool, APitchThatWasSetIsThatOfTheNextConnection) {
  FreshController controller{kId, FullMachine(), FullTable()};
  const HostRun set = RunHost({"settings", "set", "Axis X/Screw Pitch", "0.25", "--id", kId});
  EXPECT_EQ(set.exitCode, 0) << set.output;
  EXPECT_THAT(set.output,
              HasSubstr("Axis X/Screw Pitch: 0.5 in a turn (not in the file) -> 0.25 in "
                        "a turn\n"));
  EXPECT_EQ(ReadSettings(kId).at("Axis X/Screw Pitch"), "1048576000");
  EXPECT_THAT(RunHost({"info", "--id", kId}).output,
              HasSubstr("resolution: 8000.000 x 4000.000 x 4000.000 steps per inch\n"));
}

}  // namespace
}  // namespace k7test
