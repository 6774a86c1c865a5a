#include "motion/move.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>

#include "device/polling.h"
#include "device/progress.h"
#include "support/host_window.h"
#include "support/message_box.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::HostWindow;
using k7test::MessageBoxAnswer;
using k7test::TestMachine;
using k7test::WaitUntil;

constexpr wchar_t kCaption[] = L"Table Surface/Buffer Violation";

std::uint32_t Move(DeviceState& record, std::int32_t x, std::int32_t y) {
  return SendMove(record, {.x = x, .y = y});
}

std::uint32_t MoveZ(DeviceState& record, std::int32_t z) {
  return SendMove(record, {.z = z});
}

TEST(SendMove, SendsOneLineWithTheAxesThatChange) {
  TestMachine machine;
  EXPECT_EQ(Move(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 X12.700000 Y25.400000\n");
  EXPECT_EQ(machine->position.last.x, 2000);
  EXPECT_EQ(machine->position.last.y, 4000);
  EXPECT_EQ(Move(*machine, 2000, 8000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Y50.799999\n");
}

TEST(SendMove, ToThePositionLastSentSendsNothingAndReturnsZero) {
  TestMachine machine;
  machine.StandAt(2000, 4000, 0, kCutterUp);
  EXPECT_EQ(Move(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(LinesInFlight(machine->job), 0);
}

TEST(SendMove, WithoutAxesOrConnectionDoesNothing) {
  TestMachine machine;
  EXPECT_EQ(SendMove(*machine, {}), kStatusNothing);
  machine->link.connected = 0;
  EXPECT_EQ(Move(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->position.last.x, 0);
}

TEST(CheckMove, TellsWhetherAnythingWouldMoveAndChangesNothing) {
  TestMachine machine;
  EXPECT_EQ(CheckMove(*machine, {.x = 2000}), kStatusSent);
  EXPECT_EQ(CheckMove(*machine, {.x = 0}), kStatusNothing);
  EXPECT_EQ(CheckMove(*machine, {}), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->position.last.x, 0);
  EXPECT_EQ(LinesInFlight(machine->job), 0);
  EXPECT_TRUE(machine.Tags().empty());
}

TEST(SendMove, CountsEachLineItSends) {
  TestMachine machine;
  machine.controller.AnswerMoves(false);
  Move(*machine, 2000, 0);
  Move(*machine, 2000, 0);
  Move(*machine, 4000, 0);
  EXPECT_EQ(LinesInFlight(machine->job), 2);
}

TEST(SendMove, PushesItsTagOnlyForALineThatGoesOut) {
  TestMachine machine;
  EXPECT_EQ(SendMove(*machine, {.z = 3000}, CommandTag::Lift), kStatusSent);
  EXPECT_EQ(SendMove(*machine, {.z = 3000}, CommandTag::Plunge), kStatusNothing);
  EXPECT_EQ(SendMove(*machine, {.z = 9000}, CommandTag::Plunge), kStatusRefused);
  EXPECT_EQ(Move(*machine, 2000, 0), kStatusSent);  // untagged
  EXPECT_EQ(machine.Tags(), (std::vector<int>{4}));
}

TEST(SendMove, TheTagStandsInTheRingBeforeTheLineIsOnTheWire) {
  TestMachine machine;
  std::atomic<int> tagSeen{-1};
  machine.controller.OnPrefix("G0 X", [&](k7test::FakeController&, const std::string&) {
    const auto ring = machine->job.tagRing.Lock();
    tagSeen = ring->ackRingIndex == 1 ? static_cast<int>(ring->ackRing[0]) : 0;
  });
  SendMove(*machine, {.x = 2000}, CommandTag::Move);
  EXPECT_TRUE(WaitUntil([&] { return tagSeen != -1; }));
  EXPECT_EQ(tagSeen, 1);
}

TEST(SendMove, AnAnswerThatIsFasterThanTheCountLeavesItAtZero) {
  TestMachine machine;
  machine.OpenJob();
  for (std::int32_t i = 1; i <= 200; ++i) Move(*machine, 10 * i, 0);
  EXPECT_TRUE(machine.WaitUntilIdle());
}

TEST(SendMove, WithoutALinkThereIsNoWait) {
  DeviceState record;  // never attached
  k7test::GiveDefaults(record);
  record.link.connected = 1;
  record.job.linesInFlight.Alone() = 40;
  EXPECT_EQ(Move(record, 2000, 0), kStatusSent);
  EXPECT_EQ(record.job.linesInFlight.Alone(), 40);  // the guarded update is skipped
}

TEST(SendMove, WithoutAWindowASurfaceViolationIsRefusedWithoutADialog) {
  TestMachine machine;
  EXPECT_EQ(MoveZ(*machine, 9000), kStatusRefused);
  EXPECT_FALSE(k7test::MessageBoxIsShown(kCaption));
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->position.last.z, 0);
}

TEST(SendMove, WithAWindowASurfaceViolationIsShownToTheUser) {
  constexpr struct {
    std::int32_t z;
    const wchar_t* text;
  } kCases[] = {
      {9000,
       L"Current settings will violate the table zero and table buffer settings by 0.250 inches"},
      // KEEP: in the number text of the lines, a tenth of an inch.
      {8400,
       L"Current settings will violate the table zero and table buffer settings by 0.0100 inches"},
  };
  for (const auto& c : kCases) {
    TestMachine machine;
    const HostWindow window{HostWindow::Lives::OnThisThread};
    machine->notify.ownerWindow = window.Handle();
    MessageBoxAnswer user{kCaption};
    EXPECT_EQ(MoveZ(*machine, c.z), kStatusRefused);
    ASSERT_TRUE(user.Appeared());
    EXPECT_EQ(user.Text(), c.text);
    EXPECT_EQ(user.Owner(), window.Handle());
    EXPECT_EQ(user.Buttons(), (std::vector<int>{IDOK}));
    EXPECT_EQ(machine.Sent(), "");
  }
}

TEST(SendMove, ARefusedMoveHasAlreadyTakenItsXAndYWhenItWasToBeSent) {
  TestMachine machine;
  EXPECT_EQ(CheckMove(*machine, {.x = 2000, .y = 4000, .z = 9000}), kStatusRefused);
  EXPECT_EQ(machine->position.last.x, 0);
  EXPECT_EQ(machine->position.last.y, 0);
  EXPECT_EQ(SendMove(*machine, {.x = 2000, .y = 4000, .z = 9000}), kStatusRefused);
  EXPECT_EQ(machine->position.last.x, 2000);
  EXPECT_EQ(machine->position.last.y, 4000);
  EXPECT_EQ(machine->position.last.z, 0);
  EXPECT_EQ(machine.Sent(), "");
}

TEST(SendMove, AJogAndTheAutomaticModeMayPassTheSurface) {
  TestMachine machine;
  machine->jog.jogActive = 1;
  EXPECT_EQ(MoveZ(*machine, 9000), kStatusSent);
  machine->jog.jogActive = 0;
  EXPECT_EQ(MoveZ(*machine, 9000), kStatusRefused);
  machine->tools.cutterMode = kCutterAutomatic;
  EXPECT_EQ(MoveZ(*machine, 9100), kStatusSent);
}

TEST(SendMove, APositionThatCannotBeExpressedIsNotSent) {
  TestMachine machine;
  machine->position.stepsPerMm.x = 0.0f;
  EXPECT_EQ(Move(*machine, 2000, 0), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
}

TEST(SetFeedRate, SendsNothingWhileTheTextStaysTheSame) {
  TestMachine machine;
  SetFeedRate(*machine, 1.0f);
  SetFeedRate(*machine, 1.0f);
  SetFeedRate(*machine, 1.0000001f);  // the same three decimals
  EXPECT_EQ(machine.Sent(), "G0 F1524.000\n");
  EXPECT_STREQ(machine->position.lastFeedText, "1524.000");
  SetFeedRate(*machine, 0.5f);
  SetFeedRate(*machine, 1.0f);
  EXPECT_EQ(machine.Sent(), "G0 F762.000\nG0 F1524.000\n");
}

TEST(SetFeedRate, IsNotCountedAmongTheLinesInFlight) {
  TestMachine machine;
  SetFeedRate(*machine, 1.0f);
  EXPECT_EQ(LinesInFlight(machine->job), 0);
}

TEST(SetFeedRate, WithoutAConnectionNeitherSendsNorRemembers) {
  TestMachine machine;
  machine->link.connected = 0;
  SetFeedRate(*machine, 1.0f);
  EXPECT_STREQ(machine->position.lastFeedText, "");
  machine->link.connected = 1;
  SetFeedRate(*machine, 1.0f);
  EXPECT_EQ(machine.Sent(), "G0 F1524.000\n");
}

TEST(SetMaxSpeeds, SendsOneLine) {
  TestMachine machine;
  SetMaxSpeeds(machine->link, 20.0f, 20.0f, 20.0f);
  EXPECT_EQ(machine.Sent(), "M203 X30480 Y30480 Z30480\n");
  machine->link.connected = 0;
  SetMaxSpeeds(machine->link, 1.0f, 1.0f, 1.0f);
  EXPECT_EQ(machine.Sent(), "");
}

}  // namespace
}  // namespace k7
