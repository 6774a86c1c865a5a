#include "link/queue.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "device/polling.h"
#include "link/link.h"
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

// A controller that takes nothing, behind a link that holds little.
class Writes : public testing::TestWithParam<std::uint32_t> {
 protected:
  static constexpr int kBufferBytes = 512;

  void SetUp() override { controller_.StopReading(); }

  // Sends until a line is outstanding. What was sent; empty when the link takes anything.
  std::string Fill(DeviceState& record) {
    std::string sent;
    for (int i = 0; i < 400 && !record.link.writeQueue.Alone()->HasOutstanding(); ++i) {
      const std::string line = std::to_string(i) + std::string(1 << 16, 'f') + "\n";
      SendLine(record.link, line.c_str());
      sent += line;
    }
    return record.link.writeQueue.Alone()->HasOutstanding() ? sent : "";
  }

  Watchdog watchdog_;
  FakeController controller_{GetParam(), kBufferBytes};
};

INSTANTIATE_TEST_SUITE_P(, Writes, k7test::kBothLinks, k7test::LinkName);

TEST_P(Writes, ToASlowControllerArriveWholeAndInOrder) {
  AttachedDevice device{controller_};
  std::string sent = Fill(*device);
  ASSERT_FALSE(sent.empty());
  // Each line in the same storage, overwritten at once: the queue must live on its own copy.
  char line[64];
  for (int i = 0; i < 5; ++i) {
    std::snprintf(line, sizeof line, "G0 X%d.000000\n", i);
    sent += line;
    SendLine(device->link, line);
    std::snprintf(line, sizeof line, "overwritten overwritten\n");
  }
  controller_.ResumeReading();
  EXPECT_TRUE(WaitUntil([&] { return controller_.Transcript().size() >= sent.size(); }));
  EXPECT_TRUE(controller_.Transcript() == sent);  // megabytes: not to be printed
  EXPECT_TRUE(WaitUntil([&] { return !device->link.writeQueue.Alone()->HasOutstanding(); }));
  EXPECT_EQ(device->link.readerRun, 1);
}

TEST_P(Writes, FromSeveralThreadsKeepEachLineWholeAndEachThreadsOrder) {
  AttachedDevice device{controller_};
  ASSERT_FALSE(Fill(*device).empty());
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 4; ++i) {
        const std::string line = "T" + std::to_string(t) + " N" + std::to_string(i) + "\n";
        SendLine(device->link, line.c_str());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto ofThread = [&](int t) {
    std::string all;
    for (const std::string& line : controller_.Lines()) {
      if (line.rfind("T" + std::to_string(t) + " ", 0) == 0) all += line;
    }
    return all;
  };
  controller_.ResumeReading();
  for (int t = 0; t < 3; ++t) {
    std::string want;
    for (int i = 0; i < 4; ++i) {
      want += "T" + std::to_string(t) + " N" + std::to_string(i) + "\n";
    }
    EXPECT_TRUE(WaitUntil([&] { return ofThread(t) == want; })) << ofThread(t);
  }
}

TEST_P(Writes, OutliveTheThreadThatSentThem) {
  AttachedDevice device{controller_};
  std::string sent;
  std::thread{[&] {
    sent = Fill(*device);
    SendLine(device->link, "M18\n");
  }}.join();
  ASSERT_FALSE(sent.empty());
  sent += "M18\n";
  controller_.ResumeReading();
  EXPECT_TRUE(WaitUntil([&] { return controller_.Transcript().size() >= sent.size(); }));
  EXPECT_TRUE(controller_.Transcript() == sent);  // megabytes: not to be printed
}

// Windows breaks off the writes of a thread that has ended; the reader's read goes with them here.
TEST_P(Writes, ThatAreBrokenOffAreStartedAgain) {
  AttachedDevice device{controller_};
  std::string sent = Fill(*device);
  ASSERT_FALSE(sent.empty());
  CancelIoEx(controller_.DriverEnd(), nullptr);
  SendLine(device->link, "M18\n");
  sent += "M18\n";
  controller_.ResumeReading();
  EXPECT_TRUE(WaitUntil([&] { return controller_.Transcript().size() >= sent.size(); }));
  EXPECT_TRUE(controller_.Transcript() == sent);  // megabytes: not to be printed
  controller_.Say("TableIsHomedTRUE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return device->position.tableHomed == 1; }));
}

TEST_P(Writes, ASenderWaitsAtMost100MsForALineThatIsNotTaken) {
  AttachedDevice device{controller_};
  ASSERT_FALSE(Fill(*device).empty());
  const std::uint32_t start = TickMs();
  SendLine(device->link, "G21\n");
  const std::uint32_t tookMs = TickMs() - start;
  EXPECT_GE(tookMs, 80u);
  EXPECT_LT(tookMs, 100u + 400u);
  EXPECT_EQ(device->link.readerRun, 1);  // the line is late, not lost
}

TEST_P(Writes, GoOutAgainByTheReaderAloneWhenNothingElseIsSent) {
  AttachedDevice device{controller_};
  ASSERT_FALSE(Fill(*device).empty());
  SendLine(device->link, "M106\n");
  SendLine(device->link, "M107\n");
  controller_.ResumeReading();
  EXPECT_TRUE(controller_.WaitForLine("M107\n"));
}

TEST_P(Writes, ThatAreNeverTakenDoNotHoldUpADetach) {
  AttachedDevice device{controller_};
  ASSERT_FALSE(Fill(*device).empty());
  SendLine(device->link, "G21\n");
  const std::uint32_t start = TickMs();
  DetachLink(*device, kLinkNone);
  EXPECT_LT(TickMs() - start, 700u + 800u);
  EXPECT_EQ(device->link.linkHandle, nullptr);
}

TEST_P(Writes, LinesThatAreSentWhileTheReaderIsStoppedStillGoOut) {
  AttachedDevice device{controller_};
  controller_.ResumeReading();
  device->link.readerRun = 0;
  controller_.Nudge();
  EXPECT_TRUE(WaitUntil([&] { return device->link.readerAlive == 0; }));
  SendLine(device->link, "M18\n");
  EXPECT_TRUE(controller_.WaitForLine("M18\n"));
}

// A line must be waited for, and fail, within the 100 ms in which its sender looks: tried until the
// far end was quick enough.
TEST_P(Writes, ALineWhoseWriteFailsStopsTheReader) {
  bool stopped = false;
  std::uint32_t tookMs = 0;
  for (int attempt = 0; attempt < 10 && !stopped; ++attempt) {
    FakeController controller{GetParam(), kBufferBytes};
    controller.StopReading();
    AttachedDevice device{controller};
    std::thread puller{[&] {
      WaitUntil([&] { return device->link.writeQueue.Alone()->HasOutstanding(); });
      controller.HangUp();
    }};
    std::uint32_t start = TickMs();
    const std::string line(1 << 22, 'x');
    SendLine(device->link, line.c_str());
    tookMs = TickMs() - start;
    puller.join();
    stopped = device->link.readerRun == 0;
  }
  EXPECT_TRUE(stopped);
  EXPECT_GE(tookMs, 240u);  // with the pause that keeps a sender from hammering a lost link
}

TEST_P(Writes, ALineThatIsRefusedAtOnceIsDroppedSilently) {
  AttachedDevice device{controller_};
  controller_.HangUp();
  SendLine(device->link, "G21\n");
  SendLine(device->link, "G90\n");
  EXPECT_EQ(device->link.readerRun, 1);
  EXPECT_EQ(device->link.linkHandle, controller_.DriverEnd());
}

}  // namespace
}  // namespace k7
