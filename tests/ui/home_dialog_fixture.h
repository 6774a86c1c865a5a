// A machine that finds its home when asked, for the dialogs that settle it.
#pragma once

#include "ui/sub_dialog_fixture.h"

namespace k7 {

// What a machine with all switches is sent to find its home.
inline constexpr char kHoming[] =
    "M119\nG0 F7620.000\nG28 Z0\nG28 Y0\nG28 X0\nSetTableHomed\n"
    "G92 X0.000000 Y0.000000 Z0.000000\n";

class HomeDialogTest : public SubDialogTest {
 protected:
  HomeDialogTest() {
    controller_.Answer("G28 Z0\n", "Z_Limit 6000\r\n");
    controller_.Answer("G28 Y0\n", "Y_Limit 5000\r\n");
    controller_.Answer("G28 X0\n", "X_Limit 4000\r\n");
    Record().position.tableHomed = 0;
  }
  void UseAirZ() { WriteInt(L"Axis Z", L"Air Z", 1); }
};

}  // namespace k7
