#include "device/polling.h"
#include "device/progress.h"

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

}  // namespace
}  // namespace k7
