// RaisedCutter: a machine in an open job with its cutter up, for the tests of plunges.
#pragma once

#include <string>

#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "support/test_machine.h"

namespace k7test {

inline constexpr float kNoHome = -7.0f;  // CutterHomeInFile when nothing has been written

// The cutter stands at 3500 steps. A probe touches 500 steps below: a surface at 4000, which is
// where it was thought to be.
class RaisedCutter : public TestMachine {
 public:
  RaisedCutter() {
    OpenJob();
    StandAt(0, 0, 3500, k7::kCutterUp);
    controller.OnPrefix(
        "G30 ", [](FakeController& fake, const std::string&) { fake.Say("Z_Probe 500\r\n"); });
  }
  // Fits a spindle; its lines cost 750 ms each.
  void FitSpindle() {
    k7::DeviceState& record = **this;
    record.spindlePresent = 1;
    record.spindleMaxRpm = 13000;
    record.spindleRpm = 13000;
  }
  // The cutter home that stands in the settings file, in inches.
  float CutterHomeInFile() {
    return k7::SettingsFile{**this}.ReadFloat(k7::keys::kAxisZ, k7::keys::kCutterHome, kNoHome);
  }
};

}  // namespace k7test
