// The commands of k7host that ask or move the machine once.
#include <gtest/gtest.h>

#include "host_program.h"

namespace k7test {
namespace {

using MachineCommands = Program;

TEST_F(MachineCommands, HomesOnlyAMachineThatCan) {
  Outcome run = Host("home");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: the machine did not home: it needs all four switches\n");
  Set("K7_FAKE_SWITCHES", "1");
  run = Host("home");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "position: 1.250 -0.500 inches\n");
}

TEST_F(MachineCommands, ShowsTheSwitches) {
  EXPECT_EQ(Host("switches").exitCode, 1u);
  Set("K7_FAKE_SWITCHES", "1");
  EXPECT_EQ(Host("switches").out, "switches: x=1 y=0 z=1 prox=0\n");
}

TEST_F(MachineCommands, JogsUntilTheDriverTellsItsEnd) {
  Outcome run = Host("jog --direction x- --key 37 --slow");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "position: 1.000 -0.500 inches\n");
  EXPECT_EQ(run.log, "Connect 0000000000000000\nStartJog(3,1,37)\nRelease\n");
  EXPECT_EQ(Host("jog --direction down").out, "z: 123 steps\n");
  run = Host("jog --direction up");
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: the jog was refused or stands at its limit\n");
  EXPECT_EQ(Host("jog").exitCode, 2u);  // no console to read keys from
}

TEST_F(MachineCommands, GoesToAPlaceOnTheTable) {
  const Outcome run = Host("goto 12.5 16");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "position: 1.250 -0.500 inches\n");
  EXPECT_NE(run.log.find("GoToAsJob(50000,64000,0)"), std::string::npos);
  EXPECT_EQ(Host("goto 25.001 1").err,
            "k7host: 25.001 1.000 is off the table of 25.000 x 16.000 inches\n");
}

TEST_F(MachineCommands, RunsTheSpindleOnlyWhileTheCommandRuns) {
  EXPECT_EQ(Host("spindle on --seconds 0.1").err, "k7host: the machine has no spindle\n");
  Set("K7_FAKE_SPINDLE", "1");
  Outcome run = Host("spindle full --seconds 0.1");
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.out, "spindle: 20000 rpm\nspindle: 0 rpm\n");
  EXPECT_EQ(Host("spindle on").exitCode, 2u);  // nobody could stop it
  run = Host("spindle ramp up --key 38");
  EXPECT_EQ(run.out, "spindle: 6000 rpm\nspindle: 7500 rpm\nspindle: 0 rpm\n");
  run = Host("spindle ramp down");
  EXPECT_EQ(run.exitCode, 1u);
  ForgetLog();
  run = Host("spindle off");
  EXPECT_EQ(run.log, "Connect 0000000000000000\nSendLine M43\n\nRelease\n");
}

TEST_F(MachineCommands, ShowsTheSettingsDialog) {
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

}  // namespace
}  // namespace k7test
