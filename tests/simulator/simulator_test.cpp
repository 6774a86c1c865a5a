// The board behind its links: greetings, room, pace, loss, faults.
#include "simulator/simulator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "simulator/report.h"

namespace k7sim {
namespace {

struct Rig {
  explicit Rig(WireKind kind = WireKind::Usb, SimulatorSetup setup = {},
               TranscriptTimes times = TranscriptTimes::Off)
      : transcript(times), simulator(setup, transcript), port(simulator.AddStream(kind, "port")) {}

  void Open() { simulator.HostOpened(port, now); }
  std::string Take() {
    simulator.Run(now);
    const std::string bytes(simulator.Ready(port, now));
    simulator.Sent(port, bytes.size(), now);
    return bytes;
  }
  std::string Send(std::string_view bytes) {
    simulator.Receive(port, bytes, now);
    return Take();
  }
  std::string TakeAt(double seconds) {
    now = UsFromSeconds(seconds);
    return Take();
  }

  Transcript transcript;
  Simulator simulator;
  int port;
  TimeUs now = 0;
};

SimulatorSetup WithFault(const char* text) {
  SimulatorSetup setup;
  std::string error;
  const auto faults = ParseFaults(text, error);
  if (!faults) {
    ADD_FAILURE() << error;
  } else {
    setup.faults = *faults;
  }
  return setup;
}

TEST(Simulator, GreetsEachHostAsItsLinkDoes) {
  Rig usb(WireKind::Usb);
  usb.Open();
  EXPECT_EQ(usb.Take(), "Smoothie\r\nok\r\n");
  usb.simulator.HostClosed(usb.port);
  usb.Open();
  EXPECT_EQ(usb.Take(), "Smoothie\r\nok\r\n");
  Rig uart(WireKind::Uart);
  uart.Open();
  EXPECT_EQ(uart.Take(), "");
  Rig tcp(WireKind::Tcp);
  tcp.Open();
  EXPECT_EQ(tcp.Take(), "Smoothie command shell\r\n");
}

TEST(Simulator, ForgetsWhatAClosedPortWasAboutToSay) {
  Rig rig(WireKind::Uart);
  rig.Open();
  rig.simulator.Receive(rig.port, "G21\nG9", 0);
  rig.simulator.HostClosed(rig.port);
  rig.Open();
  EXPECT_EQ(rig.Send("M17\n"), "ok\r\n");
}

TEST(Simulator, KeepsTheIdentityAcrossARestart) {
  SimulatorSetup setup;
  setup.configPath = testing::TempDir() + "k7sim_identity_test";
  std::remove(setup.configPath.c_str());
  std::ofstream(setup.configPath) << "# own settings\nalpha_steps_per_mm 80 # X\n";
  {
    Rig rig(WireKind::Uart, setup);
    rig.Open();
    rig.Send("config-set sd controller_id ZYXWVUTSRQPONMLK\n");
  }
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  EXPECT_EQ(rig.Send("config-get sd controller_id\n"),
            "sd: controller_id is set to ZYXWVUTSRQPONMLK\r\n");
  std::stringstream file;
  file << std::ifstream(setup.configPath).rdbuf();
  EXPECT_EQ(file.str(),
            "# own settings\nalpha_steps_per_mm 80 # X\ncontroller_id ZYXWVUTSRQPONMLK\n");
}

TEST(Simulator, StartsWithTheIdentityItIsGiven) {
  SimulatorSetup setup;
  setup.id = "ABCDEFGHIJKLMNOP";
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  EXPECT_EQ(rig.Send("config-get sd controller_id\n"),
            "sd: controller_id is set to ABCDEFGHIJKLMNOP\r\n");
}

// 31 moves fill the queue, one waits; the rest stays where the link keeps it.
std::string Moves(int count) {
  std::string lines = "G0 F60\n";
  for (int i = 1; i <= count; ++i) lines += "G0 X" + std::to_string(100 + i) + ".000000\n";
  return lines;
}

TEST(Simulator, StopsReadingUsbWhenLessThan64BytesAreFree) {
  Rig rig(WireKind::Usb);
  rig.Open();
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.port));
  rig.Send(Moves(80));
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.port));
  // 15 bytes a line in a ring of 320 with 64 kept free.
  EXPECT_GE(rig.simulator.Board().WaitingBytes(rig.port), 240u);
  EXPECT_LT(rig.simulator.Board().WaitingBytes(rig.port), 256u);
  rig.TakeAt(100000);
  EXPECT_EQ(rig.simulator.Board().Record().Blocks(), 80u);  // none is lost
  EXPECT_EQ(rig.simulator.LostInputBytes(), 0u);
}

TEST(Simulator, LosesWhatABareUartHasNoRoomFor) {
  Rig rig(WireKind::Uart);
  rig.Open();
  rig.Send(Moves(80));
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.port));
  EXPECT_GT(rig.simulator.LostInputBytes(), 0u);
  rig.TakeAt(100000);
  EXPECT_LT(rig.simulator.Board().Record().Blocks(), 80u);
}

TEST(Simulator, StopsReadingTcpAtTwentyWaitingLines) {
  Rig rig(WireKind::Tcp);
  rig.Open();
  rig.Send(Moves(80));
  EXPECT_EQ(rig.simulator.Board().WaitingLines(rig.port), 20u);
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.port));
  rig.TakeAt(100000);
  EXPECT_EQ(rig.simulator.Board().Record().Blocks(), 80u);
}

TEST(Simulator, CarriesBytesAtTheBaudRateInBothDirections) {
  SimulatorSetup setup;
  setup.baud = 115200;
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  EXPECT_EQ(rig.Send("M17\n"), "");
  // Four bytes in take 347 us; then four bytes out the same again.
  EXPECT_EQ(rig.TakeAt(346e-6), "");
  EXPECT_EQ(rig.TakeAt(348e-6), "");
  EXPECT_EQ(rig.TakeAt(348e-6 + 175e-6), "ok");
  EXPECT_EQ(rig.TakeAt(348e-6 + 350e-6), "\r\n");
}

TEST(Simulator, DropsRepliesThatUsbHostsLeaveUnreadForASecond) {
  Rig rig(WireKind::Usb);
  rig.Open();
  rig.Take();
  rig.simulator.Receive(rig.port, "M17\n", 0);
  EXPECT_EQ(rig.simulator.Ready(rig.port, 0), "ok\r\n");
  EXPECT_EQ(rig.simulator.Ready(rig.port, 999'999), "ok\r\n");
  EXPECT_EQ(rig.simulator.Ready(rig.port, 1'000'000), "");
  EXPECT_EQ(rig.simulator.LostOutputBytes(), 4u);
}

TEST(Simulator, RunsMotionFasterThanTheWire) {
  SimulatorSetup setup;
  setup.speed = 50;
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  rig.Send("SendBlockMessagesOn\nG0 F3000\nG0 X50\n");  // 0.1 s to start, 1.1 s of motion
  EXPECT_EQ(rig.TakeAt(0.0019), "");
  EXPECT_EQ(rig.TakeAt(0.0021), "BX\r\n");
  EXPECT_EQ(rig.TakeAt(0.0239), "");
  EXPECT_EQ(rig.TakeAt(0.0241), "EX\r\n");
}

TEST(Simulator, AtTheHighestSpeedJumpsFromEventToEvent) {
  SimulatorSetup setup;
  setup.speed = 0;
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  rig.Send("SendBlockMessagesOn\nG0 F3000\nG0 X50\n");
  EXPECT_EQ(rig.TakeAt(100), "");
  EXPECT_TRUE(rig.simulator.JumpAhead(rig.now));
  EXPECT_EQ(rig.Take(), "BX\r\n");
  EXPECT_TRUE(rig.simulator.JumpAhead(rig.now));
  EXPECT_EQ(rig.Take(), "EX\r\n");
  EXPECT_FALSE(rig.simulator.JumpAhead(rig.now));
  EXPECT_EQ(rig.simulator.MachineNow(), 1'200'000);
}

TEST(Simulator, TheHaltByteActsInTheMiddleOfALine) {
  Rig rig(WireKind::Uart);
  rig.Open();
  EXPECT_EQ(rig.Send("G0 X10\nG0\x18 X2\n"), "ok\n!!\r\n");
}

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
                    FaultCase{"reply=ok,count=0,do=drop", "G21\nG90\nTableIsHomed\n",
                              "TableIsHomedFALSE\r\n", ""}));

TEST(Faults, AWithheldLineKeepsItsLateRepliesToo) {
  Rig rig(WireKind::Uart, WithFault("match=G28,do=withhold"));
  rig.Open();
  rig.Send("G28 Z0\nG28 Y0\n");
  EXPECT_EQ(rig.TakeAt(10), "");
  EXPECT_EQ(rig.simulator.FaultsOf().Outcomes()[0].fired, 2u);
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

TEST(Faults, AScriptThatChasesItsOwnTailEnds) {
  Rig rig(WireKind::Uart, WithFault("reply=ALARM,count=0,do=halt"));
  rig.Open();
  rig.simulator.HaltMachine("", 0);
  rig.Send("G21\n");
  EXPECT_TRUE(rig.simulator.Board().IsHalted());
}

TEST(Transcript, HoldsEveryLineInBothDirections) {
  const std::string path = testing::TempDir() + "k7sim_transcript_test";
  {
    Rig rig(WireKind::Usb, WithFault("match=G90,do=drop"));
    rig.transcript.Open(path);
    rig.Open();
    rig.Send("G21\nG90\n\x18");
  }
  std::stringstream file;
  file << std::ifstream(path).rdbuf();
  EXPECT_EQ(file.str(),
            "< Smoothie\\r\\nok\\r\\n\n> G21\n< ok\\n\n> G90\n! fault: changed ok\\n\n> \\x18\n");
}

TEST(Transcript, CarriesMachineOrWireTimes) {
  SimulatorSetup setup;
  setup.speed = 50;
  const std::string path = testing::TempDir() + "k7sim_transcript_times_test";
  for (const TranscriptTimes times : {TranscriptTimes::Machine, TranscriptTimes::Wire}) {
    Rig rig(WireKind::Uart, setup, times);
    rig.transcript.Open(path);
    rig.Open();
    rig.now = 20'000;
    rig.Send("G21\n");
    rig.transcript.Flush();
    std::stringstream file;
    file << std::ifstream(path).rdbuf();
    EXPECT_EQ(file.str(), times == TranscriptTimes::Machine
                              ? "    1.000000 > G21\n    1.000000 < ok\\n\n"
                              : "    0.020000 > G21\n    0.020000 < ok\\n\n");
  }
}

}  // namespace
}  // namespace k7sim
