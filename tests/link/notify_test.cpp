// What the host is told of its commands, and what the tools do meanwhile.
#include "link/notify.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "device/module_state.h"
#include "device/polling.h"
#include "device/record_lock.h"
#include "support/attached_device.h"
#include "support/calling_thread_window.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::CallingThreadWindow;
using k7test::FakeController;
using k7test::SentMessage;
using k7test::WaitUntil;
using k7test::Watchdog;

constexpr std::uint32_t kQueued = WM_APP + 1;
constexpr std::uint32_t kStarted = WM_APP + 2;
constexpr std::uint32_t kFinished = WM_APP + 3;

// A host's callback: it keeps what it is told.
class Listener {
 public:
  static void Hear(std::uint32_t message, std::uint64_t context) {
    auto& self = *reinterpret_cast<Listener*>(context);
    const std::lock_guard lock{self.guard_};
    self.messages_.push_back(message);
  }
  std::uint64_t Context() { return reinterpret_cast<std::uint64_t>(this); }
  std::vector<std::uint32_t> Messages() {
    const std::lock_guard lock{guard_};
    return messages_;
  }

 private:
  std::mutex guard_;
  std::vector<std::uint32_t> messages_;
};

class Notify : public testing::Test {
 protected:
  Notify() {
    device_->msgQueued = kQueued;
    device_->msgStarted = kStarted;
    device_->msgFinished = kFinished;
    device_->jobOpen = 1;
  }

  void Listen() {
    device_->notifyContext = listener_.Context();
    device_->notifyCallback = &Listener::Hear;
  }

  void SetTag(CommandTag tag) { device_->ackRing[0] = tag; }

  void RaiseWaitFlag() {
    const RecordLock<waitMutex> lock{*device_};
    device_->waitFlag = 1;
  }
  int WaitFlag() {
    return ReadLocked<waitMutex>(*device_, -1, [&] { return device_->waitFlag; });
  }

  // Says `bytes` and waits until the reader has carried them out.
  void Say(const std::string& bytes) {
    device_->tableHomed = 77;
    controller_.Say(bytes + "TableIsHomedTRUE\r\n");
    ASSERT_TRUE(WaitUntil([&] { return device_->tableHomed == 1; }));
  }

  using Messages = std::vector<std::uint32_t>;

  Watchdog watchdog_;
  Listener listener_;
  FakeController controller_;
  AttachedDevice device_{controller_};
};

TEST_F(Notify, AMoveIsToldAtEveryStage) {
  Listen();
  SetTag(CommandTag::Move);
  Say("QX\r\nBX\r\nEX\r\n");
  EXPECT_EQ(listener_.Messages(), (Messages{kQueued, kStarted, kFinished}));
}

TEST_F(Notify, ALoneDwellIsToldAtEveryStage) {
  Listen();
  SetTag(CommandTag::LoneDwell);
  Say("QX\r\nBX\r\nEX\r\n");
  EXPECT_EQ(listener_.Messages(), (Messages{kQueued, kStarted, kFinished}));
}

TEST_F(Notify, OtherTagsAreNeverTold) {
  Listen();
  for (const CommandTag tag : {CommandTag::None, CommandTag::Plunge, CommandTag::JogStep,
                               CommandTag::Lift, static_cast<CommandTag>(200)}) {
    device_->queuedIndex = device_->startedIndex = device_->finishedIndex = 0;
    SetTag(tag);
    Say("QX\r\nBX\r\nEX\r\n");
    EXPECT_EQ(device_->finishedIndex, 1);
  }
  EXPECT_TRUE(listener_.Messages().empty());
}

TEST_F(Notify, AJogStepChangesOnlyTheRunningCountAndItsIndex) {
  Listen();
  SetTag(CommandTag::JogStep);
  RaiseWaitFlag();
  device_->blocksRunning = 1;
  device_->engraveDelayMs = 1;
  Say("EX\r\n");
  EXPECT_EQ(BlocksRunning(*device_), 0);
  EXPECT_EQ(device_->finishedIndex, 1);
  EXPECT_EQ(WaitFlag(), 1);
  EXPECT_TRUE(listener_.Messages().empty());
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_F(Notify, QuietMovesAndJogsAreSilent) {
  Listen();
  SetTag(CommandTag::Move);
  device_->quietMoves = 1;
  Say("QX\r\nBX\r\nEX\r\n");
  device_->quietMoves = 0;
  device_->jogActive = 1;
  Say("QX\r\nBX\r\nEX\r\n");
  EXPECT_TRUE(listener_.Messages().empty());
  device_->jogActive = 0;
  Say("QX\r\n");
  EXPECT_EQ(listener_.Messages(), Messages{kQueued});  // with the tag that nobody has taken
}

TEST_F(Notify, TheWindowIsToldWithZeros) {
  CallingThreadWindow window;
  device_->ownerWindow = window.Get();
  SetTag(CommandTag::Move);
  controller_.Say("QX\r\nBX\r\nEX\r\n");
  ASSERT_TRUE(window.WaitForMessages(3));
  const DWORD here = GetCurrentThreadId();
  EXPECT_EQ(window.Messages(),
            (std::vector<SentMessage>{
                {kQueued, 0, 0, here}, {kStarted, 0, 0, here}, {kFinished, 0, 0, here}}));
}

TEST_F(Notify, ACallbackIsToldInsteadOfTheWindow) {
  CallingThreadWindow window;
  device_->ownerWindow = window.Get();
  Listen();
  SetTag(CommandTag::Move);
  Say("QX\r\nBX\r\nEX\r\n");
  EXPECT_EQ(listener_.Messages().size(), 3u);
  EXPECT_TRUE(window.Messages().empty());
}

TEST_F(Notify, WithNobodyToTellTheTagsStillAdvance) {
  SetTag(CommandTag::Move);
  Say("QX\r\nBX\r\nEX\r\n");
  EXPECT_EQ(device_->queuedIndex, 1);
  EXPECT_EQ(device_->startedIndex, 1);
  EXPECT_EQ(device_->finishedIndex, 1);
}

TEST_F(Notify, WithNobodyToTellTheToolsAreNotSwitchedEither) {
  device_->cutterMode = kCutterAirZ;
  device_->engraveDelayMs = 1;
  const std::uint32_t dwellsBefore = totalDwellMs;
  for (const CommandTag tag : {CommandTag::Plunge, CommandTag::Lift, CommandTag::LoneDwell}) {
    device_->finishedIndex = 0;
    SetTag(tag);
    RaiseWaitFlag();
    Say("EX\r\n");
    EXPECT_EQ(WaitFlag(), 1);
  }
  EXPECT_TRUE(controller_.Lines().empty());
  EXPECT_EQ(totalDwellMs, dwellsBefore);
}

TEST_F(Notify, AnAirPlungeSwitchesTheHeadOnAndGivesItItsTime) {
  Listen();
  SetTag(CommandTag::Plunge);
  RaiseWaitFlag();
  device_->cutterMode = kCutterAirZ;
  device_->engraveDelayMs = 60;
  const std::uint32_t dwellsBefore = totalDwellMs;
  const std::uint32_t start = TickMs();
  Say("EX\r\n");
  EXPECT_GE(TickMs() - start, 50u);
  EXPECT_EQ(WaitFlag(), 0);
  EXPECT_TRUE(controller_.WaitForLines(1));
  EXPECT_EQ(controller_.Transcript(), "M42\n");
  EXPECT_EQ(totalDwellMs, dwellsBefore);  // a sleep, not a dwell
}

TEST_F(Notify, AnAirPlungeWithTheHeadKeptUpOnlyClearsTheWait) {
  Listen();
  SetTag(CommandTag::Plunge);
  RaiseWaitFlag();
  device_->cutterMode = kCutterAirZ;
  device_->dontLowerAirZ = 1;
  device_->engraveDelayMs = 5000;
  const std::uint32_t start = TickMs();
  Say("EX\r\n");
  EXPECT_LT(TickMs() - start, 4000u);
  EXPECT_EQ(WaitFlag(), 0);
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_F(Notify, AnAirPlungeWithANegativeDelayDoesNotSleep) {
  Listen();
  SetTag(CommandTag::Plunge);
  RaiseWaitFlag();
  device_->cutterMode = kCutterAirZ;
  device_->engraveDelayMs = -1;
  Say("EX\r\n");
  EXPECT_EQ(WaitFlag(), 0);
}

TEST_F(Notify, APlungeOfAnotherToolDwellsAndCountsIt) {
  Listen();
  SetTag(CommandTag::Plunge);
  RaiseWaitFlag();
  device_->cutterMode = kCutterAutomatic;
  device_->engraveDelayMs = 60;
  const std::uint32_t dwellsBefore = totalDwellMs;
  Say("EX\r\n");
  EXPECT_EQ(WaitFlag(), 0);
  EXPECT_GE(totalDwellMs - dwellsBefore, 60u);
  EXPECT_TRUE(controller_.Lines().empty());
  EXPECT_TRUE(listener_.Messages().empty());
}

TEST_F(Notify, APlungeOfAnotherToolWithoutADelayLeavesTheWait) {
  Listen();
  for (const std::int32_t delayMs : {0, -5}) {
    device_->finishedIndex = 0;
    SetTag(CommandTag::Plunge);
    RaiseWaitFlag();
    device_->engraveDelayMs = delayMs;
    Say("EX\r\n");
    EXPECT_EQ(WaitFlag(), 1);
  }
}

TEST_F(Notify, AnAirLiftSwitchesTheHeadOff) {
  Listen();
  SetTag(CommandTag::Lift);
  RaiseWaitFlag();
  device_->cutterMode = kCutterAirZ;
  device_->engraveDelayMs = 5000;
  const std::uint32_t start = TickMs();
  Say("EX\r\n");
  EXPECT_LT(TickMs() - start, 4000u);
  EXPECT_EQ(WaitFlag(), 0);
  EXPECT_TRUE(controller_.WaitForLines(1));
  EXPECT_EQ(controller_.Transcript(), "M43\n");
}

TEST_F(Notify, AnAirLiftWithTheHeadKeptUpOnlyClearsTheWait) {
  Listen();
  SetTag(CommandTag::Lift);
  RaiseWaitFlag();
  device_->cutterMode = kCutterAirZ;
  device_->dontLowerAirZ = 1;
  Say("EX\r\n");
  EXPECT_EQ(WaitFlag(), 0);
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_F(Notify, ALiftOfAnotherToolDoesNothing) {
  Listen();
  SetTag(CommandTag::Lift);
  RaiseWaitFlag();
  device_->cutterMode = kCutterSemiAutomatic;
  Say("EX\r\n");
  EXPECT_EQ(WaitFlag(), 1);
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_F(Notify, ALoneDwellDwellsInEveryModeAndClearsTheWait) {
  Listen();
  for (const std::uint32_t mode : {kCutterNone, kCutterAirZ}) {
    device_->finishedIndex = 0;
    SetTag(CommandTag::LoneDwell);
    RaiseWaitFlag();
    device_->cutterMode = mode;
    device_->engraveDelayMs = 30;
    const std::uint32_t dwellsBefore = totalDwellMs;
    Say("EX\r\n");
    EXPECT_GE(totalDwellMs - dwellsBefore, 30u);
    EXPECT_EQ(WaitFlag(), 0);
  }
  EXPECT_EQ(listener_.Messages(), (Messages{kFinished, kFinished}));
  EXPECT_TRUE(controller_.Lines().empty());
}

TEST_F(Notify, ALoneDwellWithoutADelayIsToldAndLeavesTheWait) {
  Listen();
  SetTag(CommandTag::LoneDwell);
  RaiseWaitFlag();
  device_->engraveDelayMs = 0;
  Say("EX\r\n");
  EXPECT_EQ(WaitFlag(), 1);
  EXPECT_EQ(listener_.Messages(), Messages{kFinished});
}

// The reader waits for the window procedure, and this thread, whose window it is, for the reader.
TEST_F(Notify, AWindowOfTheThreadThatDetachesDoesNotDeadLock) {
  CallingThreadWindow window;
  device_->ownerWindow = window.Get();
  SetTag(CommandTag::Move);
  device_->blocksRunning = 1;
  controller_.Say("EX\r\n");
  ASSERT_TRUE(WaitUntil([&] { return BlocksRunning(*device_) == 0; }));
  DetachLink(*device_, kLinkNone);
  ASSERT_EQ(window.Messages().size(), 1u);
  EXPECT_EQ(window.Messages()[0].message, kFinished);
  EXPECT_EQ(window.Messages()[0].thread, GetCurrentThreadId());
}

TEST_F(Notify, AWindowOfTheThreadThatWaitsDoesNotDeadLock) {
  CallingThreadWindow window;
  device_->ownerWindow = window.Get();
  SetTag(CommandTag::Move);
  controller_.Say("QX\r\nBX\r\nEX\r\nTableIsHomedTRUE\r\n");
  PollUntil(0, [&] { return device_->tableHomed == 1; });
  EXPECT_EQ(window.Messages().size(), 3u);
}

TEST_F(Notify, PostedMessagesStayWhereTheyAreDuringADetach) {
  CallingThreadWindow window;
  PostMessageW(window.Get(), WM_APP + 50, 0, 0);
  DetachLink(*device_, kLinkNone);
  EXPECT_TRUE(window.Messages().empty());
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, window.Get(), WM_APP + 50, WM_APP + 50, PM_REMOVE));
}

TEST(HasListener, IsACallbackOrAWindow) {
  DeviceState record;
  EXPECT_FALSE(HasListener(record));
  NotifyHost(record, kQueued);
  record.ownerWindow = &record;
  EXPECT_TRUE(HasListener(record));
  record.ownerWindow = nullptr;
  record.notifyCallback = &Listener::Hear;
  EXPECT_TRUE(HasListener(record));
}

}  // namespace
}  // namespace k7
