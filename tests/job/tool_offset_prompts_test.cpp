#include "job/tool_offsets.h"

#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "settings/paths.h"
#include "support/host_helper/install.h"
#include "support/host_window.h"
#include "support/message_box.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

constexpr wchar_t kBeadCaption[] = L"Braille Bead Insert Tool";
constexpr wchar_t kDiodeCaption[] = L"Diode Pointer";

// The library stays loaded for the life of a process, so each of these runs in one of its own.
#define K7_ALONE(body) EXPECT_EXIT(RunAlone(body), testing::ExitedWithCode(0), "")

// A crash ends the child at once: nobody attends the debugger that would be started for it.
LONG WINAPI EndCrashed(EXCEPTION_POINTERS*) {
  TerminateProcess(GetCurrentProcess(), 3);
  return EXCEPTION_EXECUTE_HANDLER;
}

[[noreturn]] void RunAlone(void (*body)()) {
  SetUnhandledExceptionFilter(EndCrashed);
  _dup2(_fileno(stderr), _fileno(stdout));  // the parent shows the failures of its child
  body();
  std::fflush(stdout);
  std::_Exit(testing::Test::HasFailure() ? 1 : 0);
}

// A connected machine of 4000 steps per inch with the cutter at the table home.
class Bench : public k7test::TestMachine {
 public:
  Bench() {
    DeviceState& record = **this;
    record.position.tableHome.x = 4000;
    record.position.tableHome.y = 8000;
    StandAt(4000, 8000, 0, kCutterUp);
  }
  ~Bench() { std::filesystem::remove(SettingsFilePath((**this).link).text); }
  std::string File() {
    std::ifstream in{std::filesystem::path{SettingsFilePath((**this).link).text}, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
  }
};

class ToolOffsetPrompt : public testing::Test {
 protected:
  ~ToolOffsetPrompt() override { k7test::RemoveHelper(); }
};

void ProposeTheHostsPoint() {
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  Bench bench;
  k7test::MessageBoxAnswer user{kBeadCaption, IDYES};
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 1u);
  ASSERT_TRUE(user.Appeared());
  EXPECT_EQ(
      user.Text(),
      L"Would you like to set your braille bead insert tool offset?\n\nX: 1.250 in\nY: 0.500 in");
  EXPECT_EQ(user.Buttons(), (std::vector<int>{IDYES, IDNO}));
  EXPECT_EQ(bench->tools.beadToolOffsetX, 1250);
  EXPECT_EQ(bench->tools.beadToolOffsetY, 500);
  EXPECT_EQ(bench->tools.diodeOffsetX, 0);
  EXPECT_EQ(bench.File(),
            "[Braille]\r\nBead Insert Tool X Offset=1250\r\nBead Insert Tool Y Offset=500\r\n");
  EXPECT_EQ(k7test::HelperCount("ObjectsMade"), 1);
  EXPECT_EQ(k7test::HelperCount("ObjectsDestroyed"), 1);
}
TEST_F(ToolOffsetPrompt, AtTheTableHomeProposesTheHostsPointAndKeepsItOnYes) {
  K7_ALONE(ProposeTheHostsPoint);
}

void ProposeTheDistance() {
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  Bench bench;
  bench->position.last.x = 4000 + 8000;  // 2 in from the home
  bench->position.last.y = 8000 + 2;     // half a thousandth: rounded up
  k7test::MessageBoxAnswer user{kDiodeCaption, IDYES};
  EXPECT_EQ(ProposeDiodeOffset(*bench, 1250, 500), 1u);
  ASSERT_TRUE(user.Appeared());
  EXPECT_EQ(user.Text(),
            L"Would you like to set your Diode Pointer offset?\n\nX: -0.750 in\nY: 0.499 in");
  EXPECT_EQ(bench->tools.diodeOffsetX, -750);
  EXPECT_EQ(bench->tools.diodeOffsetY, 499);
  EXPECT_EQ(bench->tools.beadToolOffsetX, 0);
  EXPECT_EQ(bench.File(),
            "[Diode]\r\nDiode Pointer X Offset=-750\r\nDiode Pointer Y Offset=499\r\n");
}
TEST_F(ToolOffsetPrompt, ProposesTheDistanceFromTheCutterToThePoint) {
  K7_ALONE(ProposeTheDistance);
}

// KEEP: a half is added whatever the sign, and the thousandfold wraps in 32 bits.
void ProposeFromBelowTheHome() {
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  Bench bench;
  constexpr struct {
    std::int32_t x, y;          // steps from the home
    std::int32_t wantX, wantY;  // thousandths, proposed for the point (1250, 500)
  } kCases[] = {
      {-4, -6, 1250, 501},  // -1 and -1.5 thousandths: rounded to 0 and -1
      {-8000, -8, 3249, 501},
      {2147484, 0, 1250 + 536870, 500},
  };
  for (const auto& c : kCases) {
    bench->position.last.x = 4000 + c.x;
    bench->position.last.y = 8000 + c.y;
    k7test::MessageBoxAnswer user{kDiodeCaption, IDYES};
    EXPECT_EQ(ProposeDiodeOffset(*bench, 1250, 500), 1u);
    EXPECT_TRUE(user.Appeared());
    EXPECT_EQ(bench->tools.diodeOffsetX, c.wantX);
    EXPECT_EQ(bench->tools.diodeOffsetY, c.wantY);
  }
}
TEST_F(ToolOffsetPrompt, RoundsADistanceBelowTheHomeTowardZeroAndWrapsAVastOne) {
  K7_ALONE(ProposeFromBelowTheHome);
}

void AnswerNoInABoxOfTheHosts() {
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  Bench bench;
  const k7test::HostWindow window;
  bench->notify.ownerWindow = window.Handle();
  bench->tools.beadToolOffsetX = 7;
  k7test::MessageBoxAnswer user{kBeadCaption, IDNO};
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 0u);
  EXPECT_TRUE(user.Appeared());
  EXPECT_EQ(user.Owner(), window.Handle());
  EXPECT_EQ(bench->tools.beadToolOffsetX, 7);
  EXPECT_EQ(bench.File(), "");
  EXPECT_EQ(k7test::HelperCount("ObjectsDestroyed"), 1);  // handed back all the same
}
TEST_F(ToolOffsetPrompt, BelongsToTheHostsWindowAndNoChangesNothing) {
  K7_ALONE(AnswerNoInABoxOfTheHosts);
}

void MakeAnObjectForEachPrompt() {
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  Bench bench;
  for (int prompt = 1; prompt <= 2; ++prompt) {
    k7test::MessageBoxAnswer user{kBeadCaption, IDNO};
    ProposeBeadToolOffset(*bench, 0, 0);
    EXPECT_TRUE(user.Appeared());
    EXPECT_EQ(k7test::HelperCount("ObjectsMade"), prompt);
    EXPECT_EQ(k7test::HelperCount("ObjectsDestroyed"), prompt);
  }
}
TEST_F(ToolOffsetPrompt, MakesAnObjectForEachPromptAndLoadsTheLibraryOnce) {
  K7_ALONE(MakeAnObjectForEachPrompt);
}

void UseALibraryThatTakesNothingBack() {
  ASSERT_TRUE(k7test::InstalledHelper{"no_destroy"}.Works());
  Bench bench;
  k7test::MessageBoxAnswer user{kBeadCaption, IDYES};
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 1u);
  EXPECT_TRUE(user.Appeared());
  EXPECT_EQ(bench->tools.beadToolOffsetX, 1250);
  EXPECT_EQ(k7test::HelperCount("ObjectsMade"), 1);
  EXPECT_EQ(k7test::HelperCount("ObjectsDestroyed"), 0);
}
TEST_F(ToolOffsetPrompt, ALibraryWithoutTSDestroyLeaksTheObjectSilently) {
  K7_ALONE(UseALibraryThatTakesNothingBack);
}

void UseALibraryThatMakesNothing() {
  ASSERT_TRUE(k7test::InstalledHelper{"no_librarian"}.Works());
  Bench bench;
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 0u);  // no box: nobody answers one here
  EXPECT_EQ(k7test::HelperCount("ObjectsMade"), 0);         // loaded all the same, and kept
  EXPECT_EQ(ProposeDiodeOffset(*bench, 1250, 500), 0u);
}
TEST_F(ToolOffsetPrompt, ALibraryWithoutTSLibrarianPromptsNothing) {
  K7_ALONE(UseALibraryThatMakesNothing);
}

void UseALibraryThatMakesNull() {
  ASSERT_TRUE(k7test::InstalledHelper{"no_object"}.Works());
  Bench bench;
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 0u);
  EXPECT_EQ(k7test::HelperCount("ObjectsMade"), 1);
  EXPECT_EQ(k7test::HelperCount("ObjectsDestroyed"), 0);
}
TEST_F(ToolOffsetPrompt, ALibrarianThatMakesNoObjectPromptsNothing) {
  K7_ALONE(UseALibraryThatMakesNull);
}

void FindNoLibraryThenOne() {
  k7test::RemoveHelper();
  Bench bench;
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 0u);  // no box: nobody answers one here
  EXPECT_EQ(ProposeDiodeOffset(*bench, 1250, 500), 0u);
  EXPECT_EQ(bench.File(), "");
  EXPECT_TRUE(std::filesystem::is_directory(k7test::HelperFolder().parent_path()));
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  k7test::MessageBoxAnswer user{kBeadCaption, IDYES};
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 1u);
  EXPECT_TRUE(user.Appeared());
}
TEST_F(ToolOffsetPrompt, WithTheLibraryMissingEachPromptTriesToLoadItAgain) {
  K7_ALONE(FindNoLibraryThenOne);
}

void AskDuringAJob() {
  ASSERT_TRUE(k7test::InstalledHelper{"whole"}.Works());
  Bench bench;
  bench->job.jobOpen.Alone() = 1;
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 0u);
  EXPECT_EQ(ProposeDiodeOffset(*bench, 1250, 500), 0u);
  bench->job.jobOpen.Alone() = 0;
  bench->link.connected = 0;
  EXPECT_EQ(ProposeBeadToolOffset(*bench, 1250, 500), 0u);
  EXPECT_EQ(k7test::HelperCount("ObjectsMade"), -1);  // not even loaded
}
TEST_F(ToolOffsetPrompt, InAJobOrWithoutAConnectionAsksNothingAndLoadsNothing) {
  K7_ALONE(AskDuringAJob);
}

}  // namespace
}  // namespace k7
