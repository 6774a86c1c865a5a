#include <gtest/gtest.h>

#include <vector>

#include "support/template_check.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr ControlRow kSetCutter[] = {
    {1147, L"S", L"Cutter Depth:"},
    {1148, L"E", L""},
    {1, L"D", L"OK"},
    {2, L"B", L"Cancel"},
};
constexpr ControlRow kSetTableZero[] = {
    {1183, L"E", L""}, {1184, L"S", L"Engrave Buffer"},
    {1153, L"C", L""}, {1161, L"X", L"Do Z Probe", false},
    {1, L"D", L"OK"},  {2, L"B", L"Cancel"},
};
constexpr ControlRow kSetTableHome[] = {
    {1037, L"S", L"X Offset"},
    {1040, L"E", L""},
    {1038, L"S", L"Y Offset"},
    {1041, L"E", L""},
    {1039, L"S", L"Z Offset"},
    {1042, L"E", L""},
    {1129, L"X", L"Use Literal Values"},
    {1, L"D", L"OK"},
    {2, L"B", L"Cancel"},
};
constexpr int kSwatches[] = {1096, 1098, 1099, 1101, 1102, 1103, 1104, 1105,
                             1106, 1107, 1108, 1109, 1110, 1111, 1112, 1113};
constexpr int kChecks[] = {1097, 1114, 1115, 1116, 1117, 1118, 1119, 1120,
                           1121, 1122, 1123, 1124, 1125, 1126, 1127, 1128};
std::vector<ControlRow> ColorRows() {
  std::vector<ControlRow> rows{{1, L"D", L"OK"}, {2, L"B", L"Cancel"}};
  for (const int id : kSwatches) rows.push_back({id, L"S", L""});
  for (const int id : kChecks) rows.push_back({id, L"X", L""});
  return rows;
}

TEST(SmallDialogTemplates, SetCutter) {
  const TemplateOf dialog{IDD_SET_CUTTER};
  ExpectFrame(dialog, L"Set Cutter", {131, 69});
  ExpectControls(dialog, kSetCutter);
  ExpectTabStops(dialog);
  ExpectCarefulLayout(dialog, {{1148, L"100.000"}});
}

TEST(SmallDialogTemplates, SetTableZero) {
  const TemplateOf dialog{IDD_SET_TABLE_ZERO};
  ExpectFrame(dialog, L"Set Table Zero", {139, 121});
  ExpectControls(dialog, kSetTableZero);
  ExpectTabStops(dialog);
  ExpectCarefulLayout(dialog, {{1183, L"100.000"}, {1153, L"Current Z Location"}});
  EXPECT_TRUE(dialog.Find(1153)->style & CBS_SORT);
  EXPECT_EQ(dialog.Find(1153)->style & 3, CBS_DROPDOWNLIST);
}

TEST(SmallDialogTemplates, SetTableHome) {
  const TemplateOf dialog{IDD_SET_TABLE_HOME};
  ExpectFrame(dialog, L"Set Table Home", {138, 104});
  ExpectControls(dialog, kSetTableHome);
  ExpectTabStops(dialog);
  ExpectCarefulLayout(dialog, {{1040, L"-100.000000"}});
}

TEST(SmallDialogTemplates, ColorSettings) {
  const TemplateOf dialog{IDD_COLOR_SETTINGS};
  ExpectFrame(dialog, L"Color Settings", {137, 343});
  ExpectControls(dialog, ColorRows());
  ExpectTabStops(dialog);
  ExpectCarefulLayout(dialog, {});
  for (int i = 0; i < 16; ++i) {
    const RECT swatch = dialog.Find(kSwatches[i])->place;
    const RECT check = dialog.Find(kChecks[i])->place;
    EXPECT_NEAR(swatch.top, 11 + 19 * i, 1) << i;
    EXPECT_EQ(check.top, swatch.top) << i;
    EXPECT_NEAR(swatch.right - swatch.left, 14, 1) << i;
    EXPECT_NEAR(swatch.bottom - swatch.top, 12, 1) << i;
    EXPECT_NEAR(check.right - check.left, 13, 1) << i;
    EXPECT_NEAR(check.bottom - check.top, 12, 1) << i;
    EXPECT_GT(check.left, swatch.right) << i;
    const HWND window = GetDlgItem(dialog.Window(), kSwatches[i]);
    EXPECT_TRUE(GetWindowLongW(window, GWL_STYLE) & SS_SUNKEN) << i;
  }
}

}  // namespace
}  // namespace k7
