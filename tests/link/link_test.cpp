#include "link/link.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

#include "device/polling.h"
#include "link/reader.h"
#include "support/attached_device.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;
using k7test::WaitUntil;

TEST(Link, AnAnswerMarksTheDeviceConnected) {
  FakeController controller;
  controller.Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  AttachedDevice device{controller, false};
  SendLine(*device, "SmoothieIsConnected\n");
  EXPECT_TRUE(WaitUntil([&] { return device->connected == 1; }));
  EXPECT_TRUE(controller.WaitForLine("SmoothieIsConnected\n"));
}

TEST(Link, SendOnADetachedRecordDoesNothing) {
  DeviceState record;
  SendLine(record, "G21\n");
  SendLine(record, nullptr);
  DetachLink(record, kLinkNone);
  SendLine(record, "G21\n");
}

}  // namespace
}  // namespace k7
