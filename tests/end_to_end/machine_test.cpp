// The daily work at the machine: homing, probing, passes, jogging, ramps, and releasing in the
// middle of all of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kId[] = "ENDTOENDMACHINE1";

TEST(Machine, HomesProbesEngravesThreePassesAndGoesHomeTwiceTheSame) {
  for (int run = 0; run < 2; ++run) {
    ConnectedMachine machine(kId, FullMachine(), FullTable());
    auto& [controller, slots] = machine;
    EXPECT_EQ(slots.Ask("home"), "0");
    EXPECT_EQ(slots.Ask("passes"), "3");
    EXPECT_EQ(slots.Ask("begin"), "1");
    EXPECT_EQ(slots.Ask("pass 1 4000 4000"), "Pass 1 of 3 - 0.010");
    EXPECT_EQ(slots.Ask("move 4000 4000"), "4");     // armed
    EXPECT_EQ(slots.Ask("engrave 8000 4000"), "3");  // probed, cutter up
    for (int pass = 1; pass <= 3; ++pass) {
      if (pass > 1) {
        EXPECT_THAT(slots.Ask("pass " + std::to_string(pass) + " 4000 4000"),
                    StartsWith("Pass " + std::to_string(pass) + " of 3 - 0.0"));
      }
      EXPECT_EQ(slots.Ask("engrave 8000 4000"), "1");
      EXPECT_EQ(slots.Ask("engrave 8000 8000"), "1");
      EXPECT_EQ(slots.Ask("engrave 4000 4000"), "1");
    }
    EXPECT_EQ(slots.Ask("end"), "done");
    // The cutter is still in the work, and the go-to asks for the switches: it judges by the answer
    // before, unless this one is faster, as it can be on a busy machine.
    controller.Control("switch probe 0");
    controller.Control("send probe forced");
    ASSERT_TRUE(controller.WaitForTranscript("probe forced"));
    EXPECT_EQ(slots.Ask("goto-as-job 0 0 0"), "done");
    EXPECT_EQ(slots.Ask("release"), "released");
    ExpectGolden("machine.txt", controller.Transcript());
    EXPECT_EQ(controller.Number("homed"), 1);
    EXPECT_EQ(controller.Number("spindle.on"), 0);
    EXPECT_NEAR(controller.Number("depthInches.deepest"), 0.03, 0.0006);
    EXPECT_NEAR(controller.Number("positionInches.x"), -1.0, 0.001);
    EXPECT_EQ(controller.Number("errors.total"), 0) << controller.Report();
  }
}

TEST(Machine, TellsItsSwitchesLive) {
  ConnectedMachine machine(kId, FullMachine(), FullTable());
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("switches"), "0 0 0 0");
  controller.Control("switch y 1");
  // The answer of the query before may be the one that is taken: ask until the new state shows.
  EXPECT_TRUE(WaitFor([&] { return slots.Ask("switches") == "0 1 0 0"; }));
}

TEST(Machine, AJogHeldForASecondMovesInStepsAndStops) {
  ConnectedMachine machine(kId, FullMachine(), With(FullTable(), {"--speed", "1"}));
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("jog 2 1 1000"), "ended");  // X plus, slow
  EXPECT_EQ(slots.Ask("release"), "released");
  const std::string transcript = controller.Transcript();
  EXPECT_THAT(transcript, HasSubstr("G0 F381.000\nM119\nM106\nSendBlockMessagesOn\n"
                                    "G0 X0.127000\nG0 X0.254000\n"));
  EXPECT_THAT(transcript, HasSubstr("SendBlockMessagesOff\nM107\n"));
  EXPECT_GE(controller.Number("blocks"), 2);
  const Settings after = ReadSettings(kId);
  EXPECT_GT(std::stoi(after.at("Current Location/X Axis")), 0);
  EXPECT_EQ(std::stoi(after.at("Current Location/X Axis")) % 20, 0);  // steps of 0.005 inch
  EXPECT_EQ(after.at("Current Location/Y Axis"), "0");
  EXPECT_EQ(after.at("Current Location/Z Axis"), "0");
}

TEST(Machine, ARampRaisesTheSpindleAndKeepsTheSpeed) {
  Settings settings = FullMachine();
  settings["Spindle/Ramp Time"] = "2";
  settings["Spindle/Spindle RPM"] = "2000";
  ConnectedMachine machine(kId, settings, FullTable());
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("ramp 0 10"), "refused");  // the spindle is off
  EXPECT_EQ(slots.Ask("spindle 1"), "2000");
  const std::string answer = slots.Ask("ramp 0 6000");
  ASSERT_THAT(answer, StartsWith("reached "));
  const int reached = std::stoi(answer.substr(8));
  EXPECT_GE(reached, 12975);  // the first speed of level 252
  EXPECT_LE(reached, 13000);
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_THAT(controller.Transcript(), HasSubstr("M44 S252\n"));
  EXPECT_EQ(ReadSettings(kId).at("Spindle/Spindle RPM"), std::to_string(reached));
}

Settings RoundMachine(int mode) {
  Settings settings = FullMachine();
  settings["Axis Round/Has Round Attachment"] = "1";
  settings["Axis Round/Mode"] = std::to_string(mode);
  settings["Axis Round/Circumference"] = "2D";
  settings["Current Location/X Axis"] = "6000";
  settings["Current Location/Y Axis"] = "5000";
  settings["Current Location/R Axis"] = "1234";
  return settings;
}

// A round fixture in place of X: asking for the location switches it off and on again.
TEST(Machine, ARoundFixtureIsSwitchedOffAndOnAgainWithoutLosingTheLinearPosition) {
  const Settings settings = RoundMachine(1);
  ConnectedMachine machine(kId, settings, FullTable());
  auto& [controller, slots] = machine;
  // 6000 steps less a home of one inch, at the 4000 steps per inch of the screw.
  EXPECT_THAT(slots.Ask("location-round"), StartsWith("500 250 "));
  EXPECT_EQ(slots.Ask("release"), "released");
  ExpectGolden("round_fixture.txt", controller.Transcript());
  Settings expected = settings;
  expected["Current Location/R Axis"] = "0";  // the fixture counts as just mounted at each connect
  EXPECT_EQ(ReadSettings(kId), expected);
}

// The fixture put on and taken off again in the settings dialog, over one axis or over both: the
// file is as it was but for the mode, key by key, after every step and at the end.
TEST(Machine, TheRoundFixtureChosenInTheDialogAndTakenOffAgainLeavesEveryOtherSettingAsItWas) {
  const Settings settings = RoundMachine(0);
  ConnectedMachine machine(kId, settings, FullTable());
  auto& [controller, slots] = machine;
  Slots desk;
  desk.Ask("dialog-enabled 2");  // it has found its display by then
  const auto choose = [&](int mode) {
    // The dialog closes at its first look when the last sign of life is older than two seconds, as
    // it may be here on a busy machine.
    ASSERT_TRUE(WaitFor([&] { return slots.Ask("alive") == "1"; }));
    slots.Tell("settings 0 1");
    ASSERT_EQ(desk.Ask("dialog-wait K7 System Controller"), "open");
    EXPECT_EQ(desk.Ask("dialog-choose 1172 " + std::to_string(mode)), std::to_string(mode));
    EXPECT_EQ(desk.Ask("dialog-press 1059"), "closed");
    EXPECT_EQ(slots.Answer(), "101");  // applied
  };
  choose(0);
  const Settings before = ReadSettings(kId);  // with the keys that the dialog writes
  for (const int mode : {1, 0, 1, 2, 0}) {
    choose(mode);
    Settings expected = before;
    expected["Axis Round/Mode"] = std::to_string(mode);
    EXPECT_EQ(ReadSettings(kId), expected) << mode;
  }
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(ReadSettings(kId), before);
  // The axes as mapped one after the other; an opening dialog sends the present mapping again.
  std::string mappings, last;
  std::istringstream lines(controller.Transcript());
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("M800", 0) != 0 || line == last) continue;
    last = line;
    mappings += line.substr(4);
  }
  EXPECT_EQ(mappings, " X1 Y2 X5 Y2 X1 Y2 X5 Y2 X1 Y5 X1 Y2");
}

TEST(Release, InTheMiddleOfAJogStopsItAndReturns) {
  ConnectedMachine machine(kId, FullMachine(), With(FullTable(), {"--speed", "1"}));
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("jog-start 2 1"), "started");
  EXPECT_EQ(slots.Ask("wait-position"), "reported");
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
  EXPECT_THAT(controller.Transcript(), HasSubstr("SendBlockMessagesOff\nM107\nM18\n"));
}

TEST(Release, InTheMiddleOfARampStopsItAndReturns) {
  ConnectedMachine machine(kId, FullMachine(), FullTable());
  auto& [controller, slots] = machine;
  slots.Ask("spindle 1");
  EXPECT_EQ(slots.Ask("ramp-start 1"), "1");
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
}

// The jog's own job never begins because the controller has fallen silent: nothing would ever end
// that wait but the release.
TEST(Release, InTheMiddleOfAWaitThatNeverEndsByItselfReturns) {
  ConnectedMachine machine(
      kId, FullMachine(),
      With(FullTable(), {"--fault", "match=SendBlockMessagesOn,do=ignore,count=0"}));
  auto& [controller, slots] = machine;
  EXPECT_EQ(slots.Ask("jog-start 2 1"), "started");
  ASSERT_TRUE(controller.WaitForTranscript("> SendBlockMessagesOn"));
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
}

}  // namespace
}  // namespace k7test
