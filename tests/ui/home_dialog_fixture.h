// A machine that finds its home when asked, for the dialogs that settle it.
#pragma once

#include "ui/sub_dialog_fixture.h"

namespace k7 {

class HomeDialogTest : public SubDialogTest {
 protected:
  HomeDialogTest() {
    controller_.Answer("G28 Z0\n", "Z_Limit 6000\r\n");
    controller_.Answer("G28 Y0\n", "Y_Limit 5000\r\n");
    controller_.Answer("G28 X0\n", "X_Limit 4000\r\n");
    Record().tableHomed = 0;
  }
  void UseAirZ() { WriteInt(keys::kAxisZ, keys::kAirZ, 1); }
};

}  // namespace k7
