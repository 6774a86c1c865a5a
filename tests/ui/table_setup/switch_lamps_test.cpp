#include "ui/table_setup/switch_lamps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "ui/sub_dialog_fixture.h"
#include "ui/table_setup/table_setup_dialog.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlack = RGB(0, 0, 0);

// The lamps where they live: in the table setup dialog.
class SwitchLampsTest : public SubDialogTest {
 protected:
  void OpenSetup() { OpenOn(&ShowTableSetupDialog); }
  COLORREF PixelOf(int id) {
    const HWND lamp = GetDlgItem(dialog_, id);
    RECT place{};
    GetClientRect(lamp, &place);
    const HDC device = GetDC(lamp);
    const COLORREF pixel = GetPixel(device, place.right / 2, place.bottom / 2);
    ReleaseDC(lamp, device);
    return pixel;
  }
};

TEST_F(SwitchLampsTest, LampsAreDarkWithoutSwitches) {
  OpenSetup();
  for (const int id : {1076, 1077, 1078, 1079}) EXPECT_EQ(ColorOf(id), kBlack) << id;
  EXPECT_THAT(SentLines(), testing::Not(testing::Contains("M119\n"))) << "nothing is asked";
}

TEST_F(SwitchLampsTest, EachLampShowsItsSwitch) {
  FitAllSwitches();
  OpenSetup();
  const struct {
    int id;
    const char* report;
  } kReports[] = {
      {1076, "min_x:1 min_y:0 min_z:0 pins: Probe: 0\r\n"},
      {1077, "min_x:0 min_y:1 min_z:0 pins: Probe: 0\r\n"},
      {1078, "min_x:0 min_y:0 min_z:1 pins: Probe: 0\r\n"},
      {1079, "min_x:0 min_y:0 min_z:0 pins: Probe: 1\r\n"},
  };
  for (const auto& row : kReports) {
    controller_.Answer("M119\n", row.report);
    EXPECT_TRUE(WaitUntil([&] {
      int red = 0;
      for (const int id : {1076, 1077, 1078, 1079}) red += ColorOf(id) == kRed ? 1 : 0;
      return red == 1 && ColorOf(row.id) == kRed;
    })) << row.id;
  }
}

TEST_F(SwitchLampsTest, ALampIsPaintedAsItsSwitchCloses) {
  FitAllSwitches();
  OpenSetup();
  EXPECT_TRUE(WaitUntil([&] { return PixelOf(1076) == kBlack; }));
  controller_.Answer("M119\n", "min_x:1 min_y:0 min_z:0 pins: Probe: 0\r\n");
  EXPECT_TRUE(WaitUntil([&] { return PixelOf(1076) == kRed; }));
  EXPECT_EQ(PixelOf(1077), kBlack);
  controller_.Answer("M119\n", "min_x:0 min_y:0 min_z:0 pins: Probe: 0\r\n");
  EXPECT_TRUE(WaitUntil([&] { return PixelOf(1076) == kBlack; }));
}

// A quarter of the gaps is shorter than what is checked: a busy computer only lengthens them, or
// shortens the one that follows.
TEST_F(SwitchLampsTest, TheSwitchesAreAskedEveryFiftyMilliseconds) {
  using Clock = std::chrono::steady_clock;
  FitAllSwitches();
  OpenSetup();
  std::vector<std::int64_t> gapsMs;
  std::ptrdiff_t asked = 0;
  Clock::time_point last = Clock::now();
  EXPECT_TRUE(WaitUntil([&] {
    const auto count = std::ranges::count(controller_.Lines(), "M119\n");
    if (count == asked) return false;
    asked = count;
    const auto gap = Clock::now() - std::exchange(last, Clock::now());
    gapsMs.push_back(std::chrono::duration_cast<std::chrono::milliseconds>(gap).count());
    return gapsMs.size() == 40;
  }));
  std::ranges::sort(gapsMs);
  EXPECT_GE(gapsMs[10], 30);
  EXPECT_LE(gapsMs[10], 80);
}

TEST_F(SwitchLampsTest, BothBrushesGoWithTheDialog) {
  FitAllSwitches();
  controller_.Answer("M119\n", "min_x:1 min_y:0 min_z:0 pins: Probe: 0\r\n");
  for (const int button : {IDOK, IDCANCEL}) {
    OpenSetup();
    Type(1092, L"2");
    ASSERT_TRUE(WaitUntil([&] { return ColorOf(1076) == kRed; }));
    const HBRUSH red = BrushOf(1076);
    const HBRUSH black = BrushOf(1077);
    EXPECT_EQ(GetObjectType(red), static_cast<DWORD>(OBJ_BRUSH));
    EXPECT_EQ(GetObjectType(black), static_cast<DWORD>(OBJ_BRUSH));
    EXPECT_EQ(CloseBy(button), button);
    EXPECT_EQ(GetObjectType(red), 0u) << button;
    EXPECT_EQ(GetObjectType(black), 0u) << button;
  }
}

TEST_F(SwitchLampsTest, OtherControlsArePaintedAsUsual) {
  OpenSetup();
  EXPECT_NE(ColorOf(1065), kBlack);
}

}  // namespace
}  // namespace k7
