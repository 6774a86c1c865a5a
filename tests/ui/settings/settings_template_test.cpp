#include "support/template_check.h"

#include <gtest/gtest.h>

#include "ui/resource_ids.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr ControlRow kRows[] = {
    {1150, L"S", L"Material Settings", true},
    {1153, L"C", L"", true},
    {1151, L"B", L"Save Material...", true},
    {1168, L"B", L"Delete...", true},
    {1152, L"B", L"Import...", false},
    {1044, L"G", L"Engrave Settings", true},
    {1071, L"S", L"Engrave Type", true},
    {1072, L"C", L"", true},
    {1070, L"S", L"Cutter Mode", true},
    {1069, L"C", L"", true},
    {1171, L"S", L"Round Fixture", true},
    {1172, L"C", L"", true},
    {1173, L"S", L"Circumference", true},
    {1174, L"E", L"", true},
    {1192, L"X", L"Don't Lower Z", true},
    {1137, L"S", L"Max Values", true},
    {1141, L"S", L"Max Values", true},
    {1056, L"S", L"Engrave Speed", true},
    {1055, L"E", L"", true},
    {1143, L"S", L"", true},
    {1052, L"S", L"Traverse Speed", true},
    {1047, L"E", L"", true},
    {1140, L"S", L"", true},
    {1180, L"S", L"Grid Speed", true},
    {1181, L"E", L"", true},
    {1182, L"S", L"", true},
    {1144, L"S", L"Engrave Delay", true},
    {1145, L"E", L"", true},
    {1057, L"S", L"Resolution", true},
    {1058, L"C", L"", true},
    {1050, L"S", L"Cutter Lift", true},
    {1045, L"E", L"", true},
    {1054, L"S", L"Cutter Up Speed", true},
    {1049, L"E", L"", true},
    {1142, L"S", L"", true},
    {1053, L"S", L"Cutter Down Speed", true},
    {1048, L"E", L"", true},
    {1139, L"S", L"", true},
    {1051, L"S", L"Engrave Depth", true},
    {1046, L"E", L"", true},
    {1135, L"S", L"", true},
    {1186, L"S", L"Table Buffer", false},
    {1183, L"E", L"", false},
    {1161, L"X", L"Multi Pass", true},
    {1163, L"S", L"Multi Pass Mode", true},
    {1162, L"C", L"", true},
    {-1, L"S", L"Maximum Pass Depth", true},
    {1159, L"E", L"", true},
    {1158, L"S", L"Finish Pass Depth", true},
    {1160, L"E", L"", true},
    {1087, L"S", L"Spindle RPM", false},
    {1088, L"E", L"", false},
    {1093, L"X", L"Engrave By Color", true},
    {1095, L"B", L"Color Settings...", false},
    {1064, L"B", L"Mechanical Home", true},
    {1068, L"B", L"Table Setup...", true},
    {1146, L"B", L"Set Cutter...", true},
    {1149, L"S", L"Last Cutter:", true},
    {1185, L"B", L"Set Table Zero", true},
    {1, L"B", L"Run Job", true},
    {1059, L"D", L"Apply && Exit", true},
    {2, L"B", L"Cancel", true},
};

TEST(SettingsTemplate, HoldsEveryControlWithItsKindTextAndState) {
  ExpectControls(TemplateOf{IDD_CONTROLLER_SETTINGS}, kRows);
}

TEST(SettingsTemplate, IsAModalDialogOfItsSize) {
  ExpectFrame(TemplateOf{IDD_CONTROLLER_SETTINGS}, L"K7 Controller Settings", {411, 265});
}

// KEEP: stored selections count in the order of filling all the same.
TEST(SettingsTemplate, ListsAreSortedDropDownLists) {
  const TemplateOf dialog{IDD_CONTROLLER_SETTINGS};
  for (const ControlSeen& control : dialog.Controls()) {
    if (control.kind != L"C") continue;
    EXPECT_TRUE(control.style & CBS_SORT) << control.id;
    EXPECT_EQ(control.style & 3, CBS_DROPDOWNLIST) << control.id;
  }
}

TEST(SettingsTemplate, CoversAndClipsNothing) {
  ExpectCarefulLayout(TemplateOf{IDD_CONTROLLER_SETTINGS},
                      {{IDC_CS_ENGRAVE_DEPTH_LABEL, L"Spring Pressure"},
                       {IDC_CS_PASS_LABEL, L"Pass Copies"},
                       {IDC_CS_LAST_CUTTER, L"Last Cutter: 100.000"},
                       {IDC_CS_MAX_TRAVERSE_SPEED, L"1000.0000"},
                       {IDC_CS_MAX_CUTTER_UP_SPEED, L"1000.0000"},
                       {IDC_CS_TRAVERSE_SPEED, L"1000.0000"},
                       {IDC_CS_PASS_DEPTH_OR_COPIES, L"1000.0000"},
                       {IDC_CS_CIRCUMFERENCE, L"1000.0000"},
                       {IDC_CS_CUTTER_MODE, L"Semi Automatic"},
                       {IDC_CS_MULTI_PASS_MODE, L"Max Pass Depth"},
                       {IDC_CS_RESOLUTION, L"1000000"}});
}

TEST(SettingsTemplate, TabOrderReachesEveryControlThatTakesInput) {
  ExpectTabStops(TemplateOf{IDD_CONTROLLER_SETTINGS});
}

}  // namespace
}  // namespace k7
