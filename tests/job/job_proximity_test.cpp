#include "job/job.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "support/message_box.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

using k7test::MessageBoxAnswer;
using k7test::TestMachine;

constexpr wchar_t kCaption[] = L"Error";

TEST(BeginJob, WithTheProximityTriggeredLiftsTellsTheUserAndRefuses) {
  for (const std::uint32_t mode : {kCutterAutomatic, kCutterSemiAutomatic}) {
    TestMachine machine;
    machine.FitSwitches();
    machine->tools.cutterMode = mode;
    machine->tools.cutterState = kCutterDown;
    machine->position.last.z = 4250;
    machine->job.plungeHold = 1;
    jobAbortRequest = 1;
    machine.controller.Answer("M119\n", "min_x:0 min_y:0 min_z:0 pins: Probe: 1\r\n");
    MessageBoxAnswer user{kCaption};
    EXPECT_FALSE(BeginJob(*machine)) << mode;
    ASSERT_TRUE(user.Appeared()) << mode;
    EXPECT_EQ(user.Text(), L"Prox was triggered. Close JFZ then reopen");
    EXPECT_EQ(user.Buttons(), (std::vector<int>{IDOK}));
    EXPECT_EQ(machine.Sent(), "M119\nG0 F381.000\nG0 Z0.000000\n") << mode;
    EXPECT_EQ(machine->position.last.z, 0);
    // Nothing else is changed.
    EXPECT_EQ(machine->tools.cutterState, kCutterDown);
    EXPECT_EQ(machine->job.plungeHold, 1);
    EXPECT_EQ(machine->job.firstMove, 0);
    EXPECT_EQ(jobAbortRequest, 1u);
    EXPECT_EQ(JobOpen(machine->job), 0);
  }
}

}  // namespace
}  // namespace k7
