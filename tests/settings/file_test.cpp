#include "settings/file.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/controller_id.h"

namespace k7 {
namespace {

class SettingsFileTest : public testing::Test {
 protected:
  SettingsFileTest() { record_.link.controllerId.Set(id_.c_str()); }
  ~SettingsFileTest() override { std::filesystem::remove(file_.Path()); }

  // What stands in the file, byte for byte.
  std::string Contents() const {
    std::ifstream in{std::filesystem::path{file_.Path()}, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
  }
  void Raw(const wchar_t* text) const {
    WritePrivateProfileStringW(L"Axis X", L"Motor Steps", text, file_.Path());
  }
  std::int32_t Read(std::int32_t otherwise) const {
    return file_.ReadInt(L"Axis X", L"Motor Steps", otherwise);
  }

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
  const SettingsFile file_{(record_.link.controllerId.Set(id_.c_str()), record_.link)};
};

TEST_F(SettingsFileTest, IsTheFileOfTheController) {
  EXPECT_EQ(file_.Path(), k7test::SettingsFileOf(id_));
}

TEST_F(SettingsFileTest, AMissingFileOrKeyReadsAsTheDefault) {
  EXPECT_EQ(Read(200), 200);
  EXPECT_EQ(file_.ReadFloat(L"Axis X", L"Screw Pitch", 0.5f), 0.5f);
  wchar_t text[64];
  EXPECT_EQ(file_.ReadText(L"Settings", L"FriendlyName", L"K7", text, 64), 2u);
  EXPECT_STREQ(text, L"K7");
}

TEST_F(SettingsFileTest, AKeyThatIsPresentButEmptyReadsAsZeroNotAsTheDefault) {
  Raw(L"");
  EXPECT_EQ(Read(200), 0);
  EXPECT_EQ(file_.ReadFloat(L"Axis X", L"Motor Steps", 0.5f), 0.0f);
  wchar_t text[8] = L"x";
  EXPECT_EQ(file_.ReadText(L"Axis X", L"Motor Steps", L"default", text, 8), 0u);
  EXPECT_STREQ(text, L"");
}

TEST_F(SettingsFileTest, AKeyOfBlanksOrEmptyQuotesIsEmpty) {
  Raw(L"   ");
  EXPECT_EQ(Read(200), 0);
  Raw(L"\"\"");
  EXPECT_EQ(Read(200), 0);
}

TEST_F(SettingsFileTest, AnIntIsReadAsSignedDecimalText) {
  constexpr struct {
    const wchar_t* text;
    std::int32_t want;
  } kCases[] = {
      {L"0", 0},
      {L"17", 17},
      {L"-17", -17},
      {L"  17", 17},
      {L"17 steps", 17},
      {L"0.125", 0},
      {L"1.9", 1},
      {L"abc", 0},
      {L"-2147483648", INT32_MIN},
      {L"200", 200},
      {L"2147483647", INT32_MAX},
      {L"4294967295", -1},  // the pattern of a negative number written without a sign
  };
  for (const auto& c : kCases) {
    Raw(c.text);
    EXPECT_EQ(Read(200), c.want) << c.text;
  }
}

TEST_F(SettingsFileTest, AFloatKeyThatHoldsDecimalTextReadsAsZero) {
  Raw(L"0.125");
  EXPECT_EQ(file_.ReadFloat(L"Axis X", L"Motor Steps", 0.5f), 0.0f);
}

TEST_F(SettingsFileTest, WritesAFloatAsTheDecimalTextOfItsBits) {
  file_.WriteFloat(L"Engrave Settings", L"Cutter Lift", 0.125f);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nCutter Lift=1040187392\r\n");
  EXPECT_EQ(file_.ReadFloat(L"Engrave Settings", L"Cutter Lift", 1.0f), 0.125f);
  file_.WriteFloat(L"Engrave Settings", L"Cutter Lift", -1.0f);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nCutter Lift=-1082130432\r\n");
  EXPECT_EQ(file_.ReadFloat(L"Engrave Settings", L"Cutter Lift", 1.0f), -1.0f);
}

TEST_F(SettingsFileTest, WritesOneKeyAndLeavesTheOthers) {
  file_.WriteInt(L"Jog Speed", L"Fast", 5000);
  file_.WriteInt(L"Jog Speed", L"Slow", -250);
  file_.WriteInt(L"Jog Speed", L"Fast", 1);
  EXPECT_EQ(Contents(), "[Jog Speed]\r\nFast=1\r\nSlow=-250\r\n");
}

TEST_F(SettingsFileTest, WritingNullEmptiesTheKeyInsteadOfRemovingIt) {
  file_.WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  file_.WriteText(L"Engrave Settings", L"Material Profile", nullptr);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nMaterial Profile=\r\n");
}

TEST_F(SettingsFileTest, CutsATextToTheBuffer) {
  file_.WriteText(L"Settings", L"FriendlyName", L"Workshop");
  wchar_t text[5];
  EXPECT_EQ(file_.ReadText(L"Settings", L"FriendlyName", L"", text, 5), 4u);
  EXPECT_STREQ(text, L"Work");
  EXPECT_EQ(file_.ReadText(L"Settings", L"FriendlyName", L"", nullptr, 5), 0u);
}

TEST_F(SettingsFileTest, ReadsAnyFileByPath) {
  file_.WriteInt(L"Spindle", L"Ramp Time", 12);
  const SettingsFile other{file_.Path()};
  EXPECT_EQ(other.ReadInt(L"Spindle", L"Ramp Time", 30), 12);
}

}  // namespace
}  // namespace k7
