#include "settings/listing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "settings/schema.h"
#include "settings_texts.h"

namespace k7host {
namespace {

TEST(Listing, ShowsEveryKeyWithItsRangeAndFaults) {
  const IniText file = Ini("[Axis X]\nScrew Pitch=0\nOwn=1\n");
  const std::vector<std::string> lines = ShowLines(file, false);
  EXPECT_EQ(lines.size(), std::size(k7::settings::kRows) + 1);
  const auto pitch = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.find("Axis X/Screw Pitch:") == 0;
  });
  ASSERT_NE(pitch, lines.end());
  EXPECT_EQ(*pitch,
            "Axis X/Screw Pitch:                    0 in a turn                            in the "
            "file  range 0.001 to 10 in a turn, default 0.5");
  EXPECT_EQ(pitch[1], "  ! is 0 in a turn; expected 0.001 to 10 in a turn");
  EXPECT_EQ(ShowLines(file, true).back().find("Axis X/Own:"), 0u);
  EXPECT_EQ(GetLine(file, Key("Axis Y/Screw Pitch")),
            "Axis Y/Screw Pitch: 0.5 in a turn (not in the file; default 0.5)");
}

TEST(Listing, AMissingKeyShowsWhatALoadTakes) {
  const IniText file = Ini("[Engrave Settings]\nEngrave Type=1\n[Axis Round]\nCircumference=12\n");
  EXPECT_EQ(ReadKey(file, Key("Cutter Mode")).value, "1");
  EXPECT_EQ(ReadKey(file, Key("Axis Z/Air Z")).value, "on");
  EXPECT_EQ(ReadKey(file, Key("Axis Round/Mode")).value, "2");
  EXPECT_EQ(ReadKey(file, Key("Spindle RPM")).value, "13000 rpm");
  EXPECT_EQ(ReadKey(file, Key("Table Surface")).value, "the table's Depth, in steps");
  EXPECT_FALSE(ReadKey(file, Key("Cutter Mode")).held);
}

TEST(Listing, DiffNamesWhatDiffersInEffect) {
  const IniText a = Ini("[Axis X]\nMotor Steps=200\nMicro Steps=10\nOwn=1\n");
  const IniText b = Ini("[axis x]\nmotor steps= 200\nMicro Steps=16\nLimit Switch=1\nOwn=1\n");
  const std::vector<std::string> lines = DiffLines(a, b);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0],
            "Axis X/Micro Steps:                    10 micro-steps a step                  | 16 "
            "micro-steps a step");
  EXPECT_EQ(lines[1],
            "Axis X/Limit Switch:                   off (missing)                          | on");
  EXPECT_TRUE(DiffLines(a, a).empty());
}

}  // namespace
}  // namespace k7host
