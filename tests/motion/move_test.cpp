#include "motion/move.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>

#include "device/polling.h"
#include "device/record_lock.h"
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
  return EmitMove(record, &x, &y, nullptr, 1);
}

std::uint32_t MoveZ(DeviceState& record, std::int32_t z) {
  return EmitMove(record, nullptr, nullptr, &z, 1);
}

TEST(EmitMove, SendsOneLineWithTheAxesThatChange) {
  TestMachine machine;
  EXPECT_EQ(Move(*machine, 2000, 4000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 X12.700000 Y25.400000\n");
  EXPECT_EQ(machine->lastX, 2000);
  EXPECT_EQ(machine->lastY, 4000);
  EXPECT_EQ(Move(*machine, 2000, 8000), kStatusSent);
  EXPECT_EQ(machine.Sent(), "G0 Y50.799999\n");
}

TEST(EmitMove, ToThePositionLastSentSendsNothingAndReturnsZero) {
  TestMachine machine;
  machine.StandAt(2000, 4000, 0, kCutterUp);
  EXPECT_EQ(Move(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(LinesInFlight(*machine), 0);
}

TEST(EmitMove, WithoutAxesOrConnectionDoesNothing) {
  TestMachine machine;
  EXPECT_EQ(EmitMove(*machine, nullptr, nullptr, nullptr, 1), kStatusNothing);
  machine->connected = 0;
  EXPECT_EQ(Move(*machine, 2000, 4000), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->lastX, 0);
}

TEST(EmitMove, ADryRunTellsWhetherAnythingWouldMoveAndChangesNothing) {
  TestMachine machine;
  const std::int32_t x = 2000;
  for (const std::uint8_t send : std::initializer_list<std::uint8_t>{0, 2, 255}) {  // 1 alone sends
    EXPECT_EQ(EmitMove(*machine, &x, nullptr, nullptr, send, CommandTag::Move), kStatusSent);
  }
  const std::int32_t same = 0;
  EXPECT_EQ(EmitMove(*machine, &same, nullptr, nullptr, 0), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->lastX, 0);
  EXPECT_EQ(LinesInFlight(*machine), 0);
  EXPECT_TRUE(machine.Tags().empty());
}

TEST(EmitMove, CountsEachLineItSends) {
  TestMachine machine;
  machine.controller.AnswerMoves(false);
  Move(*machine, 2000, 0);
  Move(*machine, 2000, 0);
  Move(*machine, 4000, 0);
  EXPECT_EQ(LinesInFlight(*machine), 2);
}

TEST(EmitMove, PushesItsTagOnlyForALineThatGoesOut) {
  TestMachine machine;
  std::int32_t z = 3000;
  EXPECT_EQ(EmitMove(*machine, nullptr, nullptr, &z, 1, CommandTag::Lift), kStatusSent);
  EXPECT_EQ(EmitMove(*machine, nullptr, nullptr, &z, 1, CommandTag::Plunge), kStatusNothing);
  z = 9000;
  EXPECT_EQ(EmitMove(*machine, nullptr, nullptr, &z, 1, CommandTag::Plunge), kStatusRefused);
  EXPECT_EQ(Move(*machine, 2000, 0), kStatusSent);  // untagged
  EXPECT_EQ(machine.Tags(), (std::vector<int>{4}));
}

TEST(EmitMove, TheTagStandsInTheRingBeforeTheLineIsOnTheWire) {
  TestMachine machine;
  std::atomic<int> tagSeen{-1};
  machine.controller.OnPrefix("G0 X", [&](k7test::FakeController&, const std::string&) {
    const RecordLock<ringMutex> lock{*machine};
    tagSeen = machine->ackRingIndex == 1 ? static_cast<int>(machine->ackRing[0]) : 0;
  });
  const std::int32_t x = 2000;
  EmitMove(*machine, &x, nullptr, nullptr, 1, CommandTag::Move);
  EXPECT_TRUE(WaitUntil([&] { return tagSeen != -1; }));
  EXPECT_EQ(tagSeen, 1);
}

TEST(EmitMove, AnAnswerThatIsFasterThanTheCountLeavesItAtZero) {
  TestMachine machine;
  machine.OpenJob();
  for (std::int32_t i = 1; i <= 200; ++i) Move(*machine, 10 * i, 0);
  EXPECT_TRUE(machine.WaitUntilIdle());
}

TEST(EmitMove, AQueueMutexThatCannotBeTakenEndsTheWait) {
  DeviceState record;  // never attached: no mutexes
  k7test::GiveDefaults(record);
  record.connected = 1;
  record.linesInFlight = 40;
  EXPECT_EQ(Move(record, 2000, 0), kStatusSent);
  EXPECT_EQ(record.linesInFlight, 40);  // the guarded update is skipped
}

TEST(EmitMove, WithoutAWindowASurfaceViolationIsRefusedWithoutADialog) {
  TestMachine machine;
  EXPECT_EQ(MoveZ(*machine, 9000), kStatusRefused);
  EXPECT_FALSE(k7test::MessageBoxIsShown(kCaption));
  EXPECT_EQ(machine.Sent(), "");
  EXPECT_EQ(machine->lastZ, 0);
}

TEST(EmitMove, WithAWindowASurfaceViolationIsShownToTheUser) {
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
    machine->ownerWindow = window.Handle();
    MessageBoxAnswer user{kCaption};
    EXPECT_EQ(MoveZ(*machine, c.z), kStatusRefused);
    ASSERT_TRUE(user.Appeared());
    EXPECT_EQ(user.Text(), c.text);
    EXPECT_EQ(user.Owner(), window.Handle());
    EXPECT_EQ(user.Buttons(), (std::vector<int>{IDOK}));
    EXPECT_EQ(machine.Sent(), "");
  }
}

TEST(EmitMove, ARefusedMoveHasAlreadyTakenItsXAndYWhenItWasToBeSent) {
  TestMachine machine;
  const std::int32_t x = 2000, y = 4000, z = 9000;
  EXPECT_EQ(EmitMove(*machine, &x, &y, &z, 0), kStatusRefused);
  EXPECT_EQ(machine->lastX, 0);
  EXPECT_EQ(machine->lastY, 0);
  EXPECT_EQ(EmitMove(*machine, &x, &y, &z, 1), kStatusRefused);
  EXPECT_EQ(machine->lastX, 2000);
  EXPECT_EQ(machine->lastY, 4000);
  EXPECT_EQ(machine->lastZ, 0);
  EXPECT_EQ(machine.Sent(), "");
}

TEST(EmitMove, AJogAndTheAutomaticModeMayPassTheSurface) {
  TestMachine machine;
  machine->jogActive = 1;
  EXPECT_EQ(MoveZ(*machine, 9000), kStatusSent);
  machine->jogActive = 0;
  EXPECT_EQ(MoveZ(*machine, 9000), kStatusRefused);
  machine->cutterMode = kCutterAutomatic;
  EXPECT_EQ(MoveZ(*machine, 9100), kStatusSent);
}

TEST(EmitMove, APositionThatCannotBeExpressedIsNotSent) {
  TestMachine machine;
  machine->stepsPerMmX = 0.0f;
  EXPECT_EQ(Move(*machine, 2000, 0), kStatusNothing);
  EXPECT_EQ(machine.Sent(), "");
}

TEST(SetFeedRate, SendsNothingWhileTheTextStaysTheSame) {
  TestMachine machine;
  SetFeedRate(*machine, 1.0f);
  SetFeedRate(*machine, 1.0f);
  SetFeedRate(*machine, 1.0000001f);  // the same three decimals
  EXPECT_EQ(machine.Sent(), "G0 F1524.000\n");
  EXPECT_STREQ(machine->lastFeedText, "1524.000");
  SetFeedRate(*machine, 0.5f);
  SetFeedRate(*machine, 1.0f);
  EXPECT_EQ(machine.Sent(), "G0 F762.000\nG0 F1524.000\n");
}

TEST(SetFeedRate, IsNotCountedAmongTheLinesInFlight) {
  TestMachine machine;
  SetFeedRate(*machine, 1.0f);
  EXPECT_EQ(LinesInFlight(*machine), 0);
}

TEST(SetFeedRate, WithoutAConnectionNeitherSendsNorRemembers) {
  TestMachine machine;
  machine->connected = 0;
  SetFeedRate(*machine, 1.0f);
  EXPECT_STREQ(machine->lastFeedText, "");
  machine->connected = 1;
  SetFeedRate(*machine, 1.0f);
  EXPECT_EQ(machine.Sent(), "G0 F1524.000\n");
}

TEST(SetMaxSpeeds, SendsOneLine) {
  TestMachine machine;
  SetMaxSpeeds(*machine, 20.0f, 20.0f, 20.0f);
  EXPECT_EQ(machine.Sent(), "M203 X30480 Y30480 Z30480\n");
  machine->connected = 0;
  SetMaxSpeeds(*machine, 1.0f, 1.0f, 1.0f);
  EXPECT_EQ(machine.Sent(), "");
}

}  // namespace
}  // namespace k7
