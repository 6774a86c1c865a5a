// The pure parts of k7host settings and k7host doctor: texts of a settings file, keys and values,
// checks, listings, JSON, the report.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "doctor/answers.h"
#include "doctor/report.h"
#include "latin1.h"
#include "settings/ini_text.h"
#include "settings/key_text.h"
#include "settings/listing.h"
#include "settings/schema.h"
#include "settings/settings_check.h"
#include "settings/settings_json.h"

namespace k7host {
namespace {

const k7test::Latin1 kPage;

IniText Ini(std::string_view bytes) {
  return {bytes, kPage};
}

// Wide text as a file in UTF-16 has it.
std::string Utf16(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

const Row& Key(const char* name) {
  const KeyFound found = FindKey(name);
  EXPECT_NE(found.row, nullptr) << name;
  return *found.row;
}

std::string Bits(float value) {
  return std::to_string(std::bit_cast<std::int32_t>(value));
}

TEST(IniText, ChangesOneLineAndKeepsEveryOther) {
  const std::string before =
      "; by hand\r\n[Axis X]\r\n Screw Pitch =1056964608\r\nnonsense\r\nOwn=1\r\n\r\n"
      "[Other Program]\r\nKey=  a b \r\n";
  IniText ini = Ini(before);
  EXPECT_EQ(ini.Bytes(), before);
  EXPECT_EQ(ini.Find("axis x", "SCREW PITCH"), "1056964608");
  EXPECT_EQ(ini.Find("Other Program", "Key"), "a b");
  EXPECT_EQ(ini.Find("Axis X", "Key"), std::nullopt);
  ASSERT_TRUE(ini.Set("Axis X", "Screw Pitch", "1048576000"));
  ASSERT_TRUE(ini.Set("Axis X", "Micro Steps", "16"));
  ASSERT_TRUE(ini.Set("Prox", "Semi Auto Offset", "0"));
  EXPECT_EQ(ini.Bytes(),
            "; by hand\r\n[Axis X]\r\n Screw Pitch =1048576000\r\nnonsense\r\nOwn=1\r\n"
            "Micro Steps=16\r\n\r\n[Other Program]\r\nKey=  a b \r\n"
            "[Prox]\r\nSemi Auto Offset=0\r\n");
}

TEST(IniText, TakesTheLineEndOfTheFile) {
  IniText unixEnds = Ini("[Axis X]\nScrew Pitch=1");
  ASSERT_TRUE(unixEnds.Set("Axis X", "Screw Pitch", "2"));
  ASSERT_TRUE(unixEnds.Set("Axis X", "Motor Steps", "3"));
  EXPECT_EQ(unixEnds.Bytes(), "[Axis X]\nScrew Pitch=2\nMotor Steps=3\n");
  IniText fresh = Ini("");
  ASSERT_TRUE(fresh.Set("Axis X", "Motor Steps", "3"));
  EXPECT_EQ(fresh.Bytes(), "[Axis X]\r\nMotor Steps=3\r\n");
}

TEST(IniText, TheFirstOfTwoCounts) {
  IniText ini = Ini("[A]\nk=1\nk=2\n[B]\n[A]\nk=3\nonly here=4\n");
  EXPECT_EQ(ini.Find("A", "k"), "1");
  EXPECT_EQ(ini.Find("A", "only here"), std::nullopt);
  ASSERT_TRUE(ini.Set("A", "k", "9"));
  EXPECT_EQ(ini.Bytes(), "[A]\nk=9\nk=2\n[B]\n[A]\nk=3\nonly here=4\n");
}

TEST(IniText, KeepsTheCodePageOrUtf16) {
  IniText ansi = Ini("[Settings]\nFriendlyName=Fr\xE4se\n");
  EXPECT_EQ(ansi.Find("Settings", "FriendlyName"), "Fr\xC3\xA4se");
  ASSERT_TRUE(ansi.Set("Settings", "FriendlyName", "\xC3\xBC"));
  EXPECT_EQ(ansi.Bytes(), "[Settings]\nFriendlyName=\xFC\n");
  EXPECT_FALSE(ansi.Set("Settings", "FriendlyName", "\xE2\x82\xAC"));  // not in this page
  EXPECT_FALSE(ansi.Set("Settings", "FriendlyName", "two\nlines"));
  EXPECT_EQ(ansi.Bytes(), "[Settings]\nFriendlyName=\xFC\n");

  // Cut off in the middle of a character, as by a full disk.
  const std::string cut = Utf16(u"[Settings]\r\nA=1") + "B";
  EXPECT_EQ(Ini(cut).Bytes(), cut);

  IniText wide = Ini(Utf16(u"[Settings]\r\nFriendlyName=\u20AC\r\n"));
  EXPECT_TRUE(wide.IsUtf16());
  EXPECT_EQ(wide.Find("Settings", "FriendlyName"), "\xE2\x82\xAC");
  ASSERT_TRUE(wide.Set("Settings", "FriendlyName", "\xF0\x9F\x98\x80"));
  EXPECT_EQ(wide.Bytes(), Utf16(u"[Settings]\r\nFriendlyName=\U0001F600\r\n"));
}

TEST(IniText, TextsWithBlanksAtTheirEndsComeBackWhole) {
  IniText ini = Ini("");
  for (const std::string text : {" a ", "'q'", "\"q\"", "a", ""}) {
    ASSERT_TRUE(ini.Set("Settings", "FriendlyName", text));
    EXPECT_EQ(ini.Find("Settings", "FriendlyName"), text);
  }
}

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

TEST(Doctor, UnderstandsAnswers) {
  EXPECT_TRUE(IsSignOfLife("SmoothieIsConnected"));
  EXPECT_EQ(IdentityIn("sd: controller_id is set to ABCDEF0123456789"), "ABCDEF0123456789");
  EXPECT_EQ(IdentityIn("ok"), "");
  EXPECT_TRUE(IsNoIdentity("0000000000000000"));
  EXPECT_EQ(ShownBytes("Gr\xFF\r\n"), "Gr\\xFF\\r\\n");
  EXPECT_EQ(ShownBytes(std::string(100, 'x')), std::string(60, 'x') + "...");
  const Latency latency = LatencyOf({3.0, 1.0, 2.0});
  EXPECT_EQ(MsText(latency.median), "2.0");
  EXPECT_EQ(MsText(latency.worst), "3.0");
}

TEST(Doctor, TheWorstFindingIsTheExitCode) {
  const Finding ok{Level::Ok, About::Port, "port COM7", "opens", ""};
  const Finding warn{Level::Warn, About::Settings, "settings", "odd", "look at it"};
  const Finding port{Level::Fail, About::Port, "port COM7", "is not there", "plug it in"};
  const Finding value{Level::Fail, About::Settings, "settings", "zero", "set it"};
  EXPECT_EQ(ExitCodeOf({ok}), 0);
  EXPECT_EQ(ExitCodeOf({ok, warn}), 1);
  EXPECT_EQ(ExitCodeOf({ok, port}), 1);
  EXPECT_EQ(ExitCodeOf({value, port}), 2);
  EXPECT_EQ(FindingLine(warn), "warn  settings: odd -> look at it");
  EXPECT_EQ(FindingLine(ok), "ok    port COM7: opens");
  EXPECT_EQ(SummaryText({ok, warn, port, value}), "1 ok, 1 warning, 2 failures");
  EXPECT_NE(ReportJson({ok, warn}).find("\"worst\": \"warn\""), std::string::npos);
}

}  // namespace
}  // namespace k7host
