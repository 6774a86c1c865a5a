#include "motion/position.h"

#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::HostMessage;
using k7test::HostWindow;

class Position : public k7test::MachineTest {};

TEST_F(Position, DeclarePositionSendsOneLineAtOnceAndTakesTheSteps) {
  const std::int32_t x = 4000, y = -400, z = 4001;
  machine_.OpenJob();
  record_.job.linesInFlight.Alone() = 40;  // no room for a move: no matter
  DeclarePosition(record_.link, record_.position, {.x = x, .y = y, .z = z});
  EXPECT_EQ(machine_.Sent(), "G92 X25.400000 Y-2.540000 Z25.406349\n");
  EXPECT_EQ(record_.position.last.x, 4000);
  EXPECT_EQ(record_.position.last.y, -400);
  EXPECT_EQ(record_.position.last.z, 4001);  // the given steps, whatever the text stands for
  EXPECT_EQ(record_.job.linesInFlight.Alone(), 40);
}

TEST_F(Position, DeclarePositionLeavesTheOtherAxes) {
  machine_.StandAt(1, 2, 3, kCutterUp);
  DeclarePosition(record_.link, record_.position, {.z = 0});
  EXPECT_EQ(machine_.Sent(), "G92 Z0.000000\n");
  EXPECT_EQ(record_.position.last.x, 1);
  EXPECT_EQ(record_.position.last.y, 2);
  EXPECT_EQ(record_.position.last.z, 0);
}

TEST_F(Position, DeclarePositionWithoutAxesOrConnectionDoesNothing) {
  DeclarePosition(record_.link, record_.position, {});
  record_.link.connected = 0;
  DeclarePosition(record_.link, record_.position, {.x = 7});
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(record_.position.last.x, 0);
}

TEST_F(Position, DeclarePositionSendsNoPositionThatCannotBeExpressed) {
  record_.position.stepsPerMm.x = 0.0f;
  DeclarePosition(record_.link, record_.position, {.x = 7});
  DeclarePosition(record_.link, record_.position, {.x = 0, .y = 0});
  EXPECT_EQ(machine_.Sent(), "G92 Y0.000000\n");
}

TEST_F(Position, GetPositionFromHomeAtTheTableHomeIsZero) {
  record_.position.tableHome.x = 1234;
  record_.position.tableHome.y = -77;
  machine_.StandAt(1234, -77, 0, kCutterUp);
  std::int32_t x = 9, y = 9;
  GetPositionFromHome(record_, &x, &y, nullptr);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
}

TEST_F(Position, GetPositionFromHomeIsInThousandthsFromTheTableHome) {
  record_.position.tableHome.x = 400;
  machine_.StandAt(4400, 8002, 0, kCutterUp);
  record_.mechanics.roundCircumference = 5.0f;
  record_.position.parkedPosition = 8000;
  std::int32_t x = 0, y = 0, round = 0;
  GetPositionFromHome(record_, &x, &y, &round);
  EXPECT_EQ(x, 1000);
  EXPECT_EQ(y, 2001);
  EXPECT_EQ(round, 1000);
  GetPositionFromHome(record_, nullptr, nullptr, nullptr);
  EXPECT_EQ(machine_.Sent(), "");  // no fixture to switch off
}

TEST_F(Position, AskedForTheRoundAxisItSwitchesTheFixtureOffAndBack) {
  FitRoundFixture();
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  record_.position.tableHomeRound = 400;
  record_.position.parkedPosition = 4400;   // of the replaced X
  machine_.StandAt(8000, 0, 0, kCutterUp);  // of the fixture
  std::int32_t x = 0, y = 0, round = 0;
  GetPositionFromHome(record_, &x, &y, nullptr);
  EXPECT_EQ(x, 1000);  // not asked for the fixture: by the round formula
  EXPECT_EQ(machine_.Sent(), "");
  GetPositionFromHome(record_, &x, &y, &round);
  EXPECT_EQ(x, 1000);
  EXPECT_EQ(round, 1000);
  EXPECT_EQ(machine_.Sent(),
            "M92 X157.48032\nM92 Y157.48032\nM800 X1 Y2\nG92 X27.940001 Y0.000000\n"
            "M92 X314.96063\nM92 Y157.48032\nM800 X5 Y2\nG92 X25.400000 Y0.000000\n");
  EXPECT_EQ(record_.mechanics.roundAxisMode, kRoundReplacesX);
  EXPECT_EQ(record_.position.last.x, 8000);
  EXPECT_EQ(record_.position.parkedPosition, 4400);
}

TEST_F(Position, GetDisplayPositionFollowsTheRoundMode) {
  record_.mechanics.roundCircumference = 5.0f;  // 8000 per inch
  record_.position.roundStepsPerInch = 2000.0f;
  record_.position.tableHome.x = 400;
  record_.position.tableHome.y = 400;
  record_.position.tableHomeRound = 200;
  record_.position.saved.x = 1200;
  record_.position.saved.y = 2200;
  record_.position.parkedPosition = 16000;
  machine_.StandAt(8400, 12400, 0, kCutterUp);
  std::int32_t x = 0, y = 0, third = 0;
  GetDisplayPosition(record_.mechanics, record_.position, &x, &y, &third);
  EXPECT_EQ(x, 2000);
  EXPECT_EQ(y, 3000);
  EXPECT_EQ(third, 2000);
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  GetDisplayPosition(record_.mechanics, record_.position, &x, &y, &third);
  EXPECT_EQ(x, 500);
  EXPECT_EQ(y, 3000);      // as without the fixture
  EXPECT_EQ(third, 1050);  // KEEP: without the table home
  record_.mechanics.roundAxisMode = kRoundReplacesY;
  GetDisplayPosition(record_.mechanics, record_.position, &x, &y, &third);
  EXPECT_EQ(x, 2000);
  EXPECT_EQ(y, 1000);
  EXPECT_EQ(third, 1550);
  record_.mechanics.roundAxisMode = 3;
  x = y = third = -1;
  GetDisplayPosition(record_.mechanics, record_.position, &x, &y, &third);
  EXPECT_EQ(x, -1);
  EXPECT_EQ(y, -1);
  EXPECT_EQ(third, -1);
  for (const std::uint32_t mode : {0u, 1u, 2u, 3u}) {
    record_.mechanics.roundAxisMode = mode;
    GetDisplayPosition(record_.mechanics, record_.position, nullptr, nullptr, nullptr);
  }
}

TEST_F(Position, ReportPositionTellsHostStepsFromTheTableHome) {
  const HostWindow window;
  Tell(window);
  record_.mechanics.xAxisFactor = 2;
  record_.mechanics.yAxisFactor = 3;
  record_.position.tableHome.x = 101;
  record_.position.tableHome.y = -100;
  machine_.StandAt(0, 205, 0, kCutterUp);
  std::int32_t x = 10, y = 10;
  ReportPosition(record_, &x, &y);
  EXPECT_EQ(x, 60);   // KEEP: the home is added to the caller's value
  EXPECT_EQ(y, -23);  // toward zero
  ReportPosition(record_, nullptr, nullptr);
  EXPECT_EQ(window.Seen(),
            (std::vector<HostMessage>{{kPosition, -50, 101}, {kPosition, -50, 101}}));
}

TEST_F(Position, ReportsNeedAWindowAndAMessage) {
  const HostWindow window;
  Tell(window);
  record_.position.tableHome.x = 100;
  std::int32_t x = 5;
  record_.notify.msgExtra1 = 0;
  record_.notify.msgExtra2 = 0;
  ReportPosition(record_, &x, nullptr);
  ReportSurface(record_.notify, record_.position);
  Tell(window);
  record_.notify.ownerWindow = nullptr;
  ReportPosition(record_, &x, nullptr);
  ReportSurface(record_.notify, record_.position);
  EXPECT_EQ(x, 5);
  EXPECT_TRUE(window.Seen().empty());
}

TEST_F(Position, AnAxisFactorOfZeroReportsZero) {
  const HostWindow window;
  Tell(window);
  record_.mechanics.xAxisFactor = record_.mechanics.yAxisFactor = 0;
  machine_.StandAt(500, 500, 0, kCutterUp);
  std::int32_t x = 5;
  ReportPosition(record_, &x, nullptr);
  EXPECT_EQ(x, 5);
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{kPosition, 0, 0}}));
}

TEST_F(Position, ReportSurfaceTellsMachineSteps) {
  const HostWindow window;
  Tell(window);
  record_.position.tableSurface = -8000;
  machine_.StandAt(0, 0, 4321, kCutterUp);
  ReportSurface(record_.notify, record_.position);
  EXPECT_EQ(window.Seen(), (std::vector<HostMessage>{{kSurface, -8000, 4321}}));
}

}  // namespace
}  // namespace k7
