// The example hosts, each against the real driver and the simulated machine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr char kId[] = "ENDTOENDEXAMPLE1";

HostRun RunExample(const std::string& program, const std::vector<std::string>& arguments = {}) {
  std::vector<std::string> command = {"wine", program};
  command.insert(command.end(), arguments.begin(), arguments.end());
  Process process(command, Places::Get().windowsPrograms);
  process.CloseInput();
  HostRun run;
  run.output = process.ReadAll();
  run.exitCode = process.Wait(10);
  std::erase(run.output, '\r');
  return run;
}

// The four sides, in machine millimetres from the switches, with the signs of life between them.
constexpr char kSides[] =
    "G0 X76.199997\nSmoothieIsConnected\nG0 Y76.199997\nSmoothieIsConnected\n"
    "G0 X50.799999\nSmoothieIsConnected\nG0 Y50.799999\nSmoothieIsConnected\n";

void ExpectThreePassesOfTheSquare(Controller& controller) {
  EXPECT_EQ(controller.Number("errors.total"), 0);
  EXPECT_NEAR(controller.Number("cutInches"), 12.0, 0.001);
  EXPECT_NEAR(controller.Number("depthInches.shallowest"), 0.01, 0.0001);
  EXPECT_NEAR(controller.Number("depthInches.deepest"), 0.03, 0.0001);
  EXPECT_EQ(controller.Number("spindle.on"), 0);
  EXPECT_EQ(controller.Number("homed"), 1);
  EXPECT_THAT(controller.Transcript(), HasSubstr(kSides));
}

TEST(Examples, SquareHomesProbesAndCutsTheSquareInEachPass) {
  FreshController controller{kId, FullMachine(), FullTable()};
  const HostRun run = RunExample("k7_square.exe");
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_THAT(run.output,
              StartsWith("found " + std::string(kId) +
                         ", K7 System Controller\n"
                         "table 25.000 x 16.000 inches, 4000 x 4000 steps an inch, 3 passes\n"
                         "Pass 1 of 3 - 0.010\nPass 2 of 3 - 0.020\nPass 3 of 3 - 0.030\n"));
  EXPECT_THAT(run.output, EndsWith("done: 13 moves\n"));
  ExpectThreePassesOfTheSquare(controller);
}

TEST(Examples, SquareInCCutsTheSame) {
  FreshController controller{kId, FullMachine(), FullTable()};
  const HostRun run = RunExample("k7_square_c.exe");
  EXPECT_EQ(run.exitCode, 0) << run.output;
  // The first travel is answered "armed" and may have been no move at all.
  EXPECT_THAT(run.output, MatchesRegex("K7 System Controller: 4000 x 4000 steps an inch\n"
                                       "done: 1[34] moves\n"));
  ExpectThreePassesOfTheSquare(controller);
}

TEST(Examples, SquareAsksForTheManualCutterAndGoesOn) {
  Settings settings = EngraversSettings();
  settings["Engrave Settings/Cutter Mode"] = "1";
  FreshController controller{kId, settings, EngraversTable()};
  const HostRun run = RunExample("k7_square.exe", {kId});
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Set the cutter onto the work by hand, then press Enter.\n"));
  EXPECT_NEAR(controller.Number("cutInches"), 4.0, 0.001);
}

TEST(Examples, SquareSaysThatTheLinkWasLost) {
  FreshController controller{kId, EngraversSettings(), With(EngraversTable(), {"--speed", "0.5"})};
  Process square({"wine", "k7_square.exe", kId}, Places::Get().windowsPrograms);
  EXPECT_TRUE(controller.WaitForTranscript("> G0 X76.199997"));
  controller.Stop();
  EXPECT_THAT(square.ReadAll(), HasSubstr("The link was lost: home the machine"));
  EXPECT_EQ(square.Wait(10), 3);
}

}  // namespace
}  // namespace k7test
