// What the host is told of its commands, and what the tools do meanwhile.
#include "link/notify.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <mutex>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "device/guarded.h"
#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/reply_actions.h"
#include "support/attached_device.h"
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

constexpr std::uint32_t kQueued = WM_APP + 1;
constexpr std::uint32_t kStarted = WM_APP + 2;
constexpr std::uint32_t kFinished = WM_APP + 3;
constexpr std::uint32_t kClockStepMs = 10;  // two looks at the clock may miss this much

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
    device_->notify.msgQueued = kQueued;
    device_->notify.msgStarted = kStarted;
    device_->notify.msgFinished = kFinished;
    device_->job.jobOpen.Alone() = 1;
  }

  void Listen(Listener& listener) {
    device_->notify.notifyContext = listener.Context();
    device_->notify.notifyCallback = &Listener::Hear;
  }

  void SetTag(CommandTag tag) { device_->job.tagRing.Alone().ackRing[0] = tag; }

  // Brings the reader into a message to this window, which nobody takes yet.
  void HaveTheReaderTell(const HostWindow& window) {
    device_->notify.ownerWindow = window.Handle();
    SetTag(CommandTag::Move);
    device_->job.blocksRunning.Alone() = 1;
    controller_.Say("EX\r\n");
    ASSERT_TRUE(WaitUntil([&] { return BlocksRunning(device_->job) == 0; }));
  }

  using Messages = std::vector<std::uint32_t>;

  Watchdog watchdog_;
  Listener listener_;
  FakeController controller_;
  AttachedDevice device_{controller_};
};

TEST_F(Notify, AMoveAndALoneDwellAreToldAtEveryStage) {
  for (const CommandTag tag : {CommandTag::Move, CommandTag::LoneDwell}) {
    Listener listener;
    Listen(listener);
    device_->job.tagRing.Alone().queuedIndex = device_->job.tagRing.Alone().startedIndex =
        device_->job.tagRing.Alone().finishedIndex = 0;
    SetTag(tag);
    ASSERT_TRUE(device_.Hear("QX\r\nBX\r\nEX\r\n"));
    EXPECT_EQ(listener.Messages(), (Messages{kQueued, kStarted, kFinished}));
  }
}

// A sender waits for room, which the begin of a move makes, or for the end of all moves.
TEST_F(Notify, TheEndOfAMoveWakesASenderWhenNoneRemains) {
  const NewsWaiter sender{device_->link};
  const auto isWoken = [&] {
    device_->link.newsTold = 0;
    return WaitForSingleObject(device_->link.newsEvent, 0) == WAIT_OBJECT_0;
  };
  device_->job.linesInFlight.Set(1);
  device_->job.blocksRunning.Set(1);
  HandleLine(*device_, "EX\r\n");
  EXPECT_FALSE(isWoken());
  HandleLine(*device_, "BX\r\n");
  EXPECT_TRUE(isWoken());
  HandleLine(*device_, "EX\r\n");
  EXPECT_TRUE(isWoken());
}

// The system's clock ticks every 15.6 ms: by it a dwell would leave marks of different depths.
TEST_F(Notify, ADwellLastsItsTimeToAMillisecond) {
  Listen(listener_);
  device_->tools.cutterMode = kCutterAutomatic;
  device_->tools.engraveDelayMs = 20;
  std::uint64_t shortestUs = ~std::uint64_t{0};
  for (int i = 0; i < 100; ++i) {
    device_->job.tagRing.Alone().finishedIndex = 0;
    SetTag(CommandTag::Plunge);
    const std::uint64_t startUs = ClockUs();
    HandleLine(*device_, "EX\r\n");
    const std::uint64_t tookUs = ClockUs() - startUs;
    ASSERT_GE(tookUs, 20000u);
    if (tookUs < shortestUs) shortestUs = tookUs;  // the others may share the processor
  }
  EXPECT_LT(shortestUs, 21000u);
}

TEST_F(Notify, OtherTagsAreNeverTold) {
  Listen(listener_);
  for (const CommandTag tag : {CommandTag::None, CommandTag::Plunge, CommandTag::JogStep,
                               CommandTag::Lift, static_cast<CommandTag>(200)}) {
    device_->job.tagRing.Alone().queuedIndex = device_->job.tagRing.Alone().startedIndex =
        device_->job.tagRing.Alone().finishedIndex = 0;
    SetTag(tag);
    ASSERT_TRUE(device_.Hear("QX\r\nBX\r\nEX\r\n"));
    EXPECT_EQ(device_->job.tagRing.Alone().finishedIndex, 1);
  }
  EXPECT_TRUE(listener_.Messages().empty());
}

TEST_F(Notify, QuietMovesAndJogsAreSilent) {
  Listen(listener_);
  SetTag(CommandTag::Move);
  device_->job.quietMoves = 1;
  ASSERT_TRUE(device_.Hear("QX\r\nBX\r\nEX\r\n"));
  device_->job.quietMoves = 0;
  device_->jog.jogActive = 1;
  ASSERT_TRUE(device_.Hear("QX\r\nBX\r\nEX\r\n"));
  EXPECT_TRUE(listener_.Messages().empty());
  device_->jog.jogActive = 0;
  ASSERT_TRUE(device_.Hear("QX\r\n"));
  EXPECT_EQ(listener_.Messages(), Messages{kQueued});  // with the tag that nobody has taken
}

TEST_F(Notify, TheWindowIsToldWithZeros) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  device_->notify.ownerWindow = window.Handle();
  SetTag(CommandTag::Move);
  controller_.Say("QX\r\nBX\r\nEX\r\n");
  ASSERT_TRUE(window.WaitFor(kFinished));
  EXPECT_EQ(window.Seen(),
            (std::vector<HostMessage>{{kQueued, 0, 0}, {kStarted, 0, 0}, {kFinished, 0, 0}}));
}

TEST_F(Notify, ACallbackIsToldInsteadOfTheWindow) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  device_->notify.ownerWindow = window.Handle();
  Listen(listener_);
  SetTag(CommandTag::Move);
  ASSERT_TRUE(device_.Hear("QX\r\nBX\r\nEX\r\n"));
  EXPECT_EQ(listener_.Messages().size(), 3u);
  EXPECT_TRUE(window.Seen().empty());
}

TEST_F(Notify, WithNobodyToTellTheTagsStillAdvance) {
  SetTag(CommandTag::Move);
  ASSERT_TRUE(device_.Hear("QX\r\nBX\r\nEX\r\n"));
  EXPECT_EQ(device_->job.tagRing.Alone().queuedIndex, 1);
  EXPECT_EQ(device_->job.tagRing.Alone().startedIndex, 1);
  EXPECT_EQ(device_->job.tagRing.Alone().finishedIndex, 1);
}

// What the end of a tracked line does to the tool, and what the host is told of it.
struct ToolCase {
  const char* name;
  CommandTag tag;
  std::uint32_t cutterMode;
  std::int32_t delayMs;
  std::uint8_t dontLowerAirZ;
  bool hostListens;

  std::uint8_t waitFlag;       // raised before
  const char* sent;            // to the controller
  std::uint32_t sleepsMs;      // at least; below 4 s more
  std::uint32_t dwellsMs;      // at least; 0: none
  const char* finishedIsTold;  // "" or "finished"
};

void PrintTo(const ToolCase& row, std::ostream* out) {
  *out << row.name;
}

constexpr CommandTag kPlunge = CommandTag::Plunge, kLift = CommandTag::Lift,
                     kLoneDwell = CommandTag::LoneDwell, kJogStep = CommandTag::JogStep;

// clang-format off
constexpr ToolCase kToolCases[] = {
    {"AnAirPlungeSwitchesTheHeadOnAndGivesItItsTime",
     kPlunge, kCutterAirZ, 60, 0, true, 0, "M42\n", 60, 0, ""},  // a sleep, not a dwell
    {"AnAirPlungeWithTheHeadKeptUpOnlyClearsTheWait",
     kPlunge, kCutterAirZ, 5000, 1, true, 0, "", 0, 0, ""},
    {"AnAirPlungeWithANegativeDelayDoesNotSleep",
     kPlunge, kCutterAirZ, -1, 0, true, 0, "M42\n", 0, 0, ""},
    {"APlungeOfAnotherToolDwellsAndCountsIt",
     kPlunge, kCutterAutomatic, 60, 0, true, 0, "", 60, 60, ""},
    {"APlungeOfAnotherToolWithADelayOf1Dwells",
     kPlunge, kCutterAutomatic, 1, 0, true, 0, "", 1, 1, ""},
    {"APlungeOfAnotherToolWithoutADelayLeavesTheWait",
     kPlunge, kCutterAutomatic, 0, 0, true, 1, "", 0, 0, ""},
    {"APlungeOfAnotherToolWithANegativeDelayLeavesTheWait",
     kPlunge, kCutterAutomatic, -5, 0, true, 1, "", 0, 0, ""},
    {"AnAirLiftSwitchesTheHeadOff",
     kLift, kCutterAirZ, 5000, 0, true, 0, "M43\n", 0, 0, ""},
    {"AnAirLiftWithTheHeadKeptUpOnlyClearsTheWait",
     kLift, kCutterAirZ, 5000, 1, true, 0, "", 0, 0, ""},
    {"ALiftOfAnotherToolDoesNothing",
     kLift, kCutterSemiAutomatic, 5000, 0, true, 1, "", 0, 0, ""},
    {"ALoneDwellDwellsAndClearsTheWait",
     kLoneDwell, kCutterNone, 30, 0, true, 0, "", 30, 30, "finished"},
    {"ALoneDwellOfAnAirHeadIsTheSame",
     kLoneDwell, kCutterAirZ, 30, 0, true, 0, "", 30, 30, "finished"},
    {"ALoneDwellWithoutADelayIsToldAndLeavesTheWait",
     kLoneDwell, kCutterNone, 0, 0, true, 1, "", 0, 0, "finished"},
    {"AJogStepDoesNothing",
     kJogStep, kCutterAirZ, 1, 0, true, 1, "", 0, 0, ""},
    // KEEP: with nobody to tell, the tools are not switched either.
    {"AnAirPlungeWithNobodyToTellDoesNothing",
     kPlunge, kCutterAirZ, 1, 0, false, 1, "", 0, 0, ""},
    {"AnAirLiftWithNobodyToTellDoesNothing",
     kLift, kCutterAirZ, 1, 0, false, 1, "", 0, 0, ""},
    {"ALoneDwellWithNobodyToTellDoesNothing",
     kLoneDwell, kCutterAirZ, 1, 0, false, 1, "", 0, 0, ""},
};
// clang-format on

class ToolAtTheEndOfItsLine : public Notify, public testing::WithParamInterface<ToolCase> {};

INSTANTIATE_TEST_SUITE_P(, ToolAtTheEndOfItsLine, testing::ValuesIn(kToolCases),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST_P(ToolAtTheEndOfItsLine, DoesThis) {
  const ToolCase& row = GetParam();
  if (row.hostListens) Listen(listener_);
  SetTag(row.tag);
  device_->tools.cutterMode = row.cutterMode;
  device_->tools.engraveDelayMs = row.delayMs;
  device_->tools.dontLowerAirZ = row.dontLowerAirZ;
  device_->job.blocksRunning.Alone() = 1;
  device_->job.waitFlag.Alone() = 1;
  const std::uint32_t dwellsBefore = totalDwellMs;
  const std::uint32_t start = TickMs();
  ASSERT_TRUE(device_.Hear("EX\r\n"));
  const std::uint32_t tookMs = TickMs() - start;
  EXPECT_GE(tookMs + kClockStepMs, row.sleepsMs);
  EXPECT_LT(tookMs, row.sleepsMs + 4000u);
  if (row.dwellsMs == 0) {
    EXPECT_EQ(totalDwellMs, dwellsBefore);
  } else {
    EXPECT_GE(totalDwellMs - dwellsBefore, row.dwellsMs);
  }
  EXPECT_EQ(BlocksRunning(device_->job), 0);
  EXPECT_EQ(device_->job.tagRing.Alone().finishedIndex, 1);
  EXPECT_EQ(device_->job.waitFlag.ValueOr(-1), row.waitFlag);
  EXPECT_EQ(listener_.Messages(), *row.finishedIsTold ? Messages{kFinished} : Messages{});
  SendLine(device_->link, "end\n");  // what was sent before has arrived before
  ASSERT_TRUE(controller_.WaitForLine("end\n"));
  EXPECT_EQ(controller_.Transcript(), row.sent + std::string{"end\n"});
}

// The reader waits for the window procedure, and this thread, whose window it is, for the reader.
TEST_F(Notify, AWindowOfTheThreadThatDetachesDoesNotDeadLock) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  HaveTheReaderTell(window);
  DetachLink(*device_, kLinkNone);
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{kFinished, 0, 0}}));
}

// The same when the host has overwritten the reader's mark of life, which detach looks at first.
TEST_F(Notify, AnOverwrittenMarkOfLifeDoesNotDeadLockADetachEither) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  HaveTheReaderTell(window);
  device_->link.readerAlive = 0;
  DetachLink(*device_, kLinkNone);
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{kFinished, 0, 0}}));
}

TEST_F(Notify, AWindowOfTheThreadThatWaitsDoesNotDeadLock) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  device_->notify.ownerWindow = window.Handle();
  SetTag(CommandTag::Move);
  controller_.Say("QX\r\nBX\r\nEX\r\nTableIsHomedTRUE\r\n");
  WaitForReader(device_->link, [&] { return device_->position.tableHomed == 1; });
  EXPECT_EQ(window.Seen().size(), 3u);
}

TEST_F(Notify, PostedMessagesStayWhereTheyAreDuringADetach) {
  HostWindow window{HostWindow::Lives::OnThisThread};
  PostMessageW(window.Handle(), WM_APP + 50, 0, 0);
  DetachLink(*device_, kLinkNone);
  EXPECT_TRUE(window.Seen().empty());
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, window.Handle(), WM_APP + 50, WM_APP + 50, PM_REMOVE));
}

TEST(HasListener, IsACallbackOrAWindow) {
  DeviceState record;
  EXPECT_FALSE(HasListener(record.notify));
  NotifyHost(record.notify, kQueued);
  record.notify.ownerWindow = &record;
  EXPECT_TRUE(HasListener(record.notify));
  record.notify.ownerWindow = nullptr;
  record.notify.notifyCallback = &Listener::Hear;
  EXPECT_TRUE(HasListener(record.notify));
}

}  // namespace
}  // namespace k7
