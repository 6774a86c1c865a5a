#include "device/polling.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "base/handles.h"
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

TEST_F(Waits, ForTheReaderLetSentMessagesThroughAndLeavePostedOnesQueued) {
  LinkState link;
  EXPECT_TRUE(WaitForReader(link, [&] { return answered_.load(); }));
  ExpectTheSentMessageAlone();
}

TEST_F(Waits, ForAHandleLetSentMessagesThroughAndLeavePostedOnesQueued) {
  const UniqueHandle never{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  while (!answered_) EXPECT_FALSE(AwaitHandle(never.Get(), 10));
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

// A link with its events, as attach makes them.
struct OpenLink : LinkState {
  OpenLink() { newsEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr); }
  ~OpenLink() { CloseHandle(newsEvent); }
};

TEST(WaitForReader, IsEndedByNewsAtOnce) {
  OpenLink link;
  std::atomic<bool> changed{false};
  std::thread reader{[&] {
    while (link.newsWaiters == 0) std::this_thread::yield();
    changed = true;
    TellNews(link);
  }};
  EXPECT_TRUE(WaitForReader(link, [&] { return changed.load(); }));
  reader.join();
  EXPECT_EQ(link.newsWaiters, 0);
}

TEST(WaitForReader, LooksAgainOfItselfWhenNobodyTells) {
  OpenLink link;
  int looks = 0;
  EXPECT_TRUE(WaitForReader(link, [&] { return ++looks == 5; }));
}

TEST(WaitForReader, EndsWhenTheLinkIsLost) {
  OpenLink link;
  std::thread reader{[&] {
    while (link.newsWaiters == 0) std::this_thread::yield();
    link.lost = 1;
    TellNews(link);
  }};
  EXPECT_FALSE(WaitForReader(link, [] { return false; }));
  reader.join();
}

TEST(TellNews, LeavesTheEventAloneWhileNobodyWaits) {
  OpenLink link;
  TellNews(link);
  EXPECT_EQ(WaitForSingleObject(link.newsEvent, 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

// To signal an event is dear, and a host in a job would be woken by each of a burst of answers.
TEST(TellNews, SignalsTheEventOnceUntilSomebodyHasWokenByIt) {
  OpenLink link;
  NewsWaiter waiter{link};
  TellNews(link);
  EXPECT_EQ(WaitForSingleObject(link.newsEvent, 0), static_cast<DWORD>(WAIT_OBJECT_0));
  TellNews(link);
  EXPECT_EQ(WaitForSingleObject(link.newsEvent, 0), static_cast<DWORD>(WAIT_TIMEOUT));
  waiter.Round();
  TellNews(link);
  EXPECT_EQ(WaitForSingleObject(link.newsEvent, 0), static_cast<DWORD>(WAIT_OBJECT_0));
}

TEST(PauseForTheController, IsCutShortByALostLink) {
  LinkState link;
  link.lost = 1;
  const std::uint32_t start = TickMs();
  Pause(link, 60000);
  EXPECT_LT(TickMs() - start, 30000u);
}

TEST(PauseForTheController, LastsItsTimeOnALinkThatWorks) {
  LinkState link;
  const std::uint64_t startUs = ClockUs();
  Pause(link, 120);
  EXPECT_GE(ClockUs() - startUs, 119000u);
}

// Windows takes a window for hung whose thread has not looked at its messages for five seconds.
TEST(WaitForReader, KeepsWindowsFromTakingTheHostForHung) {
  const HostWindow window{HostWindow::Lives::OnThisThread};
  OpenLink link;
  const std::uint64_t startUs = ClockUs();
  bool hung = false;
  std::atomic<bool> over{false};
  std::thread watcher{[&] {
    while (!over) {
      hung = hung || IsHungAppWindow(static_cast<HWND>(window.Handle()));
      Sleep(100);
    }
  }};
  WaitForReader(link, [&] { return ClockUs() - startUs > 10000000; });
  over = true;
  watcher.join();
  EXPECT_FALSE(hung);
}

TEST(ClockUs, IsFinerThanAMillisecondAndNeverGoesBack) {
  std::uint64_t last = ClockUs();
  std::uint64_t least = ~std::uint64_t{0};
  for (int i = 0; i < 10000; ++i) {
    const std::uint64_t now = ClockUs();
    ASSERT_GE(now, last);
    if (now > last && now - last < least) least = now - last;
    last = now;
  }
  EXPECT_LT(least, 1000u);
}

}  // namespace
}  // namespace k7
