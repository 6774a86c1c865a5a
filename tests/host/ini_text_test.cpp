#include "settings/ini_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "settings_texts.h"

namespace k7host {
namespace {

// Wide text as a file in UTF-16 has it.
std::string Utf16(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
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

}  // namespace
}  // namespace k7host
