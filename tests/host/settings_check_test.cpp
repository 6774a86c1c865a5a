#include "settings/settings_check.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "settings/listing.h"
#include "settings/settings_json.h"
#include "settings_texts.h"

namespace k7host {
namespace {

std::string Faults(std::string_view file, SettingsKind kind = SettingsKind::Controller) {
  std::string all;
  for (const SettingsFault& fault : CheckSettings(Ini(file), kind)) {
    all += (fault.severity == Severity::Wrong ? "wrong " : "odd ") + FaultText(fault) + "\n";
  }
  return all;
}

TEST(CheckSettings, AGoodFileHasNoFaults) {
  EXPECT_EQ(Faults("[Axis X]\nScrew Pitch=" + Bits(0.5f) +
                   "\n[Engrave Settings]\nCutter Lift=" + Bits(0.1f) +
                   "\nFinish Pass Depth=\nEngrave Type=1\nCutter Mode=3\n[Axis Z]\nAir Z=0\n"
                   "[Some Other Program]\nKey=text\n"),
            "");
}

TEST(CheckSettings, NamesWhatMakesNoSense) {
  const std::string lift = Bits(0.05f);
  const std::string zero = Bits(0.0f);
  const struct {
    std::string file;
    std::string want;
  } kCases[] = {
      {"[Axis X]\nScrew Pitch=0\n",
       "wrong [Axis X] Screw Pitch: is 0 in a turn; expected 0.001 to 10 in a turn\n"},
      {"[Axis X]\nScrew Pitch=\n",
       "wrong [Axis X] Screw Pitch: is empty, which reads as 0 in a turn; expected 0.001 to 10 in "
       "a turn\n"},
      {"[Axis X]\nScrew Pitch=0.5\n",
       "wrong [Axis X] Screw Pitch: \"0.5\" reads as 0 in a turn: decimal text where the bits of a "
       "float are due; expected the bits of 0.001 to 10 in a turn; k7host settings set \"Axis "
       "X/Screw Pitch\" 0.5 writes them\n"},
      {"[Engrave Settings]\nEngrave Speed=5\n",
       "wrong [Engrave Settings] Engrave Speed: \"5\" reads as 7e-45 in/s: a plain number where "
       "the bits of a float are due; expected the bits of 0.001 to 60 in/s; k7host settings set "
       "\"Engrave Settings/Engrave Speed\" 5 writes them\n"},
      {"[Engrave Settings]\nEngrave Speed=2143289344\n",
       "wrong [Engrave Settings] Engrave Speed: \"2143289344\" are the bits of no number; expected "
       "the bits of 0.001 to 60 in/s\n"},
      {"[Axis Y]\nMotor Steps=many\n",
       "wrong [Axis Y] Motor Steps: \"many\" is no whole number and reads as 0 steps a turn; "
       "expected 1 to 10000 steps a turn\n"},
      {"[Engrave Settings]\nCutter Lift=" + lift + "\n",
       "odd [Engrave Settings] Cutter Lift: is 0.05 in; expected 0.1 to 10 in\n"},
      {"[Engrave Settings]\nTraverse Speed=" + Bits(20.0f) + "\n",
       "odd [Engrave Settings] Traverse Speed: is 20 in/s, above the machine's maximum; expected "
       "at most 10 in/s ([Maximum Values] XY Speed)\n"},
      {"[Axis X]\nTable Home=" + Bits(30.0f) + "\n",
       "wrong [Axis X] Table Home: is 30 in, outside the table, which is 25 in long along X; "
       "expected less than that, or a larger [Table Size] Width\n"},
      {"[Axis X]\nSkrew Pitch=1\n",
       "odd [Axis X] Skrew Pitch: is no key of a settings file and is not read; is it \"Axis "
       "X/Screw Pitch\"?\n"},
      {"[Axis X]\nMotor Steps=200\nMotor Steps=400\n",
       "odd [Axis X] Motor Steps: stands there twice: the second is not read; delete one\n"},
      {"", "odd is empty: every value is the default; set the machine up\n"},
      {"\xEF\xBB\xBF[Axis X]\nMotor Steps=1\n[Axis Y]\nMotor Steps=1\n",
       "odd starts with the mark of UTF-8, which hides its first section; save it as ANSI or "
       "UTF-16\n"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Faults(c.file), c.want) << c.file;
  EXPECT_EQ(Faults("IN;SP1;PU0,0;\n").find("wrong is no settings file"), 0u);
  EXPECT_EQ(Faults(std::string("MZ\0\0\n[Axis X]\n", 14)).find("wrong is no settings file"), 0u);
}

TEST(CheckSettings, AnAirHeadNeedsNoDepths) {
  const std::string depths = "[Engrave Settings]\nEngrave Depth=" + Bits(-1.0f) + "\n";
  EXPECT_EQ(Faults(depths).substr(0, 5), "wrong");
  EXPECT_EQ(Faults(depths + "[Axis Z]\nAir Z=1\n").substr(0, 3), "odd");
}

TEST(CheckSettings, WhatAMachineDoesNotHaveStopsNothing) {
  const std::string ratio = "[Spindle]\nGear Ratio=0\n";
  EXPECT_EQ(Faults(ratio).substr(0, 3), "odd");
  EXPECT_EQ(Faults(ratio + "Has Spindle=1\n").substr(0, 5), "wrong");
}

TEST(CheckSettings, TellsWhenAKeyStandsInForAMissingOne) {
  EXPECT_EQ(Faults("[Axis Z]\nTable Surface=8000\n")
                .find("odd [Engrave Settings] Engrave Type: is "
                      "missing beside a Table Surface"),
            0u);
  EXPECT_EQ(Faults("[Engrave Settings]\nEngrave Type=1\n").find("odd [Axis Z] Air Z: is missing"),
            0u);
}

TEST(CheckSettings, AFileOfAnyBytesIsCheckedToItsEnd) {
  std::string bytes = "[Axis X]\n";
  std::uint32_t seed = 1;
  for (int i = 0; i < 1000; ++i) {
    seed = seed * 1664525 + 1013904223;
    bytes += "[]=;\n\r \"'Axis X\xFF\x80 09"[(seed >> 16) % 21];
  }
  EXPECT_EQ(Ini(bytes).Bytes(), bytes);
  Faults(bytes);
  ShowLines(Ini(bytes), true);
  EXPECT_FALSE(ExportSettings(Ini(bytes)).empty());
}

}  // namespace
}  // namespace k7host
