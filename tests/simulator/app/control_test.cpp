#include "app/control.h"

#include <gtest/gtest.h>

#include <string>

namespace k7sim {
namespace {

struct Running {
  ControlResult Do(std::string_view line) { return RunControlLine(line, simulator, 0, message); }
  Transcript transcript;
  Simulator simulator{SimulatorSetup{}, transcript};
  std::string message;
};

TEST(Control, WorksTheMachineByHand) {
  Running running;
  Mechanics& machine = running.simulator.Board().Machine();
  EXPECT_EQ(running.Do("position 1,2,0.5"), ControlResult::Done);
  EXPECT_NEAR(machine.PlaceAt({0, 0, 0}).y, 2, 1e-9);
  EXPECT_FALSE(machine.SwitchClosed(0, {0, 0, 0}));
  EXPECT_EQ(running.Do("switch x 1\r"), ControlResult::Done);
  EXPECT_TRUE(machine.SwitchClosed(0, {0, 0, 0}));
  running.Do("switch x auto");
  EXPECT_FALSE(machine.SwitchClosed(0, {0, 0, 0}));
  running.Do("switch probe 1");
  EXPECT_TRUE(machine.ProbeClosed({0, 0, 0}));
  running.Do("homed 1");
  EXPECT_TRUE(running.simulator.Board().IsHomed());
  running.Do("surface plane:0.25");
  EXPECT_EQ(machine.PlateSurface().DepthAt(1, 1), 0.25);
  running.Do("halt");
  EXPECT_TRUE(running.simulator.Board().IsHalted());
  running.Do("resume");
  EXPECT_FALSE(running.simulator.Board().IsHalted());
  running.Do("close 100");
  EXPECT_EQ(running.simulator.TakeCloseRequests().size(), 1u);
  EXPECT_EQ(running.Do("report"), ControlResult::WriteFiles);
  EXPECT_EQ(running.Do("quit"), ControlResult::Quit);
  EXPECT_EQ(running.Do("help"), ControlResult::Done);
  EXPECT_EQ(running.message, ControlHelp());
}

TEST(Control, ListsEachCommandInTheHelp) {
  EXPECT_TRUE(ControlHelp().starts_with(
      "switch x|y|z|probe 1|0|auto   hold a switch closed or open, or let it follow the head\n"
      "position X,Y,Z                move the head by hand, inches from the switches\n"));
  for (const ControlCommand& command : ControlCommands()) {
    EXPECT_NE(("\n" + ControlHelp()).find("\n" + std::string(command.verb) + " "),
              std::string::npos);
  }
}

TEST(Control, RefusesWhatItDoesNotKnow) {
  for (const char* line : {"dance", "switch", "switch q 1", "switch x 2", "position 1,2",
                           "homed maybe", "surface plane:", "fault do=drop"}) {
    Running running;
    EXPECT_EQ(running.Do(line), ControlResult::Bad) << line;
    EXPECT_FALSE(running.message.empty());
  }
  Running running;
  running.Do("hlat");
  EXPECT_EQ(running.message, "unknown command 'hlat'; did you mean halt? (help lists all)");
  EXPECT_EQ(running.Do(""), ControlResult::Done);
}

}  // namespace
}  // namespace k7sim
