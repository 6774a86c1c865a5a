// What each fault does to the lines and replies of a board, as its host sees it.
#include "faults/faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "app/report.h"
#include "tests/simulator/support/rig.h"

namespace k7sim {
namespace {

using k7test::Rig;
using k7test::WithFault;

struct FaultCase {
  const char* fault;
  const char* lines;
  const char* at0;
  const char* atHalfSecond;
};

class FaultOnReplies : public testing::TestWithParam<FaultCase> {};

TEST_P(FaultOnReplies, ChangesWhatTheHostSees) {
  Rig rig(WireKind::Uart, WithFault(GetParam().fault));
  rig.Open();
  EXPECT_EQ(rig.Send(GetParam().lines), GetParam().at0);
  EXPECT_EQ(rig.TakeAt(0.5), GetParam().atHalfSecond);
  EXPECT_TRUE(rig.simulator.FaultsOf().AllFired());
}

INSTANTIATE_TEST_SUITE_P(
    Each, FaultOnReplies,
    testing::Values(FaultCase{"line=2,do=ignore", "G21\nM119\nG90\n", "ok\nok\n", ""},
                    FaultCase{"match=G90,do=drop", "G21\nG90\nM17\n", "ok\nok\r\n", ""},
                    FaultCase{"match=Smoothie,nth=2,do=withhold",
                              "SmoothieIsConnected\nSmoothieIsConnected\nG21\n",
                              "SmoothieIsConnected\r\nok\n", ""},
                    FaultCase{"reply=Table,do=delay,ms=200", "TableIsHomed\nG21\n", "ok\n",
                              "TableIsHomedFALSE\r\n"},
                    FaultCase{"match=G21,do=duplicate", "G21\n", "ok\nok\n", ""},
                    FaultCase{"reply=ok,nth=2,do=corrupt", "G21\nG90\n", "ok\n?k\n", ""},
                    FaultCase{"match=TableIsHomed,do=fragment,ms=100", "TableIsHomed\nG21\n",
                              "TableIsHom", "edFALSE\r\nok\n"},
                    FaultCase{"line=1,do=inject,text=ALARM: Hard limit +X\\n", "G21\n",
                              "ALARM: Hard limit +X\nok\n", ""},
                    FaultCase{"reply=ok,do=inject,text=Done printing file\\r\\n", "G21\n",
                              "ok\nDone printing file\r\n", ""},
                    FaultCase{"atMs=100,do=inject,text=// NOTICE\\n", "G21\n", "ok\n",
                              "// NOTICE\n"},
                    FaultCase{"line=2,do=halt", "G21\nG90\nM17\n",
                              "ok\nALARM: Hard limit +X\n!!\r\n!!\r\n", ""},
                    FaultCase{"match=G90,do=silent", "G21\nG90\nM17\n", "ok\n", ""},
                    FaultCase{"match=G90,do=half-open", "G21\nG90\nM17\n", "ok\n", ""},
                    FaultCase{"match=G90,do=half-open,ms=300", "G21\nG90\nM17\n", "ok\n", "ok\r\n"},
                    FaultCase{"match=G90,do=slow-drain,rate=100", "G90\nTableIsHomed\nM17\n",
                              "ok\n", "TableIsHomedFALSE\r\nok\r\n"},
                    FaultCase{"match=M17,do=reboot", "SetTableHomed\nM17\nTableIsHomed\n",
                              "Smoothie\r\nok\r\nTableIsHomedFALSE\r\n", ""},
                    FaultCase{"match=G90,do=reboot,ms=100,text=Booting\\r\\n",
                              "G21\nG90\nTableIsHomed\n", "ok\n", "Booting\r\n"},
                    FaultCase{"match=HomedX,do=garble", "TableHomedX\n",
                              "error:Unsupported command - TableIomedX\r\n", ""},
                    FaultCase{"reply=Table,do=noise,bytes=3,seed=7", "TableIsHomed\nG21\n",
                              "TableIsHomedFALSE\r\n'g\xdaok\n", ""},
                    FaultCase{"reply=ok,count=0,do=drop", "G21\nG90\nTableIsHomed\n",
                              "TableIsHomedFALSE\r\n", ""}));

struct TimedFault {
  const char* action;
  const char* seen;      // replies to the lines sent when the time has come
  const char* seenThen;  // replies until half a second later
};

void PrintTo(const TimedFault& fault, std::ostream* out) {
  *out << fault.action;
}

class FaultAtATime : public testing::TestWithParam<TimedFault> {};

TEST_P(FaultAtATime, ActsOnWhatComesFromThenOn) {
  Rig rig(WireKind::Uart, WithFault(("atMs=100," + std::string(GetParam().action)).c_str()));
  rig.Open();
  EXPECT_EQ(rig.Send("TableIsHomed\nG21\n"), "TableIsHomedFALSE\r\nok\n");
  EXPECT_FALSE(rig.simulator.FaultsOf().AllFired());
  rig.now = 100'000;
  EXPECT_EQ(rig.Send("TableIsHomed\nG21\n"), GetParam().seen);
  EXPECT_EQ(rig.TakeAt(0.6), GetParam().seenThen);
  EXPECT_TRUE(rig.simulator.FaultsOf().AllFired());
  EXPECT_EQ(rig.simulator.NextDue(rig.now), kNever);
}

INSTANTIATE_TEST_SUITE_P(
    Each, FaultAtATime,
    testing::Values(
        TimedFault{"do=ignore", "ok\n", ""}, TimedFault{"do=drop", "ok\n", ""},
        TimedFault{"do=withhold", "ok\n", ""},
        TimedFault{"do=corrupt", "?ableIsHomedFALSE\r\nok\n", ""},
        TimedFault{"do=duplicate", "TableIsHomedFALSE\r\nTableIsHomedFALSE\r\nok\n", ""},
        TimedFault{"do=delay,ms=200", "ok\n", "TableIsHomedFALSE\r\n"},
        TimedFault{"do=fragment,ms=200", "TableIsHom", "edFALSE\r\nok\n"},
        TimedFault{"nth=2,do=drop", "TableIsHomedFALSE\r\n", ""},
        TimedFault{"count=0,do=drop", "", ""},
        TimedFault{"do=inject,text=Done printing file\\r\\n",
                   "Done printing file\r\nTableIsHomedFALSE\r\nok\n", ""},
        TimedFault{"do=halt", "ALARM: Hard limit +X\nTableIsHomedFALSE\r\n!!\r\n", ""},
        TimedFault{"do=silent", "", ""}, TimedFault{"do=close", "", ""},
        TimedFault{"do=half-open", "", ""},
        TimedFault{"do=reboot,ms=200", "", "Smoothie\r\nok\r\n"},
        TimedFault{"do=slow-drain,rate=40", "", "TableIsHomedFALSE\r\nok\n"},
        TimedFault{"do=garble", "error:Unsupported command - TableIrHomed\r\nok\n", ""}));

TEST(Faults, OneThatWaitsForAReplyDoesNotKeepTheServerAwake) {
  Rig rig(WireKind::Uart, WithFault("atMs=0,do=drop"));
  rig.Open();
  rig.Take();
  EXPECT_EQ(rig.simulator.NextDue(rig.now), kNever);
}

TEST(Faults, AWithheldReplyTakesTheLateOnesOfItsLineWithIt) {
  Rig rig(WireKind::Uart, WithFault("reply=QX,do=withhold"));
  rig.Open();
  EXPECT_EQ(rig.Send("SendBlockMessagesOn\nG0 X1\nG0 X2\n"), "SendBlockMessagesOn\r\nQX\r\nok\n");
  EXPECT_EQ(rig.TakeAt(60), "BX\r\nEX\r\n");
}

// A drop or a corruption is of one reply to a line; the other faults act on all replies to it.
TEST(Faults, ALineWithSeveralRepliesLosesItsFirstAlone) {
  constexpr struct {
    const char* fault;
    const char* at0;
    const char* then;
  } kCases[] = {
      {"match=G0,do=drop", "ok\n", "BX\r\nEX\r\n"},
      {"match=G0,do=corrupt", "?X\r\nok\n", "BX\r\nEX\r\n"},
      {"match=G0,do=duplicate", "QX\r\nQX\r\nok\nok\n", "BX\r\nBX\r\nEX\r\nEX\r\n"},
      {"match=G0,do=withhold", "", ""},
  };
  for (const auto& c : kCases) {
    Rig rig(WireKind::Uart, WithFault(c.fault));
    rig.Open();
    rig.Send("SendBlockMessagesOn\n");
    EXPECT_EQ(rig.Send("G0 X1\n"), c.at0) << c.fault;
    EXPECT_EQ(rig.TakeAt(60), c.then) << c.fault;
  }
}

TEST(Faults, AWithheldHomingOrProbeKeepsItsLateRepliesToo) {
  for (const char* line : {"G28 Z0\n", "G30 F12.700\n"}) {
    Rig rig(WireKind::Uart, WithFault("match=G,do=withhold"));
    rig.Open();
    rig.Send(line);
    EXPECT_EQ(rig.TakeAt(30), "") << line;
    EXPECT_TRUE(rig.simulator.Board().IsIdle());
    EXPECT_EQ(rig.simulator.FaultsOf().Outcomes()[0].fired, 2u);
  }
}

TEST(Faults, CanHitTheThirdEndOfABlockAlone) {
  Rig rig(WireKind::Uart, WithFault("reply=EX,nth=3,do=drop"));
  rig.Open();
  rig.Send("SendBlockMessagesOn\nG0 X1\nG0 X2\nG0 X3\nG0 X4\n");
  const std::string replies = rig.TakeAt(60);
  EXPECT_EQ(replies, "BX\r\nEX\r\nBX\r\nEX\r\nBX\r\nBX\r\nEX\r\n");
}

TEST(Faults, SilenceForAWhileEnds) {
  Rig rig(WireKind::Uart, WithFault("line=1,do=silent,ms=300"));
  rig.Open();
  EXPECT_EQ(rig.Send("G21\n"), "");
  rig.TakeAt(0.4);
  EXPECT_EQ(rig.Send("G21\n"), "ok\n");
}

TEST(Faults, AHalfOpenLinkLeavesTheBytesOfTheHostUnread) {
  Rig rig(WireKind::Uart, WithFault("line=2,do=half-open,ms=300"));
  rig.Open();
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.link));
  rig.Send("G21\nG90\nTableIsHomed\n");
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.link));
  EXPECT_EQ(rig.simulator.NextDue(rig.now), 300'000);
  // The line that began it is lost; the one after it was not read, and is there.
  EXPECT_EQ(rig.TakeAt(0.3), "TableIsHomedFALSE\r\n");
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.link));
}

TEST(Faults, ABoardThatReadsSlowlyIsReadAtItsRateAndInSmallPieces) {
  Rig rig(WireKind::Usb, WithFault("atMs=0,do=slow-drain,rate=100,ms=1000"));
  rig.Open();
  EXPECT_EQ(rig.Take(), "Smoothie\r\nok\r\n");
  EXPECT_EQ(rig.simulator.ReadLimit(), 16u);
  EXPECT_EQ(rig.Send("M17\nM17\nM17\n"), "");
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.link));
  EXPECT_EQ(rig.TakeAt(0.039), "");
  EXPECT_EQ(rig.TakeAt(0.081), "ok\r\nok\r\n");
  EXPECT_EQ(rig.TakeAt(0.121), "ok\r\n");
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.link));
  rig.TakeAt(1);
  EXPECT_EQ(rig.simulator.ReadLimit(), 4096u);
  EXPECT_EQ(rig.Send("M17\n"), "ok\r\n");
}

TEST(Faults, ARestartInMidJobLosesTheQueueAndAllThatWasSet) {
  Rig rig(WireKind::Uart, WithFault("match=M44,do=reboot,ms=100"));
  rig.Open();
  rig.Send("SetTableHomed\nM106\nSendBlockMessagesOn\nM42\nG91\nG0 F3000\nG0 X50\nG0 X50\n");
  EXPECT_EQ(rig.TakeAt(0.6), "BX\r\n");
  EXPECT_EQ(rig.Send("M44 S100\nG0 X1\nG0"), "");
  EXPECT_EQ(rig.TakeAt(0.7), "Smoothie\r\nok\r\n");
  const Controller& board = rig.simulator.Board();
  EXPECT_TRUE(board.IsIdle());
  EXPECT_FALSE(board.IsHomed());
  EXPECT_FALSE(board.SpindleOn());
  EXPECT_FALSE(board.OutputOn());
  EXPECT_FALSE(board.BlockMessages());
  EXPECT_EQ(board.Counts().flushedLines, 2u);
  EXPECT_EQ(board.Counts().restarts, 1u);
  EXPECT_FALSE(rig.simulator.Board().Jobs().Records()[0].ended);
  // It has moved for 0.5 s, 0.1 s of them on the ramp, and takes where it stands for its origin.
  EXPECT_NEAR(board.Machine().PlaceAt({0, 0, 0}).x, 22.5 / 25.4, 1e-6);
  EXPECT_EQ(rig.Send("M114\nG0 X10\n"), "ok C: X:0.0000 Y:0.0000 Z:0.0000\nok\n");
  EXPECT_EQ(rig.TakeAt(60), "");
}

TEST(Faults, TheSameSeedMakesTheSameNoise) {
  const auto noise = [](const char* fault) {
    Rig rig(WireKind::Uart, WithFault(fault));
    rig.Open();
    return rig.Send("G21\nG21\n");
  };
  const std::string one = noise("reply=ok,count=0,do=noise,seed=5");
  EXPECT_EQ(one, noise("reply=ok,count=0,do=noise,seed=5"));
  EXPECT_NE(one, noise("reply=ok,count=0,do=noise,seed=6"));
  EXPECT_EQ(one.size(), 2 * (3u + 8u));
  EXPECT_NE(one.substr(3, 8), one.substr(14, 8));
}

TEST(Faults, CloseAsksTheServerOnce) {
  Rig rig(WireKind::Uart, WithFault("line=1,do=close,ms=250"));
  rig.Open();
  rig.Send("G21\n");
  const auto requests = rig.simulator.TakeCloseRequests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].reopenUs, 250'000);
  EXPECT_TRUE(rig.simulator.TakeCloseRequests().empty());
}

TEST(Faults, OneThatNeverFiredShowsInTheReport) {
  Rig rig(WireKind::Uart, WithFault("match=G30,do=drop"));
  rig.Open();
  rig.Send("G21\n");
  const std::string report = WriteReport(rig.simulator);
  EXPECT_THAT(report, testing::HasSubstr("\"fired\": 0"));
  EXPECT_THAT(report, testing::HasSubstr("\"allFaultsFired\": false"));
  rig.Send("G30 F9000\n");
  rig.TakeAt(10);
  EXPECT_THAT(WriteReport(rig.simulator), testing::HasSubstr("\"allFaultsFired\": true"));
}

TEST(Faults, AFaultThatSetsItselfOffEnds) {
  Rig rig(WireKind::Uart, WithFault("reply=ALARM,count=0,do=halt"));
  rig.Open();
  rig.simulator.HaltMachine("", 0);
  rig.Send("G21\n");
  EXPECT_TRUE(rig.simulator.Board().IsHalted());
}

}  // namespace
}  // namespace k7sim
