#include "link/reader.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "device/polling.h"
#include "device/record_lock.h"
#include "support/attached_device.h"
#include "support/both_links.h"
#include "support/calling_thread_window.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::CallingThreadWindow;
using k7test::FakeController;
using k7test::WaitUntil;
using k7test::Watchdog;

// What the controller says, through a real link, down to the record.
class Reader : public testing::TestWithParam<std::uint32_t> {
 protected:
  // Says `bytes` and waits until the reader has carried them out: lines go in order, and the line
  // that is put behind them is seen.
  void Say(const std::string& bytes) {
    device_->tableHomed = 77;
    controller_.Say(bytes + "TableIsHomedTRUE\r\n");
    ASSERT_TRUE(WaitUntil([&] { return device_->tableHomed == 1; }));
  }

  Watchdog watchdog_;
  FakeController controller_{GetParam()};
  AttachedDevice device_{controller_, false};
};

INSTANTIATE_TEST_SUITE_P(, Reader, k7test::kBothLinks, k7test::LinkName);

TEST_P(Reader, QueuedTakesTheTagAtItsOwnIndex) {
  device_->ackRing[0] = CommandTag::Move;
  Say("QX\r\n");
  EXPECT_EQ(device_->queuedIndex, 1);
  EXPECT_EQ(device_->startedIndex, 0);
  EXPECT_EQ(device_->finishedIndex, 0);
  EXPECT_EQ(LinesInFlight(*device_), 0);
  EXPECT_EQ(BlocksRunning(*device_), 0);
}

TEST_P(Reader, QueuedWhileMovesAreQuietLeavesItsIndex) {
  device_->quietMoves = 1;
  Say("QX\r\n");
  EXPECT_EQ(device_->queuedIndex, 0);
}

TEST_P(Reader, QueuedWhileAJogRunsLeavesItsIndex) {
  device_->jogActive = 1;
  Say("QX\r\n");
  EXPECT_EQ(device_->queuedIndex, 0);
}

TEST_P(Reader, BegunMovesALineFromInFlightToRunning) {
  device_->linesInFlight = 3;
  Say("BX\r\n");
  EXPECT_EQ(LinesInFlight(*device_), 2);
  EXPECT_EQ(BlocksRunning(*device_), 1);
  EXPECT_EQ(device_->startedIndex, 1);
}

TEST_P(Reader, BegunWhileSilentStillCounts) {
  device_->linesInFlight = 3;
  device_->quietMoves = 1;
  Say("BX\r\n");
  device_->quietMoves = 0;
  device_->jogActive = 1;
  Say("BX\r\n");
  EXPECT_EQ(LinesInFlight(*device_), 1);
  EXPECT_EQ(BlocksRunning(*device_), 2);
  EXPECT_EQ(device_->startedIndex, 0);
}

TEST_P(Reader, EndedWhileSilentStillCounts) {
  device_->blocksRunning = 2;
  device_->jogActive = 1;
  Say("EX\r\n");
  EXPECT_EQ(BlocksRunning(*device_), 1);
  EXPECT_EQ(device_->finishedIndex, 0);
}

TEST_P(Reader, CountersMayFallBelowZero) {
  Say("BX\r\nEX\r\nEX\r\n");
  EXPECT_EQ(LinesInFlight(*device_), -1);
  EXPECT_EQ(BlocksRunning(*device_), -1);
}

TEST_P(Reader, BlockMessagesOnOpensTheJobAndStartsItsCountersAfresh) {
  device_->linesInFlight = 3;
  device_->blocksRunning = 2;
  for (auto* field : {&device_->resetMarkX, &device_->resetMarkY, &device_->resetCountX,
                      &device_->resetCountY, &device_->zMoveCount}) {
    *field = 5;
  }
  Say("SendBlockMessagesOn\r\n");
  EXPECT_EQ(JobOpen(*device_), 1);
  EXPECT_EQ(LinesInFlight(*device_), 0);
  EXPECT_EQ(BlocksRunning(*device_), 0);
  EXPECT_EQ(device_->resetMarkX, 9);
  EXPECT_EQ(device_->resetMarkY, 9);
  EXPECT_EQ(device_->resetCountX, 0);
  EXPECT_EQ(device_->resetCountY, 0);
  EXPECT_EQ(device_->zMoveCount, 0);
}

TEST_P(Reader, BlockMessagesOffClosesTheJobAndNothingElse) {
  device_->jobOpen = 1;
  device_->linesInFlight = 3;
  device_->blocksRunning = 2;
  Say("SendBlockMessagesOff\r\n");
  EXPECT_EQ(JobOpen(*device_), 0);
  EXPECT_EQ(LinesInFlight(*device_), 3);
  EXPECT_EQ(BlocksRunning(*device_), 2);
}

TEST_P(Reader, ASignOfLifeSetsBothTicksAndConnected) {
  const std::uint32_t before = TickMs();
  Say("SmoothieIsConnected\r\n");
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

TEST_P(Reader, ALimitGivesAHomeThatIsNotKnown) {
  for (auto* home : {&device_->tableHomeX, &device_->tableHomeY, &device_->cutterHome}) *home = -1;
  Say("X_Limit 123\r\nY_Limit  456 steps\r\nZ_Limit 789\r\n");
  EXPECT_EQ(device_->tableHomeX, 123);
  EXPECT_EQ(device_->tableHomeY, 456);
  EXPECT_EQ(device_->cutterHome, 789);
  EXPECT_EQ(device_->switchX, 1);
  EXPECT_EQ(device_->switchY, 1);
  EXPECT_EQ(device_->switchZ, 1);
}

TEST_P(Reader, ALimitLeavesAHomeThatIsKnown) {
  device_->tableHomeX = 0;
  device_->tableHomeY = 5;
  device_->cutterHome = 6;
  Say("X_Limit 123\r\n");
  EXPECT_EQ(device_->tableHomeX, 0);
  EXPECT_EQ(device_->switchX, 1);
  EXPECT_EQ(device_->switchY, 0);
  EXPECT_EQ(device_->switchZ, 0);
  Say("Y_Limit 123\r\nZ_Limit 123\r\n");
  EXPECT_EQ(device_->tableHomeY, 5);
  EXPECT_EQ(device_->cutterHome, 6);
  EXPECT_EQ(device_->switchY, 1);
  EXPECT_EQ(device_->switchZ, 1);
}

TEST_P(Reader, ALimitWithoutANumberIsAHomeAt0) {
  device_->tableHomeX = -1;
  Say("X_Limit\r\n");
  EXPECT_EQ(device_->tableHomeX, 0);
}

TEST_P(Reader, AProbeIsCountedFromWhereTheCutterWas) {
  device_->lastZ = 1000;
  device_->probePending = 1;
  Say("Z_Probe 234\r\n");
  EXPECT_EQ(device_->cutterHome, 1234);
  EXPECT_EQ(device_->probePending, 0);
}

TEST_P(Reader, AProbeBeyond32BitsWraps) {
  device_->lastZ = 1;
  Say("Z_Probe 99999999999\r\n");
  EXPECT_EQ(device_->cutterHome, -2147483647 - 1);
}

TEST_P(Reader, AProbeThatTouchedNothingChangesNothing) {
  device_->cutterHome = 55;
  device_->probePending = 1;
  Say("ZProbe not triggered\r\n");
  EXPECT_EQ(device_->cutterHome, 55);
  EXPECT_EQ(device_->probePending, 1);
}

TEST_P(Reader, KeepsTheIdentity) {
  Say("sd: controller_id is set to 0123456789ABCDEF\r\n");
  EXPECT_TRUE(device_->controllerId.Is(L"0123456789ABCDEF"));
}

TEST_P(Reader, AnIdentityLineWithNothingBehindItStaysWithinIts16Characters) {
  Say("controller_id is set to\r\n");
  EXPECT_TRUE(device_->controllerId.Is(L"ler_id is set to"));
}

TEST_P(Reader, ReadsASwitchReport) {
  device_->switchY = 1;
  Say("min_x:1 min_y:0 min_z:1 pins: Probe: 1\r\n");
  EXPECT_EQ(device_->switchX, 1);
  EXPECT_EQ(device_->switchY, 0);
  EXPECT_EQ(device_->switchZ, 1);
  EXPECT_EQ(device_->switchProbe, 1);
  EXPECT_EQ(device_->switchesRead, 1);
}

TEST_P(Reader, ASwitchReportWithA2ChangesNothing) {
  device_->switchY = 1;
  Say("min_x:1 min_y:0 min_z:2 pins: Probe: 1\r\n");
  EXPECT_EQ(device_->switchX, 0);
  EXPECT_EQ(device_->switchY, 1);
  EXPECT_EQ(device_->switchZ, 0);
  EXPECT_EQ(device_->switchProbe, 0);
  EXPECT_EQ(device_->switchesRead, 0);
}

TEST_P(Reader, EveryLineEndsAtItsOwnLineFeed) {
  device_->blocksRunning = 10;
  device_->linesInFlight = 10;
  Say("QX\r\nBX\r\nEX\r\nQX\r\nBX\r\n");
  EXPECT_EQ(device_->queuedIndex, 2);
  EXPECT_EQ(device_->startedIndex, 2);
  EXPECT_EQ(device_->finishedIndex, 1);
  EXPECT_EQ(BlocksRunning(*device_), 11);
}

TEST_P(Reader, NoiseChangesNothing) {
  Say(std::string{"ok\n\n\r\nok\r\n!!\r\nX step pin 3\r\nY step pin\r\nX step enable\r\n"} +
      "Y step enable\r\nok C: X:0.0000 Y:0.0000 Z:0.0000\n" + std::string{"\0EX\r\n", 5} +
      std::string{"ok\0EX\r\n", 7} + "\x80\xff\xfe\r\n" + std::string(254, 'a') + "\n");
  EXPECT_EQ(BlocksRunning(*device_), 0);
  EXPECT_EQ(device_->connected, 0);
  EXPECT_EQ(device_->finishedIndex, 0);
  EXPECT_EQ(device_->readerRun, 1);
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

TEST_P(Reader, AnAbandonedMutexStillCounts) {
  device_->blocksRunning = 5;
  const HANDLE mutex = device_->mutexes[runMutex];
  std::thread{[&] { WaitForSingleObject(mutex, INFINITE); }}.join();
  Say("EX\r\n");
  EXPECT_EQ(BlocksRunning(*device_), 4);
}

TEST_P(Reader, AMutexThatCannotBeTakenSkipsItsUpdateOnly) {
  HANDLE flight = device_->mutexes[flightMutex];
  HANDLE ring = device_->mutexes[ringMutex];
  device_->mutexes[flightMutex] = nullptr;
  device_->mutexes[ringMutex] = nullptr;
  device_->linesInFlight = 3;
  device_->ackRing[0] = CommandTag::Move;
  Say("QX\r\nBX\r\n");
  EXPECT_EQ(device_->linesInFlight, 3);
  EXPECT_EQ(BlocksRunning(*device_), 1);
  EXPECT_EQ(device_->queuedIndex, 0);
  device_->mutexes[flightMutex] = flight;
  device_->mutexes[ringMutex] = ring;
}

TEST_P(Reader, TellsTheConnectWindow) {
  CallingThreadWindow window;
  device_->connectNotifyWindow = window.Get();
  device_->connectNotifyMessage = WM_APP + 7;
  controller_.Say("SmoothieIsConnected\r\n");
  ASSERT_TRUE(window.WaitForMessages(1));
  EXPECT_EQ(window.Messages()[0].message, WM_APP + 7u);
  EXPECT_EQ(window.Messages()[0].wParam, 0u);
  EXPECT_EQ(window.Messages()[0].lParam, 0);
  EXPECT_EQ(device_->connected, 1);
}

TEST_P(Reader, ALostControllerDoesNotHoldUpADetach) {
  controller_.HangUp();
  DetachLink(*device_, kLinkNone);
  EXPECT_EQ(device_->readerAlive, 0);
}

}  // namespace
}  // namespace k7
