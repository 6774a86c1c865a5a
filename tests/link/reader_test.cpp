#include "link/reader.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "device/guarded.h"
#include "device/polling.h"
#include "device/progress.h"
#include "support/attached_device.h"
#include "support/both_links.h"
#include "support/fake_controller.h"
#include "support/host_window.h"
#include "support/wait_until.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;
using k7test::HostMessage;
using k7test::HostWindow;
using k7test::WaitUntil;
using k7test::Watchdog;

// The reader on a real link: its life, the guarded counts, what it tells of the controller as a
// whole.
class Reader : public testing::TestWithParam<std::uint32_t> {
 protected:
  Watchdog watchdog_;
  FakeController controller_{GetParam()};
  AttachedDevice device_{controller_, false};
};

INSTANTIATE_TEST_SUITE_P(, Reader, k7test::kBothLinks, k7test::LinkName);

TEST_P(Reader, ASignOfLifeSetsBothTicksAndConnected) {
  const std::uint32_t before = TickMs();
  ASSERT_TRUE(device_.Hear("SmoothieIsConnected\r\n"));
  EXPECT_EQ(device_->link.connected, 1);
  EXPECT_LE(device_->link.alive.Alone().lastAnswerTick - before, 30000u);
  EXPECT_EQ(device_->link.alive.Alone().lastCheckTick, device_->link.alive.Alone().lastAnswerTick);
}

TEST_P(Reader, KnowsWhetherTheTableIsHomed) {
  controller_.Say("TableIsHomedTRUE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return device_->position.tableHomed == 1; }));
  controller_.Say("TableIsHomedFALSE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return device_->position.tableHomed == 0; }));
}

TEST_P(Reader, KeepsTheIdentity) {
  ASSERT_TRUE(device_.Hear("sd: controller_id is set to 0123456789ABCDEF\r\n"));
  EXPECT_TRUE(device_->link.controllerId.Is(L"0123456789ABCDEF"));
}

TEST_P(Reader, AnIdentityLineWithNothingBehindItStaysWithinIts16Characters) {
  ASSERT_TRUE(device_.Hear("controller_id is set to\r\n"));
  EXPECT_TRUE(device_->link.controllerId.Is(L"ler_id is set to"));
}

TEST_P(Reader, AHeldCountDelaysTheUpdateAndLosesNothing) {
  device_->job.linesInFlight.Alone() = 1;
  {
    const auto lock = device_->job.linesInFlight.Lock();
    controller_.Say("BX\r\n");
    EXPECT_EQ(device_->job.linesInFlight.Alone(), 1);
  }
  EXPECT_TRUE(WaitUntil([&] { return LinesInFlight(device_->job) == 0; }));
}

// KEEP: for a moment it is in neither count.
TEST_P(Reader, ABegunLineIsNoLongerInFlightBeforeItIsCountedAsRunning) {
  device_->job.linesInFlight.Alone() = 1;
  {
    const auto running = device_->job.blocksRunning.Lock();
    controller_.Say("BX\r\n");
    EXPECT_TRUE(WaitUntil([&] { return device_->job.linesInFlight.Alone() == 0; }));
    EXPECT_EQ(*running, 0);
  }
  EXPECT_TRUE(WaitUntil([&] { return BlocksRunning(device_->job) == 1; }));
}

TEST_P(Reader, TellsTheConnectWindow) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  device_->notify.connectNotifyWindow = window.Handle();
  device_->notify.connectNotifyMessage = WM_APP + 7;
  controller_.Say("SmoothieIsConnected\r\n");
  ASSERT_TRUE(window.WaitFor(WM_APP + 7));
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{WM_APP + 7, 0, 0}}));
  EXPECT_EQ(device_->link.connected, 1);  // before the window is told
}

TEST_P(Reader, ALostControllerDoesNotHoldUpADetach) {
  controller_.HangUp();
  DetachLink(*device_, kLinkNone);
  EXPECT_EQ(device_->link.readerAlive, 0);
}

}  // namespace
}  // namespace k7
