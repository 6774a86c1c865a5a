#include "link/reader.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "device/polling.h"
#include "device/record_lock.h"
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

// The reader on a real link: its life, the mutexes, what it tells of the controller as a whole.
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
  EXPECT_EQ(device_->connected, 1);
  EXPECT_LE(device_->lastAnswerTick - before, 30000u);
  EXPECT_EQ(device_->lastCheckTick, device_->lastAnswerTick);
}

TEST_P(Reader, KnowsWhetherTheTableIsHomed) {
  controller_.Say("TableIsHomedTRUE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return device_->tableHomed == 1; }));
  controller_.Say("TableIsHomedFALSE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return device_->tableHomed == 0; }));
}

TEST_P(Reader, KeepsTheIdentity) {
  ASSERT_TRUE(device_.Hear("sd: controller_id is set to 0123456789ABCDEF\r\n"));
  EXPECT_TRUE(device_->controllerId.Is(L"0123456789ABCDEF"));
}

TEST_P(Reader, AnIdentityLineWithNothingBehindItStaysWithinIts16Characters) {
  ASSERT_TRUE(device_.Hear("controller_id is set to\r\n"));
  EXPECT_TRUE(device_->controllerId.Is(L"ler_id is set to"));
}

TEST_P(Reader, AHeldMutexDelaysTheUpdateAndLosesNothing) {
  device_->linesInFlight = 1;
  {
    const RecordLock<flightMutex> lock{*device_};
    controller_.Say("BX\r\n");
    EXPECT_EQ(device_->linesInFlight, 1);
  }
  EXPECT_TRUE(WaitUntil([&] { return LinesInFlight(*device_) == 0; }));
}

// KEEP: for a moment it is in neither count.
TEST_P(Reader, ABegunLineIsNoLongerInFlightBeforeItIsCountedAsRunning) {
  device_->linesInFlight = 1;
  const HANDLE run = device_->mutexes[runMutex];
  ASSERT_EQ(WaitForSingleObject(run, INFINITE), WAIT_OBJECT_0);
  controller_.Say("BX\r\n");
  EXPECT_TRUE(WaitUntil([&] { return LinesInFlight(*device_) == 0; }));
  EXPECT_EQ(device_->blocksRunning, 0);
  ReleaseMutex(run);
  EXPECT_TRUE(WaitUntil([&] { return BlocksRunning(*device_) == 1; }));
}

TEST_P(Reader, AnAbandonedMutexStillCounts) {
  device_->blocksRunning = 5;
  const HANDLE mutex = device_->mutexes[runMutex];
  std::thread{[&] { WaitForSingleObject(mutex, INFINITE); }}.join();
  ASSERT_TRUE(device_.Hear("EX\r\n"));
  EXPECT_EQ(BlocksRunning(*device_), 4);
}

TEST_P(Reader, TellsTheConnectWindow) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  device_->connectNotifyWindow = window.Handle();
  device_->connectNotifyMessage = WM_APP + 7;
  controller_.Say("SmoothieIsConnected\r\n");
  ASSERT_TRUE(window.WaitFor(WM_APP + 7));
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{WM_APP + 7, 0, 0}}));
  EXPECT_EQ(device_->connected, 1);  // before the window is told
}

TEST_P(Reader, ALostControllerDoesNotHoldUpADetach) {
  controller_.HangUp();
  DetachLink(*device_, kLinkNone);
  EXPECT_EQ(device_->readerAlive, 0);
}

}  // namespace
}  // namespace k7
