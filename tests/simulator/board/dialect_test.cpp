// The firmware's general dialect, as senders of G-code files speak it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/simulator/support/board_bench.h"
#include "tests/simulator/support/rig.h"

namespace k7sim {
namespace {

using k7test::Bench;
using k7test::Lines;
using k7test::Rig;
using testing::HasSubstr;

constexpr const char* kOk = "ok\n";

TEST(Dialect, TakesNumberedLinesWithChecksums) {
  Bench bench;
  EXPECT_EQ(bench.Send("N-1 M110*15"), Lines{"ok\r\n"});
  EXPECT_EQ(bench.Send("N0 G21*26"), Lines{kOk});
  EXPECT_EQ(bench.Send("N1 G1 X5*100"), Lines{kOk});
  EXPECT_EQ(bench.Send("N2 G90"), Lines{kOk});  // a number needs no checksum
  EXPECT_EQ(bench.Send("G91"), Lines{kOk});     // and a line no number
  EXPECT_EQ(bench.Send("N3 M17*22"), Lines{"ok\r\n"});
  bench.PassAll();
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:5.0000 Y:0.0000 Z:0.0000\n"});
}

TEST(Dialect, AsksForALineAgainThatIsNotTheNextOrNotIntact) {
  Bench bench;
  bench.Send("M110 N7");
  EXPECT_EQ(bench.Send("N8 G1 X5*1"), Lines{"rs N8\r\n"});
  EXPECT_EQ(bench.Send("N9 G1 X5"), Lines{"rs N8\r\n"});
  EXPECT_EQ(bench.Send("N7 G1 X5"), Lines{"rs N8\r\n"});
  EXPECT_EQ(bench.Send("N8 G1 X5*109"), Lines{kOk});
  EXPECT_EQ(bench.Send("N9 G1 X6"), Lines{kOk});
  EXPECT_EQ(bench.board.Counts().resends, 3u);
  EXPECT_EQ(bench.Send("N99 M110*1"), Lines{"rs N10\r\n"});
}

TEST(Dialect, AnswersOneOkALine) {
  Bench bench;
  EXPECT_EQ(bench.Send("G21 G90 G17"), Lines{kOk});
  EXPECT_EQ(bench.Send("G0 X1 M42"), Lines{kOk});
  EXPECT_EQ(bench.Send("T1"), Lines{"ok\r\n"});
  for (const char* remark : {"; text", "(text)", "%"}) {
    EXPECT_EQ(bench.Send(remark), Lines{kOk}) << remark;
  }
  bench.board.Halt(0);
  EXPECT_EQ(bench.Send("G21 G90"), Lines{"!!\r\n"});
}

TEST(Dialect, GoesOnWithTheLastMotion) {
  Bench bench;
  for (const char* line : {"G1 X1 F600", "X2 Y3", "G90 X4", "G0 G91 Y2", "F1200", "Z1"}) {
    EXPECT_EQ(bench.Send(line), Lines{kOk}) << line;
  }
  bench.PassAll();
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:4.0000 Y:5.0000 Z:1.0000\n"});
}

TEST(Dialect, TellsWhoItIs) {
  Bench bench;
  EXPECT_EQ(bench.Send("M105"), Lines{"ok T:0.0 /0.0 @0\n"});
  EXPECT_THAT(bench.Send("M115")[0], testing::StartsWith("FIRMWARE_NAME:k7sim, FIRMWARE_VERSION:"));
  EXPECT_EQ(bench.replies[1], "ok\r\n");
  EXPECT_EQ(bench.Send("$G"),
            (Lines{"[GC:G0 G54 G17 G21 G90 G94 M0 M5 M9 T0 F4000.0000 S0]\n", kOk}));
  EXPECT_EQ(bench.Send("$#").size(), 7u);
  EXPECT_EQ(bench.Send("$Q"), Lines{"error:Unsupported command - $Q\r\n"});
}

TEST(Dialect, KnowsWorkOffsets) {
  Bench bench;
  for (const char* line : {"G10 L2 P2 X10 Y20", "G55", "G0 X1 Y2"}) {
    EXPECT_EQ(bench.Send(line), Lines{kOk}) << line;
  }
  bench.PassAll();
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:1.0000 Y:2.0000 Z:0.0000\n"});
  EXPECT_THAT(bench.board.StatusReport(bench.now),
              HasSubstr("MPos:11.0000,22.0000,0.0000|WPos:1.0000,2.0000,0.0000"));
  bench.Send("G53 G0 X3");
  bench.Send("G10 L20 P1 Y0");  // the place where the head will be
  bench.Send("G54");
  bench.PassAll();
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:3.0000 Y:0.0000 Z:0.0000\n"});
  bench.Send("G55");
  bench.Send("G92 X0 Y0");
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:0.0000 Y:0.0000 Z:0.0000\n"});
}

TEST(Dialect, LeavesCommandsWithASubcodeAlone) {
  Bench bench;
  bench.Send("G0 X5");
  bench.PassAll();
  for (const char* line : {"G92.1", "G28.1", "G38.2 Z5"}) EXPECT_EQ(bench.Send(line), Lines{kOk});
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:5.0000 Y:0.0000 Z:0.0000\n"});
}

TEST(Dialect, CutsAnArcIntoShortChords) {
  MachineSetup setup;
  setup.homed = true;
  setup.surface = Surface(1);
  Bench bench(setup);
  for (const char* line : {"M3", "G0 X100 Y100", "G0 Z26", "G2 X110 Y100 I5 J0", "G3 X110 Y100 I5",
                           "G2 X120 R5", "G18 G2 X110 Z26 R-5"}) {
    EXPECT_THAT(bench.Send(line), testing::Each(testing::AnyOf(kOk, "ok\r\n"))) << line;
    bench.PassAll();
  }
  const double mm = std::numbers::pi * 5 + 2 * std::numbers::pi * 5 + std::numbers::pi * 5;
  // The last arc hangs upright, into the plate: along it, it is as long as its shadow.
  EXPECT_NEAR(bench.board.Record().CutInches() * 25.4, mm + 10, 0.2);
  for (const Stroke& stroke : bench.board.Record().Strokes()) {
    if (stroke.depth > 0 && stroke.x1 < 110 / 25.4) {
      const double radius = std::hypot(stroke.x1 - 105 / 25.4, stroke.y1 - 100 / 25.4) * 25.4;
      EXPECT_NEAR(radius, 5, 0.001);
    }
  }
  EXPECT_EQ(bench.Send("M114"), Lines{"ok C: X:110.0000 Y:100.0000 Z:26.0000\n"});
  EXPECT_NEAR(bench.board.Record().DeepestInches(), 31 / 25.4 - 1, 0.001);
  EXPECT_EQ(bench.board.Record().CutStrokes(), 4u);
}

TEST(Dialect, AnnouncesAnArcOnceAndLetsItWaitForRoom) {
  Bench bench;
  bench.Send("SendBlockMessagesOn");
  EXPECT_EQ(bench.Send("G2 X40 Y0 I20 J0"), Lines{"QX\r\n"});  // more chords than there is room for
  EXPECT_EQ(bench.board.WaitingLines(0), 1u);
  EXPECT_EQ(bench.PassAll(), (Lines{"BX\r\n", kOk, "EX\r\n"}));
  EXPECT_GT(bench.board.Counts().blocks, 40u);
  EXPECT_EQ(bench.board.Record().MistakeCount(Mistake::MoveBeforeHoming), 1u);
}

TEST(Dialect, SurvivesArcsThatAreNone) {
  Bench bench;
  for (const char* line : {"G2 X10", "G2 X10 Y10 I0 J0", "G3 I999999999 J999999999 X5",
                           "G2 X20 R0.001", "G2 X20 R5", "G3 K1 X1"}) {
    bench.Send(line);
    bench.PassAll();
  }
  EXPECT_TRUE(bench.board.IsIdle());
}

TEST(RealTime, AQuestionMarkTellsStateAndPlaceAtOnce) {
  SimulatorSetup setup;
  setup.machine.homed = true;
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  const auto status = [&](const char* bytes) {
    const std::string text = rig.Send(bytes);
    return text.substr(0, text.find('|'));
  };
  EXPECT_EQ(rig.Send("?"),
            "<Idle|MPos:0.0000,0.0000,0.0000|WPos:0.0000,0.0000,0.0000|"
            "F:4000.0,100.0>\n");
  EXPECT_EQ(rig.Send("G0 F30?00\nG0 X100\n"),
            "<Idle|MPos:0.0000,0.0000,0.0000|WPos:0.0000,0.0000,0.0000|F:4000.0,100.0>\nok\nok\n");
  rig.TakeAt(1.15);
  EXPECT_EQ(rig.Send("?"),
            "<Run|MPos:50.0000,0.0000,0.0000|WPos:50.0000,0.0000,0.0000|"
            "F:3000.0,4000.0,100.0>\n");
  EXPECT_EQ(status("!?"), "<Hold");
  rig.TakeAt(100);
  EXPECT_THAT(rig.Send("?"), testing::StartsWith("<Hold|MPos:50.0000,"));
  EXPECT_EQ(status("~?"), "<Run");
  rig.TakeAt(100.5);
  EXPECT_THAT(rig.Send("?"), testing::StartsWith("<Run|MPos:75.0000,"));
  EXPECT_EQ(status("\x18?"), "<Alarm");
  EXPECT_EQ(rig.Send("G21\n$X\nG21\n"), "!!\r\n[Caution: Unlocked]\nok\nok\n");
  rig.Send("G28 X0\n");
  EXPECT_EQ(status("?"), "<Home");
}

TEST(RealTime, WhatComesDuringAHoldWaits) {
  Rig rig(WireKind::Uart);
  rig.Open();
  EXPECT_EQ(rig.Send("!SendBlockMessagesOn\nG0 X5\nG28 X0\n"), "SendBlockMessagesOn\r\nQX\r\nok\n");
  EXPECT_EQ(rig.TakeAt(10), "");
  EXPECT_EQ(rig.Send("~"), "BX\r\n");
  EXPECT_EQ(rig.TakeAt(30), "EX\r\nX_Limit 400\r\nok\n");
}

}  // namespace
}  // namespace k7sim
