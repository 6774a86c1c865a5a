#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "support/template_check.h"
#include "ui/resource_ids.h"
#include "ui/table_setup/table_setup_layout.h"

namespace k7 {
namespace {

using namespace k7test;

constexpr ControlRow kRows[] = {
    {1001, L"S", L"K7 Controller ID:"},
    {1002, L"S", L"Friendly Name"},
    {1003, L"E", L""},
    {1031, L"X", L"Edit Permanent Settings"},
    {1028, L"G", L"X Axis"},
    {1029, L"G", L"Y Axis"},
    {1030, L"G", L"Z Axis"},
    {1004, L"S", L"Motor Steps"},
    {1005, L"S", L"Motor Steps"},
    {1006, L"S", L"Motor Steps"},
    {1016, L"E", L""},
    {1017, L"E", L""},
    {1018, L"E", L""},
    {1007, L"S", L"Micro Steps"},
    {1008, L"S", L"Micro Steps"},
    {1009, L"S", L"Micro Steps"},
    {1019, L"E", L""},
    {1020, L"E", L""},
    {1021, L"E", L""},
    {1010, L"S", L"Screw Pitch"},
    {1011, L"S", L"Screw Pitch"},
    {1012, L"S", L"Screw Pitch"},
    {1022, L"E", L""},
    {1023, L"E", L""},
    {1024, L"E", L""},
    {1013, L"S", L"Resolution"},
    {1014, L"S", L"Resolution"},
    {1015, L"S", L"Resolution"},
    {1025, L"E", L""},
    {1026, L"E", L""},
    {1027, L"E", L""},
    {1060, L"X", L"Has Limit Switch"},
    {1061, L"X", L"Has Limit Switch"},
    {1062, L"X", L"Has Limit Switch"},
    {1063, L"X", L"Has Prox Switch"},
    {1065, L"S", L"Table Home"},
    {1066, L"S", L"Table Home"},
    {1067, L"S", L"Table Home"},
    {1076, L"S", L""},
    {1077, L"S", L""},
    {1078, L"S", L""},
    {1079, L"S", L""},
    {1043, L"B", L"Set Table Home..."},
    {1073, L"S", L"Semi Auto Prox Offset"},
    {1074, L"E", L""},
    {1091, L"S", L"Scissors"},
    {1092, L"E", L""},
    {1192, L"X", L"Has Air Z"},
    {1080, L"G", L"Spindle"},
    {1081, L"S", L"Motor RPM"},
    {1082, L"E", L""},
    {1083, L"S", L"Gear Ratio"},
    {1084, L"E", L""},
    {1085, L"S", L"Spindle RPM"},
    {1086, L"E", L""},
    {1089, L"S", L"Ramp Time"},
    {1090, L"E", L""},
    {1094, L"X", L"Has Spindle"},
    {1130, L"G", L"Maximum Values"},
    {1131, L"S", L"XY Speed"},
    {1132, L"E", L""},
    {1133, L"S", L"Z Speed"},
    {1134, L"E", L""},
    {1135, L"S", L"Engrave Depth"},
    {1136, L"E", L""},
    {1036, L"G", L"Table Size"},
    {1032, L"S", L"Width"},
    {1034, L"E", L""},
    {1033, L"S", L"Height"},
    {1035, L"E", L""},
    {1190, L"S", L"Depth"},
    {1191, L"E", L""},
    {1175, L"G", L"Jogging Speed"},
    {1176, L"S", L"Fast"},
    {1178, L"E", L""},
    {1177, L"S", L"Slow"},
    {1179, L"E", L""},
    {-1, L"G", L"Braille"},
    {1154, L"X", L"Has Bead Insert Tool"},
    {1155, L"B", L"Set Tool Offset...", false},
    {1156, L"S", L"X:", false},
    {1188, L"E", L"", false},
    {1157, L"S", L"Y:", false},
    {1189, L"E", L"", false},
    {1164, L"G", L"Diode"},
    {1161, L"X", L"Has Diode Pointer"},
    {1165, L"B", L"Set Diode Offset...", false},
    {1166, L"S", L"X Offset", false},
    {1167, L"S", L"Y Offset", false},
    {1169, L"G", L"Round Fixture"},
    {1170, L"S", L"Motor Steps"},
    {1038, L"E", L""},
    {1037, L"S", L"Micro Steps"},
    {1039, L"E", L""},
    {1087, L"S", L"Gear Ratio"},
    {1088, L"E", L""},
    {1095, L"X", L"Has Round Fixture"},
    {1, L"D", L"OK"},
    {2, L"B", L"Cancel"},
};

TEST(TableSetupTemplate, HoldsEveryControlWithItsKindTextAndState) {
  ExpectControls(TemplateOf{IDD_TABLE_SETUP}, kRows, [](int id) {
    const bool locked = std::ranges::find(kPermanentControls, id) != std::end(kPermanentControls);
    return !locked && id != IDOK;
  });
}

TEST(TableSetupTemplate, IsAModalDialogOfItsSize) {
  ExpectFrame(TemplateOf{IDD_TABLE_SETUP}, L"Table Setup", {543, 264});
}

TEST(TableSetupTemplate, ComputedFieldsCannotBeTypedInto) {
  const TemplateOf dialog{IDD_TABLE_SETUP};
  for (const int id : {1025, 1026, 1027, 1086}) {
    EXPECT_TRUE(dialog.Find(id)->style & ES_READONLY) << id;
    EXPECT_FALSE(dialog.Find(id)->style & WS_TABSTOP) << id;
  }
}

TEST(TableSetupTemplate, CoversAndClipsNothing) {
  ExpectCarefulLayout(TemplateOf{IDD_TABLE_SETUP}, {{1001, L"K7 Controller ID: ABCDEFGHIJKLMNOP"},
                                                    {1003, L"K7 System Controller in the shop"},
                                                    {1016, L"1000"},
                                                    {1022, L"100.0000"},
                                                    {1025, L"1000000"},
                                                    {1065, L"Table Home  -100.000000"},
                                                    {1074, L"-1.0000"},
                                                    {1084, L"100.0000"},
                                                    {1086, L"100000"},
                                                    {1132, L"1000.0000"},
                                                    {1034, L"100.000"},
                                                    {1166, L"X: -10.0000"},
                                                    {1167, L"Y: -10.0000"},
                                                    {1188, L"-10.000"},
                                                    {1189, L"-10.000"}});
}

TEST(TableSetupTemplate, TabOrderReachesEveryControlThatTakesInput) {
  ExpectTabStops(TemplateOf{IDD_TABLE_SETUP});
}

}  // namespace
}  // namespace k7
