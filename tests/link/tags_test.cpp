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
  PushTag(device->job, CommandTag::Move);
  PushTag(device->job, CommandTag::Plunge);
  EXPECT_EQ(device->job.tagRing.Alone().ackRingIndex, 2);
  EXPECT_EQ(TakeTag(device->job, &TagRing::queuedIndex), CommandTag::Move);
  EXPECT_EQ(TakeTag(device->job, &TagRing::queuedIndex), CommandTag::Plunge);
  EXPECT_EQ(TakeTag(device->job, &TagRing::finishedIndex), CommandTag::Move);
  EXPECT_EQ(device->job.tagRing.Alone().queuedIndex, 2);
  EXPECT_EQ(device->job.tagRing.Alone().startedIndex, 0);
  EXPECT_EQ(device->job.tagRing.Alone().finishedIndex, 1);
}

TEST(Tags, EveryIndexWrapsAt1024) {
  FakeController controller;
  AttachedDevice device{controller};
  device->job.tagRing.Alone().ackRingIndex = 1023;
  device->job.tagRing.Alone().startedIndex = 1023;
  PushTag(device->job, CommandTag::Lift);
  EXPECT_EQ(device->job.tagRing.Alone().ackRing[1023], CommandTag::Lift);
  EXPECT_EQ(device->job.tagRing.Alone().ackRingIndex, 0);
  EXPECT_EQ(TakeTag(device->job, &TagRing::startedIndex), CommandTag::Lift);
  EXPECT_EQ(device->job.tagRing.Alone().startedIndex, 0);
}

TEST(Tags, OverrunIsNotChecked) {
  FakeController controller;
  AttachedDevice device{controller};
  for (int i = 0; i < kAckRingSize; ++i) PushTag(device->job, CommandTag::Move);
  PushTag(device->job, CommandTag::Lift);
  EXPECT_EQ(device->job.tagRing.Alone().ackRingIndex, 1);
  EXPECT_EQ(TakeTag(device->job, &TagRing::queuedIndex), CommandTag::Lift);
}

TEST(Tags, NothingHappensWithoutALink) {
  DeviceState record;
  PushTag(record.job, CommandTag::Move);
  EXPECT_EQ(record.job.tagRing.Alone().ackRingIndex, 0);
  EXPECT_EQ(record.job.tagRing.Alone().ackRing[0], CommandTag::None);
  record.job.tagRing.Alone().ackRing[0] = CommandTag::Move;
  EXPECT_EQ(TakeTag(record.job, &TagRing::queuedIndex), CommandTag::None);
  EXPECT_EQ(record.job.tagRing.Alone().queuedIndex, 0);
}

}  // namespace
}  // namespace k7
