#include "job/go_to.h"

#include "job/job.h"
#include "support/machine_test.h"

namespace k7 {
namespace {

using k7test::HostWindow;
using k7test::MessageBoxAnswer;

class GoToTest : public k7test::MachineTest {
 protected:
  GoToTest() {
    record_.position.tableHome.x = 400;
    record_.position.tableHome.y = 800;
    machine_.StandAt(100, 100, 4000, kCutterDown);
  }
};

TEST_F(GoToTest, LiftsTraversesAndKeepsThePlace) {
  record_.mechanics.xAxisFactor = 2;
  GoTo(record_, 1800, 0);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z22.225000\nG0 F1524.000\nG0 X25.400000 Y5.080000\n");
  EXPECT_EQ(record_.position.last.x, 4000);
  EXPECT_EQ(record_.position.last.y, 800);
  EXPECT_EQ(record_.tools.cutterState, kCutterUp);
  EXPECT_EQ(record_.job.zMoveCount, 1);
  EXPECT_EQ(machine_.Tags(), (std::vector<int>{4, 1}));
  EXPECT_EQ(File(), L"Current Location/X Axis=4000\nCurrent Location/Y Axis=800\n");
}

// KEEP: (0, 0) is the place of the switches, not the table home.
TEST_F(GoToTest, ZeroZeroIsMachineZero) {
  GoTo(record_, 0, 0);
  EXPECT_EQ(record_.position.last.x, 0);
  EXPECT_EQ(record_.position.last.y, 0);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z22.225000\nG0 F1524.000\nG0 X0.000000 Y0.000000\n");
}

TEST_F(GoToTest, NegativePlacesAreSignedAndWithoutTheHome) {
  GoTo(record_, static_cast<std::uint32_t>(-4000), 0);
  EXPECT_EQ(record_.position.last.x, -3999);  // the steps that the text stands for
  EXPECT_EQ(record_.position.last.y, 0);
  GoTo(record_, static_cast<std::uint32_t>(-4000), 1);
  EXPECT_EQ(record_.position.last.y, 801);  // one positive axis brings both homes
}

TEST_F(GoToTest, AHeldPlungeLiftsToTheTop) {
  record_.job.plungeHold = 1;
  GoTo(record_, 0, 0);
  EXPECT_EQ(machine_.Sent(), "G0 F381.000\nG0 Z0.000000\nG0 F1524.000\nG0 X0.000000 Y0.000000\n");
}

TEST_F(GoToTest, AHoldIsExactlyOne) {
  record_.job.plungeHold = 2;
  GoTo(record_, 0, 0);
  EXPECT_EQ(record_.position.last.z, 3500);
}

TEST_F(GoToTest, AnAirZHeadIsWaitedForInAJob) {
  machine_.OpenJob();
  record_.tools.cutterMode = kCutterAirZ;
  GoTo(record_, 0, 0);
  // The lift has ended, and the reader has let the air out, before the head travels.
  EXPECT_EQ(machine_.Sent(),
            "G0 F381.000\nG0 Z22.225000\nM43\nG0 F1524.000\nG0 X0.000000 Y0.000000\n");
}

TEST_F(GoToTest, IsNothingWithoutAConnection) {
  record_.link.connected = 0;
  GoTo(record_, 5, 5);
  GoToAsJob(record_, 5, 5, 0);
  EXPECT_EQ(machine_.Sent(), "");
  EXPECT_EQ(File(), L"");
}

TEST_F(GoToTest, AsAJobTheHostIsToldNothing) {
  FitSpindle();
  GoToAsJob(record_, 0, 0, 0);
  EXPECT_EQ(machine_.Sent(),
            "M106\nSendBlockMessagesOn\nM42\nM44 S252\nG0 F381.000\nG0 Z22.225000\nG0 F1524.000\n"
            "G0 X0.000000 Y0.000000\nM43\nSendBlockMessagesOff\nM107\n");
  EXPECT_EQ(machine_.Told(), std::vector<std::uint32_t>{});
  EXPECT_EQ(record_.job.quietMoves, 0);
  EXPECT_EQ(record_.job.jobOpen.Alone(), 0);
}

TEST_F(GoToTest, AsAJobTheRoundFixtureIsSwitchedOffOnlyWhenAskedFor) {
  FitRoundFixture();
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  record_.position.parkedPosition = 4000;
  GoToAsJob(record_, 0, 0, 0);
  EXPECT_EQ(machine_.Sent().find("M800"), std::string::npos);
  GoToAsJob(record_, 4000, 0, 1);
  EXPECT_EQ(machine_.Sent(),
            "M92 X157.48032\nM92 Y157.48032\nM800 X1 Y2\nG92 X25.400000 Y0.000000\n"
            "M106\nSendBlockMessagesOn\n"
            "G0 F381.000\nG0 F1524.000\nG0 Y5.080000\n"
            "SendBlockMessagesOff\nM107\n"
            "M92 X314.96063\nM92 Y157.48032\nM800 X5 Y2\nG92 X0.000000 Y5.080000\n");
  EXPECT_EQ(record_.mechanics.roundAxisMode, kRoundReplacesX);
}

TEST_F(GoToTest, ARefusedJobMovesNoFurther) {
  const HostWindow window;
  Tell(window);
  FitSwitches();
  machine_.controller.Answer("M119\n", "min_x:0 min_y:0 min_z:0 Probe: 1\r\n");
  record_.tools.cutterMode = kCutterAutomatic;
  MessageBoxAnswer box{L"Error"};
  GoToAsJob(record_, 4000, 0, 0);
  EXPECT_TRUE(box.Appeared());
  EXPECT_EQ(machine_.Sent(), "M119\nG0 F381.000\nG0 Z0.000000\n");
  EXPECT_EQ(record_.job.quietMoves, 0);
}

}  // namespace
}  // namespace k7
