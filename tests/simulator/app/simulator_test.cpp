// The board with its links: greetings, room for bytes, the pace of bytes, lost bytes.
#include "app/simulator.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/simulator/support/content.h"
#include "tests/simulator/support/rig.h"

namespace k7sim {
namespace {

using k7test::Rig;

TEST(Simulator, GreetsEachHostAsItsLinkDoes) {
  Rig usb(WireKind::Usb);
  usb.Open();
  EXPECT_EQ(usb.Take(), "Smoothie\r\nok\r\n");
  usb.simulator.HostClosed(usb.link);
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
  rig.simulator.Receive(rig.link, "G21\nG9", 0);
  rig.simulator.HostClosed(rig.link);
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
  EXPECT_EQ(k7test::Content(setup.configPath),
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

// 31 moves fill the queue. What becomes of the ones after them depends on the link.
std::string Moves(int count) {
  std::string lines = "G0 F60\n";
  for (int i = 1; i <= count; ++i) lines += "G0 X" + std::to_string(100 + i) + ".000000\n";
  return lines;
}

TEST(Simulator, StopsReadingUsbWhenLessThan64BytesAreFree) {
  Rig rig(WireKind::Usb);
  rig.Open();
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.link));
  rig.Send(Moves(80));
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.link));
  // Lines of 15 bytes, 320 bytes of room, 64 of them kept free.
  EXPECT_GE(rig.simulator.Board().WaitingBytes(rig.link), 240u);
  EXPECT_LT(rig.simulator.Board().WaitingBytes(rig.link), 256u);
  rig.TakeAt(100000);
  EXPECT_EQ(rig.simulator.Board().Counts().blocks, 80u);  // none is lost
  EXPECT_EQ(rig.simulator.LostInputBytes(), 0u);
}

TEST(Simulator, LosesWhatABareUartHasNoRoomFor) {
  Rig rig(WireKind::Uart);
  rig.Open();
  rig.Send(Moves(80));
  EXPECT_TRUE(rig.simulator.WantsBytes(rig.link));
  EXPECT_GT(rig.simulator.LostInputBytes(), 0u);
  rig.TakeAt(100000);
  EXPECT_LT(rig.simulator.Board().Counts().blocks, 80u);
}

TEST(Simulator, StopsReadingTcpAtTwentyWaitingLines) {
  Rig rig(WireKind::Tcp);
  rig.Open();
  rig.Send(Moves(80));
  EXPECT_EQ(rig.simulator.Board().WaitingLines(rig.link), 20u);
  EXPECT_FALSE(rig.simulator.WantsBytes(rig.link));
  rig.TakeAt(100000);
  EXPECT_EQ(rig.simulator.Board().Counts().blocks, 80u);
}

TEST(Simulator, CarriesBytesAtTheBaudRateInBothDirections) {
  SimulatorSetup setup;
  setup.baud = 115200;
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  EXPECT_EQ(rig.Send("M17\n"), "");
  // Four bytes in take 347 us, and four bytes out take as long again.
  EXPECT_EQ(rig.TakeAt(346e-6), "");
  EXPECT_EQ(rig.TakeAt(348e-6), "");
  EXPECT_EQ(rig.TakeAt(348e-6 + 175e-6), "ok");
  EXPECT_EQ(rig.TakeAt(348e-6 + 350e-6), "\r\n");
}

TEST(Simulator, DropsRepliesThatUsbHostsLeaveUnreadForASecond) {
  Rig rig(WireKind::Usb);
  rig.Open();
  rig.Take();
  rig.simulator.Receive(rig.link, "M17\n", 0);
  EXPECT_EQ(rig.simulator.Ready(rig.link, 0), "ok\r\n");
  EXPECT_EQ(rig.simulator.Ready(rig.link, 999'999), "ok\r\n");
  EXPECT_EQ(rig.simulator.Ready(rig.link, 1'000'000), "");
  EXPECT_EQ(rig.simulator.LostOutputBytes(), 4u);
}

TEST(Simulator, RunsMotionFasterThanTheWire) {
  SimulatorSetup setup;
  setup.speed = 50;
  Rig rig(WireKind::Uart, setup);
  rig.Open();
  rig.Send("SendBlockMessagesOn\nG0 F3000\nG0 X50\n");  // 0.1 s to start, then 1.1 s of motion
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
