// The board behind its links: greetings, room, pace, loss.
#include "app/simulator.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/simulator/support/rig.h"

namespace k7sim {
namespace {

using k7test::Rig;

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
  EXPECT_EQ(rig.simulator.Board().Counts().blocks, 80u);  // none is lost
  EXPECT_EQ(rig.simulator.LostInputBytes(), 0u);
}

TEST(Simulator, LosesWhatABareUartHasNoRoomFor) {
  Rig rig(WireKind::Uart);
  rig.Open();
  rig.Send(Moves(80));
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.port));
  EXPECT_GT(rig.simulator.LostInputBytes(), 0u);
  rig.TakeAt(100000);
  EXPECT_LT(rig.simulator.Board().Counts().blocks, 80u);
}

TEST(Simulator, StopsReadingTcpAtTwentyWaitingLines) {
  Rig rig(WireKind::Tcp);
  rig.Open();
  rig.Send(Moves(80));
  EXPECT_EQ(rig.simulator.Board().WaitingLines(rig.port), 20u);
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.port));
  rig.TakeAt(100000);
  EXPECT_EQ(rig.simulator.Board().Counts().blocks, 80u);
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

}  // namespace
}  // namespace k7sim
