#include "link/tags.h"

#include <gtest/gtest.h>

#include "support/attached_device.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;

TEST(Tags, ComeBackInTheOrderInWhichTheyWerePushed) {
  FakeController controller;
  AttachedDevice device{controller};
  PushTag(*device, CommandTag::Move);
  PushTag(*device, CommandTag::Plunge);
  EXPECT_EQ(device->ackRingIndex, 2);
  EXPECT_EQ(TakeTag(*device, &DeviceState::queuedIndex), CommandTag::Move);
  EXPECT_EQ(TakeTag(*device, &DeviceState::queuedIndex), CommandTag::Plunge);
  EXPECT_EQ(TakeTag(*device, &DeviceState::finishedIndex), CommandTag::Move);
  EXPECT_EQ(device->queuedIndex, 2);
  EXPECT_EQ(device->startedIndex, 0);
  EXPECT_EQ(device->finishedIndex, 1);
}

TEST(Tags, EveryIndexWrapsAt1024) {
  FakeController controller;
  AttachedDevice device{controller};
  device->ackRingIndex = 1023;
  device->startedIndex = 1023;
  PushTag(*device, CommandTag::Lift);
  EXPECT_EQ(device->ackRing[1023], CommandTag::Lift);
  EXPECT_EQ(device->ackRingIndex, 0);
  EXPECT_EQ(TakeTag(*device, &DeviceState::startedIndex), CommandTag::Lift);
  EXPECT_EQ(device->startedIndex, 0);
}

TEST(Tags, OverrunIsNotChecked) {
  FakeController controller;
  AttachedDevice device{controller};
  for (int i = 0; i < kAckRingSize; ++i) PushTag(*device, CommandTag::Move);
  PushTag(*device, CommandTag::Lift);
  EXPECT_EQ(device->ackRingIndex, 1);
  EXPECT_EQ(TakeTag(*device, &DeviceState::queuedIndex), CommandTag::Lift);
}

TEST(Tags, NothingHappensWithoutTheMutex) {
  DeviceState record;
  PushTag(record, CommandTag::Move);
  EXPECT_EQ(record.ackRingIndex, 0);
  EXPECT_EQ(record.ackRing[0], CommandTag::None);
  record.ackRing[0] = CommandTag::Move;
  EXPECT_EQ(TakeTag(record, &DeviceState::queuedIndex), CommandTag::None);
  EXPECT_EQ(record.queuedIndex, 0);
}

}  // namespace
}  // namespace k7
