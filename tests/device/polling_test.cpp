#include "device/polling.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "support/host_window.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::HostMessage;
using k7test::HostWindow;
using k7test::Watchdog;

// A reader that notifies by SendMessageW must not dead-lock with a host whose window lives on the
// thread that waits inside the driver.
class Waits : public testing::Test {
 protected:
  // Sends the window a message from another thread; posts it another first.
  Waits() {
    PostMessageW(window_.Handle(), WM_APP + 1, 7, 0);
    sender_ = std::thread{[this] {
      SendMessageW(window_.Handle(), WM_APP, 0, 0);
      answered_ = true;
    }};
  }
  ~Waits() override { sender_.join(); }

  void ExpectTheSentMessageAlone() {
    EXPECT_EQ(window_.Seen(), (std::vector<HostMessage>{{WM_APP, 0, 0}}));
    MSG posted;
    EXPECT_TRUE(PeekMessageW(&posted, window_.Handle(), WM_APP + 1, WM_APP + 1, PM_REMOVE));
  }

  Watchdog watchdog_;
  HostWindow window_{HostWindow::Lives::OnThisThread};
  std::atomic<bool> answered_{false};
  std::thread sender_;
};

TEST_F(Waits, BySpinningLetSentMessagesThroughAndLeavePostedOnesQueued) {
  PollUntil(0, [&] { return answered_.load(); });
  ExpectTheSentMessageAlone();
}

TEST_F(Waits, ByPollingLetSentMessagesThroughAndLeavePostedOnesQueued) {
  PollUntil(10, [&] { return answered_.load(); });
  ExpectTheSentMessageAlone();
}

TEST_F(Waits, OfAGivenTimeLetSentMessagesThroughAndLastTheirTime) {
  std::uint32_t rounds = 0;
  const std::uint32_t start = TickMs();
  while (!answered_) {
    Pause(200);
    ++rounds;
  }
  EXPECT_GE(TickMs() - start, 200u * rounds);
  ExpectTheSentMessageAlone();
}

TEST(ReadLocked, AnswersTheOtherValueWhenThereIsNoMutex) {
  DeviceState record;
  record.linesInFlight = 5;
  EXPECT_EQ(LinesInFlight(record), 0);
  EXPECT_EQ(BlocksRunning(record), 0);
  EXPECT_EQ(JobOpen(record), 0);
  EXPECT_FALSE(MovesRemain(record));
  WaitForFewerInFlight(record, 1);  // does not wait
  ForgetMoves(record);
  EXPECT_EQ(record.linesInFlight, 5);
}

TEST(MovesRemain, WhileALineHasNotBegunOrABegunOneHasNotEnded) {
  DeviceState record;
  for (void*& mutex : record.mutexes) mutex = CreateMutexW(nullptr, FALSE, nullptr);
  constexpr struct {
    std::int32_t linesInFlight, blocksRunning;
    bool want;
  } kCases[] = {{0, 0, false}, {1, 0, true}, {0, 1, true}, {-1, -1, false}, {1, -1, true}};
  for (const auto& c : kCases) {
    record.linesInFlight = c.linesInFlight;
    record.blocksRunning = c.blocksRunning;
    EXPECT_EQ(MovesRemain(record), c.want) << c.linesInFlight << ' ' << c.blocksRunning;
  }
  ForgetMoves(record);
  EXPECT_FALSE(MovesRemain(record));
  for (void* const mutex : record.mutexes) CloseHandle(mutex);
}

TEST(IsIdle, WithAConnectionAndNoJob) {
  DeviceState record;
  EXPECT_FALSE(IsIdle(record));
  record.connected = 1;
  EXPECT_TRUE(IsIdle(record));
  record.mutexes[jobMutex] = CreateMutexW(nullptr, FALSE, nullptr);
  record.jobOpen = 1;
  EXPECT_FALSE(IsIdle(record));
  CloseHandle(record.mutexes[jobMutex]);
}

TEST(ClearAliveTicks, ClearsThemEvenWithoutTheMutex) {
  DeviceState record;
  record.lastCheckTick = 1;
  record.lastAnswerTick = 2;
  ClearAliveTicks(record);
  EXPECT_EQ(record.lastCheckTick, 0u);
  EXPECT_EQ(record.lastAnswerTick, 0u);
}

TEST(RecordLock, CountsAnAbandonedMutexAsHeldAndReleasesIt) {
  DeviceState record;
  const HANDLE mutex = CreateMutexW(nullptr, FALSE, nullptr);
  record.mutexes[flightMutex] = mutex;
  record.linesInFlight = 3;
  std::thread{[&] { WaitForSingleObject(mutex, INFINITE); }}.join();
  {
    const RecordLock<flightMutex> lock{record};
    EXPECT_TRUE(static_cast<bool>(lock));
    EXPECT_TRUE(lock.WasAbandoned());
  }
  bool free = false;
  std::thread{[&] {
    free = WaitForSingleObject(mutex, 0) == WAIT_OBJECT_0;
    if (free) ReleaseMutex(mutex);
  }}.join();
  EXPECT_TRUE(free);
  CloseHandle(mutex);
}

}  // namespace
}  // namespace k7
