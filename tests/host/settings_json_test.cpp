#include "settings/settings_json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "settings_texts.h"

namespace k7host {
namespace {

TEST(SettingsJson, EveryFloatComesBackToTheLastBit) {
  const Row& row = Key("Scissors");
  std::uint32_t bits = 1;
  for (int i = 0; i < 500; ++i) {
    bits = bits * 1664525 + 1013904223;
    const auto number = static_cast<std::int32_t>(bits);
    const std::string before = "[Settings]\r\nScissors=" + std::to_string(number) + "\r\n";
    IniText back = Ini("");
    const std::string json = ExportSettings(Ini(before));
    // Numbers that make no sense, as most patterns are, come back as well.
    const std::string error = ImportSettings(json, back);
    if (error.empty()) {
      EXPECT_EQ(back.Bytes(), before) << json;
    } else {
      EXPECT_FALSE(InRange(row, ValueOf(row, number))) << json << error;
    }
  }
}

TEST(SettingsJson, KeepsWhatStandsInTheFileInAnotherWay) {
  const std::string before =
      "[Axis X]\r\nScrew Pitch=0.5\r\nMotor Steps= 0200\r\nLimit Switch=7\r\nMicro Steps=\r\n"
      "[Other]\r\nKey=text\r\n";
  IniText back = Ini("");
  ASSERT_EQ(ImportSettings(ExportSettings(Ini(before)), back), "");
  EXPECT_EQ(back.Find("Axis X", "Screw Pitch"), "0.5");
  EXPECT_EQ(back.Find("Axis X", "Motor Steps"), "0200");
  EXPECT_EQ(back.Find("Axis X", "Limit Switch"), "7");
  EXPECT_EQ(back.Find("Axis X", "Micro Steps"), "");
  EXPECT_EQ(back.Find("Other", "Key"), "text");
}

// Nobody reads what stands there a second time; once imported it would be read.
TEST(SettingsJson, LeavesOutWhatNobodyReads) {
  const std::string json =
      ExportSettings(Ini("[Other]\nKey=first\nKey=again\n[Mine]\nA=1\n[Other]\nWidth=7000\n"));
  IniText back = Ini("");
  ASSERT_EQ(ImportSettings(json, back), "");
  EXPECT_EQ(back.Bytes(), "[Other]\r\nKey=first\r\n[Mine]\r\nA=1\r\n");
}

TEST(SettingsJson, RefusesInOneLineThatCanBeRead) {
  const auto refusal = [](const std::string& settings) {
    IniText file = Ini("");
    return ImportSettings("{\"format\": \"k7 settings 1\", \"settings\": " + settings + "}", file);
  };
  EXPECT_EQ(refusal(R"({"A\nB": 5})"), "A?B: expected keys in braces");
  EXPECT_EQ(refusal(R"({"A": {"qqqqqqqq\r\n\u001b": 5}})").find_first_of("\r\n\x1b"),
            std::string::npos);
  EXPECT_EQ(refusal(R"({"Axis X": {"Screw Pitch": {"value": [[[[1]]]]}}})"),
            "Axis X/Screw Pitch: [...] makes no sense; expected 0.001 to 10 in a turn");
  EXPECT_LT(refusal("{\"" + std::string(5000, 'x') + "\": {\"a\": 5}}").size(), 200u);
}

TEST(SettingsJson, ImportChangesAllOrNothing) {
  constexpr struct {
    const char* settings;
    const char* want;
  } kCases[] = {
      {R"({"Axis X": {"Screw Pitch": {"value": 0.25, "unit": "in a turn"}}})", ""},
      {R"({"Axis X": {"Motor Steps": {"value": 100}, "Screw Pitch": {"value": 0}}})",
       "Axis X/Screw Pitch: 0 makes no sense; expected 0.001 to 10 in a turn"},
      {R"({"Axis X": {"Screw Pitch": {"value": 12.7, "unit": "mm"}}})",
       "Axis X/Screw Pitch: is in \"mm\"; expected \"in a turn\""},
      {R"({"Axis X": {"Motor Steps": {"value": 200.5}}})",
       "Axis X/Motor Steps: 200.5 makes no sense; expected 1 to 10000 steps a turn"},
      {R"({"Axis X": {"Limit Switch": {"value": 1}}})",
       "Axis X/Limit Switch: 1 makes no sense; expected true or false"},
      {R"({"Axis X": {"Screw Pitch": {}}})", "Axis X/Screw Pitch: has no \"value\""},
      {R"({"Axis X": 5})", "Axis X: expected keys in braces"},
      {R"({"A]": {"b": {"text": "1"}}})", "A]/b: no name for a section and a key"},
  };
  const std::string before = "[Axis X]\r\nScrew Pitch=1056964608\r\n";
  for (const auto& c : kCases) {
    IniText file = Ini(before);
    const std::string json =
        std::string(R"({"format": "k7 settings 1", "settings": )") + c.settings + "}";
    EXPECT_EQ(ImportSettings(json, file), c.want);
    EXPECT_EQ(file.Bytes() == before, c.want[0] != '\0') << c.settings;
  }
  IniText file = Ini(before);
  EXPECT_EQ(ImportSettings("{\"format\": 1}", file).find("is no export of settings"), 0u);
  EXPECT_EQ(ImportSettings("{\n\"a\": }", file).find("is no JSON: parse error at line 2"), 0u);
  EXPECT_EQ(ImportSettings(R"({"format": "k7 settings 1", "settings": {"Axis X": {"Skrew Pitch":
                {"value": 1}}}})",
                           file)
                .find("there is no key 'Axis X/Skrew Pitch'; the nearest: \"Axis X/Screw Pitch\""),
            0u);
}

TEST(SettingsJson, ShowTellsWhatIsHeldAndWrong) {
  const std::string json = ShowJson(Ini("[Axis X]\nScrew Pitch=0\n"), "a.ini", false);
  EXPECT_NE(json.find("\"problem\": \"is 0 in a turn\""), std::string::npos) << json;
  EXPECT_NE(json.find("\"held\": false"), std::string::npos);
}

}  // namespace
}  // namespace k7host
