#include "settings/key_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "settings_texts.h"

namespace k7host {
namespace {

TEST(KeyText, FindsKeysByTheirNamesAndNamesTheNearest) {
  EXPECT_EQ(KeyName(Key("axis x/screw pitch")), "Axis X/Screw Pitch");
  EXPECT_EQ(KeyName(Key("Cutter Lift")), "Engrave Settings/Cutter Lift");
  const std::string slip = FindKey("Axis X/Skrew Pitch").error;
  EXPECT_EQ(slip.find("there is no key 'Axis X/Skrew Pitch'; the nearest: \"Axis X/Screw Pitch\""),
            0u)
      << slip;
  EXPECT_EQ(FindKey("Screw Pitch").error,
            "'Screw Pitch' stands in several sections: \"Axis X/Screw Pitch\", "
            "\"Axis Y/Screw Pitch\", \"Axis Z/Screw Pitch\"");
  EXPECT_EQ(FindKey("qqqqqqqqqqqq").error,
            "there is no key 'qqqqqqqqqqqq'; k7host settings show lists them all");
  EXPECT_EQ(NearestKeys("lift", 1), std::vector<std::string>{"Engrave Settings/Cutter Lift"});
}

TEST(KeyText, EncodesWhatPeopleType) {
  constexpr struct {
    const char* key;
    const char* typed;
    const char* want;  // in the file; null: refused
  } kCases[] = {
      {"Axis X/Screw Pitch", "0.5", "1056964608"},
      {"Axis X/Screw Pitch", " +0.125 in ", "1040187392"},
      {"Axis X/Screw Pitch", "0.125 in a turn", "1040187392"},
      {"Axis X/Screw Pitch", "12.7 mm", nullptr},
      {"Axis X/Screw Pitch", "0", nullptr},
      {"Axis X/Screw Pitch", "nan", nullptr},
      {"Axis X/Screw Pitch", "1e50", nullptr},
      {"Axis X/Screw Pitch", "half", nullptr},
      {"Axis X/Screw Pitch", "", nullptr},
      {"Cutter Lift", "0.1", "1036831949"},  // the bound itself, which no float is exactly
      {"Cutter Lift", "0.09", nullptr},
      {"Axis X/Motor Steps", "400", "400"},
      {"Axis X/Motor Steps", "400 steps", "400"},
      {"Axis X/Motor Steps", "400.5", nullptr},
      {"Axis X/Motor Steps", "0", nullptr},
      {"Current Location/X Axis", "-2147483648", "-2147483648"},
      {"Current Location/X Axis", "2147483648", nullptr},
      {"Axis X/Limit Switch", "ON", "1"},
      {"Axis X/Limit Switch", "no", "0"},
      {"Axis X/Limit Switch", "2", nullptr},
      {"FriendlyName", "My machine", "My machine"},
  };
  for (const auto& c : kCases) {
    const Encoded got = Encode(Key(c.key), c.typed);
    EXPECT_EQ(got.error.empty(), c.want != nullptr) << c.key << " " << c.typed << got.error;
    if (c.want != nullptr) {
      EXPECT_EQ(got.text, c.want) << c.key << " " << c.typed;
    }
  }
  EXPECT_EQ(Encode(Key("Axis X/Screw Pitch"), "0").error,
            "'0' makes no sense; expected 0.001 to 10 in a turn");
  EXPECT_FALSE(Encode(Key("FriendlyName"), std::string(64, 'x')).error.empty());
}

TEST(KeyText, ReadsNumbersAsTheProfileFunctionsDo) {
  EXPECT_EQ(NumberInText(" -12abc"), -12);
  EXPECT_EQ(NumberInText("0.5"), 0);
  EXPECT_EQ(NumberInText(""), 0);
  EXPECT_EQ(NumberInText("3212836864"), std::bit_cast<std::int32_t>(-1.0f));
  EXPECT_TRUE(IsWholeNumber(" 4294967295 "));
  for (const char* text : {"", "0.5", "1e3", "4294967296", "12abc", "--1"}) {
    EXPECT_FALSE(IsWholeNumber(text)) << text;
  }
}

TEST(KeyText, ShowsValuesInTheirUnits) {
  EXPECT_EQ(ValueText(Key("Axis X/Screw Pitch"), "1056964608"), "0.5 in a turn");
  EXPECT_EQ(ValueText(Key("Axis X/Limit Switch"), "7"), "on");
  EXPECT_EQ(ValueText(Key("Table Size/Width"), "25000"), "25000 thousandths of an inch");
  EXPECT_EQ(NumberText(0.1f), "0.1");
  EXPECT_EQ(NumberText(3.4e38f), "3.4e+38");
  EXPECT_EQ(DefaultText(Key("Cutter Mode")), "0; a load takes Engrave Type");
  EXPECT_EQ(RangeText(Key("Pass Copies")), "1 passes");
}

}  // namespace
}  // namespace k7host
