// The replies to each line, with their exact texts and line ends.
#include "board/controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/simulator/support/board_bench.h"

namespace k7sim {
namespace {

using k7test::Bench;
using k7test::Lines;
using testing::ElementsAre;

TEST(Controller, AnswersTheLinesOfWords) {
  Bench bench;
  EXPECT_EQ(bench.Send("SmoothieIsConnected"), Lines{"SmoothieIsConnected\r\n"});
  EXPECT_EQ(bench.Send("TableIsHomed"), Lines{"TableIsHomedFALSE\r\n"});
  EXPECT_EQ(bench.Send("SetTableHomed"), Lines{});
  EXPECT_EQ(bench.Send("TableIsHomed"), Lines{"TableIsHomedTRUE\r\n"});
  EXPECT_EQ(bench.Send("SendBlockMessagesOn"), Lines{"SendBlockMessagesOn\r\n"});
  EXPECT_EQ(bench.Send("SendBlockMessagesOff"), Lines{"SendBlockMessagesOff\r\n"});
}

TEST(Controller, KeepsItsIdentity) {
  Bench bench;
  EXPECT_EQ(bench.Send("config-get sd controller_id"),
            Lines{"sd: controller_id is set to 0000000000000000\r\n"});
  EXPECT_EQ(bench.Send("config-set sd controller_id 0123456789ABCDEF"),
            Lines{"sd: controller_id is set to 0123456789ABCDEF\r\n"});
  EXPECT_EQ(bench.Send("config-get sd controller_id"),
            Lines{"sd: controller_id is set to 0123456789ABCDEF\r\n"});
}

TEST(Controller, FollowsEachGcodeLineWithAnOkOfEitherLineEnd) {
  Bench bench;
  for (const char* line : {"G21", "G90", "G0 F1524.000", "G92 X0 Y0 Z0"}) {
    EXPECT_EQ(bench.Send(line), Lines{"ok\n"}) << line;
  }
  for (const char* line :
       {"M17", "M18", "M42", "M43", "M44 S252", "M92 X157.48032", "M203 X30480 Y30480 Z30480",
        "M800 X5 Y2", "M106", "M107", "M400", "M999"}) {
    EXPECT_EQ(bench.Send(line), Lines{"ok\r\n"}) << line;
  }
}

TEST(Controller, HasNoOkForShellLines) {
  Bench bench;
  EXPECT_EQ(bench.Send("version").size(), 1u);
  EXPECT_EQ(bench.Send("frobnicate now"), Lines{"error:Unsupported command - frobnicate\r\n"});
  EXPECT_EQ(bench.board.Counts().unknownLines, 1u);
  EXPECT_LT(bench.Send(std::string(250, 'q'))[0].size(), 256u);
}

TEST(Controller, ReportsItsSwitchesInOneLine) {
  Bench bench;  // the head is at the switches, above the plate
  EXPECT_THAT(bench.Send("M119"),
              ElementsAre("min_x:1 min_y:1 min_z:1 pins- (XL)P1.24:1 (YL)P1.26:1 (ZL)P1.28:1 "
                          "Probe: 0\n",
                          "ok\r\n"));
  bench.board.Machine().ForceSwitch(0, SwitchForce::Open);
  bench.board.Machine().ForceProbe(SwitchForce::Closed);
  EXPECT_THAT(bench.Send("M119")[0], testing::HasSubstr("min_x:0 min_y:1 min_z:1"));
  EXPECT_THAT(bench.Send("M119")[0], testing::EndsWith("Probe: 1\n"));
}

TEST(Controller, ReportsItsPositionOnTheLineOfTheOk) {
  Bench bench;
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:0.0000 Y:0.0000 Z:0.0000\n"});
  bench.Send("G92 X1.5 Y-2 Z3");
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:1.5000 Y:-2.0000 Z:3.0000\n"});
}

TEST(Controller, AnnouncesEachBlockWhenItEntersBeginsAndEnds) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  bench.Send("G0 F3000");
  EXPECT_EQ(bench.Send("G0 X50.000000"), (Lines{"QX\r\n", "ok\n"}));
  EXPECT_EQ(bench.Send("G0 X100.000000"), (Lines{"QX\r\n", "ok\n"}));
  EXPECT_EQ(bench.PassAll(), (Lines{"BX\r\n", "EX\r\n", "BX\r\n", "EX\r\n"}));
  EXPECT_THAT(bench.times, ElementsAre(100'000, 1'150'000, 1'150'000, 2'200'000));
}

TEST(Controller, AnnouncesNothingWhileBlockMessagesAreOff) {
  Bench bench;
  EXPECT_EQ(bench.Send("G0 X50.000000"), Lines{"ok\n"});
  EXPECT_EQ(bench.PassAll(), Lines{});
  EXPECT_EQ(bench.board.Counts().blocks, 1u);
}

TEST(Controller, AMoveToWhereItIsBeginsAndEndsAtOnceAndMakesNoBlock) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  const Lines all = {"QX\r\n", "ok\n", "BX\r\n", "EX\r\n"};
  EXPECT_EQ(bench.Send("G0 X0.000000 Y0.000000"), all);
  EXPECT_EQ(bench.Send("G0 X0.001000"), all);  // less than half a step, at 80 steps a mm
  EXPECT_EQ(bench.PassAll(), Lines{});
  EXPECT_EQ(bench.board.Counts().blocks, 0u);
  EXPECT_EQ(bench.board.Record().MistakeTotal(), 0u);
  bench.Send("SendBlockMessagesOff");
  EXPECT_EQ(bench.Send("G0 X0.000000"), Lines{"ok\n"});
}

TEST(Controller, AMoveToWhereTheHeadWillBeIsAnnouncedWhenItsTurnComes) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  bench.Send("G0 F3000");
  bench.Send("G0 X50");
  EXPECT_EQ(bench.Send("G0 X50"), (Lines{"QX\r\n", "ok\n"}));
  EXPECT_EQ(bench.Send("G0 X100"), (Lines{"QX\r\n", "ok\n"}));
  EXPECT_EQ(bench.PassAll(), (Lines{"BX\r\n", "EX\r\n", "BX\r\n", "EX\r\n", "BX\r\n", "EX\r\n"}));
  // The one in the middle takes no time, and the others run through it without slowing down.
  EXPECT_THAT(bench.times,
              ElementsAre(100'000, 1'150'000, 1'150'000, 1'150'000, 1'150'000, 2'200'000));
}

TEST(Controller, AHaltFlushesMovesThatMoveNothingToo) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  bench.Send("G0 X50");
  bench.Send("G0 X50");
  bench.board.Halt(0);
  bench.Send("M999");
  EXPECT_EQ(bench.PassAll(), Lines{});
  EXPECT_EQ(bench.board.Counts().flushedLines, 2u);
}

TEST(Controller, ABoardOfTheOtherKindIsSilentAboutAMoveToWhereItIs) {
  MachineSetup setup;
  setup.silentZeroMoves = true;
  Bench bench(setup);
  bench.Send("SendBlockMessagesOn");
  EXPECT_EQ(bench.Send("G0 X0.000000 Y0.000000"), Lines{"ok\n"});
  EXPECT_EQ(bench.PassAll(), Lines{});
}

TEST(Controller, LetsAMoveWaitForRoomAndServesOtherLines) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  for (int i = 1; i <= 31; ++i) {
    EXPECT_EQ(bench.Send("G0 X" + std::to_string(i)), (Lines{"QX\r\n", "ok\n"}));
  }
  EXPECT_EQ(bench.Send("G0 X32"), Lines{});
  EXPECT_EQ(bench.board.WaitingLines(0), 1u);
  EXPECT_EQ(bench.board.WaitingBytes(0), 7u);
  EXPECT_EQ(bench.Send("SmoothieIsConnected"), Lines{"SmoothieIsConnected\r\n"});
  EXPECT_EQ(bench.Send("M42"), Lines{"ok\r\n"});
  EXPECT_EQ(bench.Send("G0 F60"), Lines{"ok\n"});
  EXPECT_EQ(bench.PassUntil(0), Lines{"BX\r\n"});  // the queue is full, so motion starts at once
  const TimeUs ends = bench.board.NextEvent();
  EXPECT_EQ(bench.PassUntil(ends), (Lines{"EX\r\n", "BX\r\n", "QX\r\n", "ok\n"}));
  EXPECT_EQ(bench.board.WaitingLines(0), 0u);
  EXPECT_EQ(bench.board.Counts().deepestQueue, 31u);
}

TEST(Controller, AWaitingMoveKeepsTheFeedItArrivedWith) {
  Bench bench;
  bench.Send("G0 F3000");
  for (int i = 1; i <= 31; ++i) bench.Send("G0 X" + std::to_string(i));
  bench.Send("G0 X131");
  bench.Send("G0 F60");
  bench.PassAll();
  // 131 mm at 50 mm/s in one line; with the later feed the last move alone would take 100 s.
  EXPECT_NEAR(SecondsFromUs(bench.now), 0.1 + 131 / 50.0, 0.01);
}

TEST(Controller, ClampsFeedsToTheMaximumOfEachAxis) {
  Bench bench;
  bench.Send("M203 X600 Y30480 Z30480");  // 10 mm/s
  bench.Send("G0 F6000");
  bench.Send("G0 X100");
  bench.PassAll();
  EXPECT_NEAR(SecondsFromUs(bench.now), 0.1 + 100 / 10.0 + 10 / 500.0, 1e-5);
  bench.Send("G0 Y100");
  const TimeUs start = bench.now;
  bench.PassAll();
  EXPECT_NEAR(SecondsFromUs(bench.now - start), 0.1 + 100 / 100.0 + 100 / 500.0, 1e-5);
}

TEST(Controller, ClampsASlantedMoveByTheShareOfEachAxis) {
  Bench bench;
  bench.Send("M203 X600 Y30480 Z30480");  // 10 mm/s
  bench.Send("G0 F6000");
  bench.Send("G0 X30 Y40");
  bench.PassAll();
  const double feed = 10 / 0.6;  // 30 of the 50 mm are along X
  EXPECT_NEAR(SecondsFromUs(bench.now), 0.1 + 50 / feed + feed / 500, 1e-5);
}

TEST(Controller, AnswersM400WhenAllMotionHasEnded) {
  Bench bench;
  bench.Send("G0 F3000");
  bench.Send("G0 X50");
  EXPECT_EQ(bench.Send("M400"), Lines{});
  EXPECT_EQ(bench.PassAll(), Lines{"ok\r\n"});
  EXPECT_EQ(bench.times, std::vector<TimeUs>{1'200'000});
}

TEST(Controller, RedefinesItsPositionOnceTheQueueIsEmpty) {
  Bench bench;
  bench.Send("G0 X50");
  EXPECT_EQ(bench.Send("G92 X0"), Lines{});
  EXPECT_EQ(bench.PassAll(), Lines{"ok\n"});
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:0.0000 Y:0.0000 Z:0.0000\n"});
  EXPECT_NEAR(bench.board.Machine().PlaceAt({0, 0, 0}).x, 50 / 25.4, 1e-9);
}

TEST(Controller, KnowsInchesAndRelativeMoves) {
  Bench bench;
  for (const char* line : {"G20", "G91", "G0 X1", "G0 X1 Y2", "G21", "G90"}) bench.Send(line);
  bench.PassAll();
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:50.8000 Y:50.8000 Z:0.0000\n"});
}

TEST(Controller, RefusesGcodeWhileHaltedUntilM999) {
  Bench bench;
  bench.board.Halt(0);
  EXPECT_EQ(bench.Send("G0 X1"), Lines{"!!\r\n"});
  EXPECT_EQ(bench.Send("M119"), Lines{"!!\r\n"});
  EXPECT_EQ(bench.Send("SmoothieIsConnected"), Lines{"SmoothieIsConnected\r\n"});
  EXPECT_EQ(bench.Send("M999"), Lines{"ok\r\n"});
  EXPECT_EQ(bench.Send("G0 X1"), Lines{"ok\n"});
}

TEST(Controller, AHaltStopsWhereTheHeadIsAndNeverAnswersWhatItFlushed) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  bench.Send("G0 F3000");
  for (int i = 1; i <= 33; ++i) bench.Send("G0 X" + std::to_string(100 * i));
  bench.Send("M400");
  bench.PassUntil(1'100'000);
  bench.board.Halt(bench.now);
  EXPECT_EQ(bench.PassSeconds(1000), Lines{});
  EXPECT_EQ(bench.board.Counts().flushedLines, 34u);
  bench.Send("M999");
  // The queue was full, so motion began at once: 2.5 mm in the 0.1 s of the ramp, then 50 mm in 1
  // s.
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:52.5000 Y:0.0000 Z:0.0000\n"});
  EXPECT_EQ(bench.Send("G0 X60"), (Lines{"QX\r\n", "ok\n"}));
}

TEST(Controller, AHaltSwitchesTheSpindleAndTheOutputOff) {
  Bench bench;
  bench.Send("M42");
  bench.Send("M106");
  bench.board.Halt(0);
  EXPECT_FALSE(bench.board.SpindleOn());
  EXPECT_FALSE(bench.board.OutputOn());
}

TEST(Controller, SurvivesFeedsAndPlacesThatNoMachineHas) {
  Bench bench;
  for (const char* line : {"G0 F0.0000001", "M92 X999999999", "G91", "G0 X999999999"}) {
    bench.Send(line);
  }
  for (int i = 0; i < 100; ++i) bench.Send("G0 X-999999999 Y999999999");
  bench.Send("G28 Y0");
  bench.Send("G4 S999999999");
  bench.PassAll();
  EXPECT_TRUE(bench.board.IsIdle());
}

TEST(Controller, AnswersLongWordsInLessThan256Bytes) {
  Bench bench;
  const std::string word(100, 'k');
  EXPECT_LT(bench.Send("config-set " + word + " " + word + " " + word)[0].size(), 256u);
  EXPECT_LT(bench.Send("config-get " + word + " " + word)[0].size(), 256u);
}

TEST(Controller, TurnsTheSpindleAndTheOutputOnAndOff) {
  Bench bench;
  bench.Send("M42");
  bench.Send("M44 S252");
  bench.Send("M106");
  EXPECT_TRUE(bench.board.SpindleOn());
  EXPECT_EQ(bench.board.SpindleLevel(), 252);
  EXPECT_TRUE(bench.board.OutputOn());
  bench.Send("M44 S999");
  EXPECT_EQ(bench.board.SpindleLevel(), 255);
  bench.Send("M43");
  bench.Send("M107");
  bench.Send("M18");
  EXPECT_FALSE(bench.board.SpindleOn());
  EXPECT_FALSE(bench.board.OutputOn());
  EXPECT_FALSE(bench.board.MotorsOn());
}

}  // namespace
}  // namespace k7sim
