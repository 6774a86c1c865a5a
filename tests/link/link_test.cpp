#include "link/link.h"

#include "link/tcp.h"
// After winsock2.h, which it must not precede.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "device/polling.h"
#include "support/attached_device.h"
#include "support/both_links.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;
using k7test::WaitUntil;
using k7test::Watchdog;

// Every link rule holds for serial and TCP alike.
class Link : public testing::TestWithParam<std::uint32_t> {
 protected:
  Watchdog watchdog_;
  FakeController controller_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(, Link, k7test::kBothLinks, k7test::LinkName);

TEST_P(Link, AttachFillsTheRecordAndFindsTheReaderAlive) {
  DeviceState record;
  record.lastCheckTick = record.lastAnswerTick = 7;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"\\\\.\\COM7");
  EXPECT_EQ(record.readerAlive, 1);
  EXPECT_EQ(record.readerRun, 1);
  EXPECT_EQ(record.linkHandle, controller_.DriverEnd());
  EXPECT_EQ(record.linkType, GetParam());
  EXPECT_STREQ(record.portName, L"\\\\.\\COM7");
  EXPECT_EQ(record.lastCheckTick, 0u);
  EXPECT_EQ(record.lastAnswerTick, 0u);
  EXPECT_EQ(record.connected, 0);
  for (void* mutex : record.mutexes) EXPECT_NE(mutex, nullptr);
  DetachLink(record, kLinkNone);
}

TEST_P(Link, AttachSendsNothing) {
  { AttachedDevice device{controller_}; }
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_P(Link, DetachEmptiesTheRecordButNotTheConnectedMark) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
  record.connected = 1;
  DetachLink(record, kLinkNone);
  EXPECT_EQ(record.readerAlive, 0);
  EXPECT_EQ(record.readerRun, 0);
  EXPECT_EQ(record.linkHandle, nullptr);
  EXPECT_EQ(record.linkType, kLinkNone);
  EXPECT_STREQ(record.portName, L"");
  EXPECT_EQ(record.connected, 1);
  EXPECT_EQ(record.writeQueue, nullptr);
  EXPECT_EQ(record.readerThread, nullptr);
  for (void* mutex : record.mutexes) EXPECT_EQ(mutex, nullptr);
}

TEST_P(Link, DetachStoresTheTypeThatItIsGiven) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
  DetachLink(record, kLinkTcp);
  EXPECT_EQ(record.linkType, kLinkTcp);
}

TEST_P(Link, DetachOfAReaderThatWaitsTakesAtMostItsWaitAndOnePoll) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
  const std::uint32_t start = TickMs();
  DetachLink(record, kLinkNone);
  // 500 ms of the reader and 200 ms of the poll; the rest is slack for a busy machine.
  EXPECT_LT(TickMs() - start, 700u + 800u);
}

TEST_P(Link, DetachRightAfterAttachFindsTheReader) {
  for (int i = 0; i < 3; ++i) {
    DeviceState record;
    AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
    DetachLink(record, kLinkNone);
    EXPECT_EQ(record.readerAlive, 0);
  }
}

TEST_P(Link, ALinkCanBeAttachedAgainAfterItsDetach) {
  controller_.Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  for (int i = 0; i < 2; ++i) {
    AttachedDevice device{controller_, false};
    SendLine(*device, "SmoothieIsConnected\n");
    EXPECT_TRUE(WaitUntil([&] { return device->connected == 1; }));
  }
}

TEST_P(Link, AttachDetachesALinkThatIsStillAttached) {
  FakeController other{GetParam()};
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"first");
  AttachLink(record, other.DriverEnd(), GetParam(), L"second");
  EXPECT_STREQ(record.portName, L"second");
  SendLine(record, "G21\n");
  EXPECT_TRUE(other.WaitForLine("G21\n"));
  EXPECT_TRUE(controller_.Lines().empty());
  DetachLink(record, kLinkNone);
}

TEST_P(Link, PortNameIsCutToItsFieldAndNullIsEmpty) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"0123456789ABCDEFGH");
  EXPECT_STREQ(record.portName, L"0123456789ABCDE");
  DetachLink(record, kLinkNone);
  AttachLink(record, controller_.DriverEnd(), GetParam(), nullptr);
  EXPECT_STREQ(record.portName, L"");
  DetachLink(record, kLinkNone);
}

TEST_P(Link, SendsTheBytesOfALineWithoutItsTerminator) {
  AttachedDevice device{controller_};
  SendLine(*device, "G0 X1.000000\n");
  SendLine(*device, "");
  SendLine(*device, "M\x80\xff\n");
  ASSERT_TRUE(controller_.WaitForLines(2));
  EXPECT_EQ(controller_.Transcript(), "G0 X1.000000\nM\x80\xff\n");
}

TEST_P(Link, AnAnswerMarksTheDeviceConnected) {
  controller_.Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  AttachedDevice device{controller_, false};
  SendLine(*device, "SmoothieIsConnected\n");
  EXPECT_TRUE(WaitUntil([&] { return device->connected == 1; }));
}

TEST_P(Link, SendOnADetachedRecordDoesNothing) {
  {
    AttachedDevice device{controller_};
    DetachLink(*device, kLinkNone);
    SendLine(*device, "G21\n");
    SendLine(*device, nullptr);
  }
  DeviceState never;
  SendLine(never, "G21\n");
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_P(Link, SendNeedsALinkOfAKnownType) {
  AttachedDevice device{controller_};
  device->linkType = 3;
  SendLine(*device, "G21\n");
  device->linkType = GetParam();
  SendLine(*device, "G90\n");
  ASSERT_TRUE(controller_.WaitForLines(1));
  EXPECT_EQ(controller_.Transcript(), "G90\n");
}

TEST(LinkOfUnknownType, AttachesAndDetachesWithoutReadingOrSending) {
  Watchdog watchdog;
  FakeController controller;
  controller.Say("SmoothieIsConnected\r\n");
  DeviceState record;
  AttachLink(record, controller.DriverEnd(), 3, L"name");
  EXPECT_EQ(record.readerAlive, 1);
  SendLine(record, "G21\n");
  DetachLink(record, kLinkNone);
  EXPECT_EQ(record.connected, 0);
  EXPECT_TRUE(controller.Lines().empty());
}

TEST(Detach, OfARecordThatWasNeverAttachedReturnsAtOnce) {
  DeviceState record;
  const std::uint32_t start = TickMs();
  DetachLink(record, kLinkNone);
  DetachLink(record, kLinkNone);
  EXPECT_LT(TickMs() - start, 150u);
}

TEST(CheckAlive, RightAfterAttachIs1AndCountsAsAnAnswer) {
  FakeController controller;
  AttachedDevice device{controller};
  const std::uint32_t before = TickMs();
  EXPECT_EQ(CheckAlive(*device), 1);
  EXPECT_EQ(device->lastAnswerTick, device->lastCheckTick);
  EXPECT_LE(device->lastCheckTick - before, 5000u);
  EXPECT_TRUE(controller.WaitForLine("SmoothieIsConnected\n"));
}

TEST(CheckAlive, SendsItsLineAlsoWhenTheControllerIsSilent) {
  FakeController controller;
  AttachedDevice device{controller};
  device->lastAnswerTick = TickMs() - 2001;
  EXPECT_EQ(CheckAlive(*device), 0);
  EXPECT_TRUE(controller.WaitForLine("SmoothieIsConnected\n"));
}

TEST(CheckAlive, AnAnswerThatIsRecentIs1) {
  FakeController controller;
  AttachedDevice device{controller};
  device->lastAnswerTick = TickMs() - 500;
  EXPECT_EQ(CheckAlive(*device), 1);
}

TEST(CheckAlive, WithoutTheMutexIs1) {
  DeviceState record;
  record.lastAnswerTick = TickMs() - 9000;
  EXPECT_EQ(CheckAlive(record), 1);
}

TEST(IsRecentAnswer, At2000MsYesAt2001MsNo) {
  EXPECT_TRUE(IsRecentAnswer(10000, 10000));
  EXPECT_TRUE(IsRecentAnswer(12000, 10000));
  EXPECT_FALSE(IsRecentAnswer(12001, 10000));
}

TEST(IsRecentAnswer, TakesTheDistanceEitherWayAndAcrossTheWrapOfTheClock) {
  EXPECT_TRUE(IsRecentAnswer(10000, 12000));
  EXPECT_FALSE(IsRecentAnswer(10000, 12001));
  EXPECT_TRUE(IsRecentAnswer(1000, 0u - 1000u));
  EXPECT_FALSE(IsRecentAnswer(1001, 0u - 1000u));
  EXPECT_FALSE(IsRecentAnswer(0x80000000u, 0));
}

}  // namespace
}  // namespace k7
