#include "link/link.h"

#include "link/tcp.h"
// After winsock2.h, which it must not precede.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
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
  record.link.alive.Alone().lastCheckTick = record.link.alive.Alone().lastAnswerTick = 7;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"\\\\.\\COM7");
  EXPECT_EQ(record.link.readerAlive, 1);
  EXPECT_EQ(record.link.readerRun, 1);
  EXPECT_EQ(record.link.linkHandle, controller_.DriverEnd());
  EXPECT_EQ(record.link.linkType, GetParam());
  EXPECT_STREQ(record.link.portName, L"\\\\.\\COM7");
  EXPECT_EQ(record.link.alive.Alone().lastCheckTick, 0u);
  EXPECT_EQ(record.link.alive.Alone().lastAnswerTick, 0u);
  EXPECT_EQ(record.link.connected, 0);
  ForEachGuarded(record, [](auto& guarded) { EXPECT_TRUE(static_cast<bool>(guarded.Lock())); });
  DetachLink(record, kLinkNone);
}

TEST_P(Link, AttachSendsNothing) {
  { AttachedDevice device{controller_}; }
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_P(Link, DetachEmptiesTheRecordButNotTheConnectedMark) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
  record.link.connected = 1;
  DetachLink(record, kLinkNone);
  EXPECT_EQ(record.link.readerAlive, 0);
  EXPECT_EQ(record.link.readerRun, 0);
  EXPECT_EQ(record.link.linkHandle, nullptr);
  EXPECT_EQ(record.link.linkType, kLinkNone);
  EXPECT_STREQ(record.link.portName, L"");
  EXPECT_EQ(record.link.connected, 1);
  EXPECT_EQ(record.link.writeQueue.Alone(), nullptr);
  EXPECT_EQ(record.link.readerThread, nullptr);
  ForEachGuarded(record, [](auto& guarded) { EXPECT_FALSE(static_cast<bool>(guarded.Lock())); });
}

TEST_P(Link, DetachStoresTheTypeThatItIsGiven) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
  DetachLink(record, kLinkTcp);
  EXPECT_EQ(record.link.linkType, kLinkTcp);
}

// The reader's own last steps go by the type.
TEST_P(Link, DetachKeepsTheTypeUntilTheReaderHasEnded) {
  struct Seen {
    DeviceState& record;
    std::atomic<bool> told{false};
    std::atomic<std::uint32_t> linkType{99};
  };
  DeviceState record;
  Seen seen{record};
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"name");
  record.job.tagRing.Alone().ackRing[0] = CommandTag::Move;
  record.notify.notifyContext = reinterpret_cast<std::uint64_t>(&seen);
  record.notify.notifyCallback = [](std::uint32_t, std::uint64_t context) {
    auto& now = *reinterpret_cast<Seen*>(context);
    now.told = true;
    WaitUntil([&] { return now.record.link.readerRun == 0; });
    now.linkType = now.record.link.linkType;
  };
  controller_.Say("QX\r\n");
  ASSERT_TRUE(WaitUntil([&] { return seen.told.load(); }));
  DetachLink(record, kLinkNone);
  EXPECT_EQ(seen.linkType, GetParam());
  EXPECT_EQ(record.link.linkType, kLinkNone);
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
    EXPECT_EQ(record.link.readerAlive, 0);
  }
}

TEST_P(Link, ALinkCanBeAttachedAgainAfterItsDetach) {
  controller_.Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  for (int i = 0; i < 2; ++i) {
    AttachedDevice device{controller_, false};
    SendLine(device->link, "SmoothieIsConnected\n");
    EXPECT_TRUE(WaitUntil([&] { return device->link.connected == 1; }));
  }
}

TEST_P(Link, AttachDetachesALinkThatIsStillAttached) {
  FakeController other{GetParam()};
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"first");
  AttachLink(record, other.DriverEnd(), GetParam(), L"second");
  EXPECT_STREQ(record.link.portName, L"second");
  SendLine(record.link, "G21\n");
  EXPECT_TRUE(other.WaitForLine("G21\n"));
  EXPECT_TRUE(controller_.Lines().empty());
  DetachLink(record, kLinkNone);
}

TEST_P(Link, PortNameIsCutToItsFieldAndNullIsEmpty) {
  DeviceState record;
  AttachLink(record, controller_.DriverEnd(), GetParam(), L"0123456789ABCDEFGH");
  EXPECT_STREQ(record.link.portName, L"0123456789ABCDE");
  DetachLink(record, kLinkNone);
  AttachLink(record, controller_.DriverEnd(), GetParam(), nullptr);
  EXPECT_STREQ(record.link.portName, L"");
  DetachLink(record, kLinkNone);
}

TEST_P(Link, SendsTheBytesOfALineWithoutItsTerminator) {
  AttachedDevice device{controller_};
  SendLine(device->link, "G0 X1.000000\n");
  SendLine(device->link, "");
  SendLine(device->link, "M\x80\xff\n");
  ASSERT_TRUE(controller_.WaitForLines(2));
  EXPECT_EQ(controller_.Transcript(), "G0 X1.000000\nM\x80\xff\n");
}

TEST_P(Link, AnAnswerMarksTheDeviceConnected) {
  controller_.Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  AttachedDevice device{controller_, false};
  SendLine(device->link, "SmoothieIsConnected\n");
  EXPECT_TRUE(WaitUntil([&] { return device->link.connected == 1; }));
}

TEST_P(Link, SendOnADetachedRecordDoesNothing) {
  {
    AttachedDevice device{controller_};
    DetachLink(*device, kLinkNone);
    SendLine(device->link, "G21\n");
    SendLine(device->link, nullptr);
  }
  DeviceState never;
  SendLine(never.link, "G21\n");
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_P(Link, SendNeedsALinkOfAKnownType) {
  AttachedDevice device{controller_};
  device->link.linkType = 3;
  SendLine(device->link, "G21\n");
  device->link.linkType = GetParam();
  SendLine(device->link, "G90\n");
  ASSERT_TRUE(controller_.WaitForLines(1));
  EXPECT_EQ(controller_.Transcript(), "G90\n");
}

TEST(LinkOfUnknownType, AttachesAndDetachesWithoutReadingOrSending) {
  Watchdog watchdog;
  FakeController controller;
  controller.Say("SmoothieIsConnected\r\n");
  DeviceState record;
  AttachLink(record, controller.DriverEnd(), 3, L"name");
  EXPECT_EQ(record.link.readerAlive, 1);
  SendLine(record.link, "G21\n");
  DetachLink(record, kLinkNone);
  EXPECT_EQ(record.link.connected, 0);
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
  EXPECT_EQ(CheckAlive(device->link), 1);
  EXPECT_EQ(device->link.alive.Alone().lastAnswerTick, device->link.alive.Alone().lastCheckTick);
  EXPECT_LE(device->link.alive.Alone().lastCheckTick - before, 5000u);
  EXPECT_TRUE(controller.WaitForLine("SmoothieIsConnected\n"));
}

TEST(CheckAlive, GoesByTheAgeOfTheLastAnswerAndAsksInAnyCase) {
  constexpr struct {
    std::uint32_t ageMs;
    std::int32_t want;
  } kCases[] = {{500, 1}, {2001, 0}, {60000, 0}};
  for (const auto& c : kCases) {
    FakeController controller;
    AttachedDevice device{controller};
    device->link.alive.Alone().lastAnswerTick = TickMs() - c.ageMs;
    EXPECT_EQ(CheckAlive(device->link), c.want) << c.ageMs;
    EXPECT_TRUE(controller.WaitForLine("SmoothieIsConnected\n"));
  }
}

TEST(CheckAlive, OnADetachedRecordIs1AndNothingElse) {
  FakeController controller;
  DeviceState record;
  AttachLink(record, controller.DriverEnd(), kLinkSerial, L"fake");
  DetachLink(record, kLinkNone);
  record.link.alive.Alone().lastCheckTick = 5;
  record.link.alive.Alone().lastAnswerTick = TickMs() - 9000;
  const std::uint32_t answered = record.link.alive.Alone().lastAnswerTick;
  EXPECT_EQ(CheckAlive(record.link), 1);
  EXPECT_EQ(record.link.alive.Alone().lastCheckTick, 5u);
  EXPECT_EQ(record.link.alive.Alone().lastAnswerTick, answered);
  EXPECT_TRUE(controller.Lines().empty());
}

TEST(IsRecentAnswer, At2000MsYesAt2001MsNoEitherWayAndAcrossTheWrapOfTheClock) {
  constexpr struct {
    std::uint32_t nowMs, answerMs;
    bool want;
  } kCases[] = {
      {10000, 10000, true},      {12000, 10000, true},      {12001, 10000, false},
      {10000, 12000, true},      {10000, 12001, false},  // the reader's clock was read later
      {1000, 0u - 1000u, true},  {1001, 0u - 1000u, false}, {0u - 1000u, 1000, true},
      {0u - 1000u, 1001, false}, {0x80000000u, 0, false},   {0, 0x80000000u, false},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(IsRecentAnswer(c.nowMs, c.answerMs), c.want) << c.nowMs << " " << c.answerMs;
  }
}

}  // namespace
}  // namespace k7
