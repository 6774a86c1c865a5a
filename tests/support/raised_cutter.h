// RaisedCutter: a machine in an open job with its cutter up, for the tests of plunges.
#pragma once

#include <string>

#include "motion/strokes.h"
#include "support/key_file.h"
#include "support/stroke.h"

namespace k7test {

inline constexpr float kNoHome = -7.0f;  // CutterHomeInFile when nothing has been written
inline constexpr char kCut[] = "G0 F3048.000\nG0 X12.700000 Y25.400000\n";  // of Engrave

// The two operations that differ only behind a probe of the semi-automatic mode.
struct Lowering {
  const char* name;
  std::uint32_t (*lower)(k7::DeviceState&) noexcept;
};
inline constexpr Lowering kLowerings[] = {{"LowerCutter", &k7::LowerCutter},
                                          {"LowerCutterContinue", &k7::LowerCutterContinue}};

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
  Stroke Engrave() { return Made(*this, k7::EngraveTo(**this, 2000, 4000)); }
  // By LowerCutter or LowerCutterContinue.
  Stroke Lower(std::uint32_t (*lower)(k7::DeviceState&) noexcept) {
    return Made(*this, lower(**this));
  }
  // The cutter home that stands in the settings file, in inches.
  float CutterHomeInFile() {
    return KeyFile{(**this).link}.ReadFloat(L"Axis Z", L"Cutter Home", kNoHome);
  }
};

}  // namespace k7test
