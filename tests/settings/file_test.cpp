#include "settings/file.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "settings/row.h"
#include "support/controller_id.h"

namespace k7 {
namespace {

using settings::FlagRow;
using settings::FloatRow;
using settings::IntRow;
using settings::Range;
using settings::Reader;
using settings::TextRow;

// Rows of this test's own: keys as they stand in files, defaults that tell a default from a value.
constexpr Range kAny{-1e9, 1e9};
constexpr IntRow kSteps(L"Axis X", L"Motor Steps", "", 200, kAny);
constexpr FloatRow kPitch(L"Axis X", L"Screw Pitch", "", 0.5, kAny);
constexpr FloatRow kStepsAsFloat(L"Axis X", L"Motor Steps", "", 0.5, kAny);
constexpr TextRow kStepsAsText(L"Axis X", L"Motor Steps", "", L"default", 8);
constexpr FlagRow kSwitch(L"Axis X", L"Limit Switch", "", 0, {0, 1});
constexpr TextRow kName(L"Settings", L"FriendlyName", "", L"K7", 63);
constexpr FloatRow kLift(L"Engrave Settings", L"Cutter Lift", "", 1.0, kAny);
constexpr TextRow kProfile(L"Engrave Settings", L"Material Profile", "", L"", 63);
constexpr IntRow kFast(L"Jog Speed", L"Fast", "", 0, kAny);
constexpr IntRow kSlow(L"Jog Speed", L"Slow", "", 0, kAny);
constexpr IntRow kRamp(L"Spindle", L"Ramp Time", "", 30, kAny);

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

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
  const SettingsFile file_{(record_.link.controllerId.Set(id_.c_str()), record_.link)};
};

TEST_F(SettingsFileTest, IsTheFileOfTheController) {
  EXPECT_EQ(file_.Path(), k7test::SettingsFileOf(id_));
}

TEST_F(SettingsFileTest, AMissingFileOrKeyReadsAsTheDefault) {
  EXPECT_EQ(file_.ReadInt(kSteps), 200);
  EXPECT_EQ(file_.ReadFloat(kPitch), 0.5f);
  wchar_t text[64];
  EXPECT_EQ(file_.ReadText(kName, text, 64), 2u);
  EXPECT_STREQ(text, L"K7");
}

TEST_F(SettingsFileTest, AKeyThatIsPresentButEmptyReadsAsZeroNotAsTheDefault) {
  Raw(L"");
  EXPECT_EQ(file_.ReadInt(kSteps), 0);
  EXPECT_EQ(file_.ReadFloat(kStepsAsFloat), 0.0f);
  wchar_t text[8] = L"x";
  EXPECT_EQ(file_.ReadText(kStepsAsText, text, 8), 0u);
  EXPECT_STREQ(text, L"");
}

TEST_F(SettingsFileTest, AKeyOfBlanksOrEmptyQuotesIsEmpty) {
  Raw(L"   ");
  EXPECT_EQ(file_.ReadInt(kSteps), 0);
  Raw(L"\"\"");
  EXPECT_EQ(file_.ReadInt(kSteps), 0);
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
    EXPECT_EQ(file_.ReadInt(kSteps), c.want) << c.text;
  }
}

TEST_F(SettingsFileTest, AFloatKeyThatHoldsDecimalTextReadsAsZero) {
  Raw(L"0.125");
  EXPECT_EQ(file_.ReadFloat(kStepsAsFloat), 0.0f);
}

TEST_F(SettingsFileTest, WritesAFloatAsTheDecimalTextOfItsBits) {
  file_.WriteFloat(kLift, 0.125f);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nCutter Lift=1040187392\r\n");
  EXPECT_EQ(file_.ReadFloat(kLift), 0.125f);
  file_.WriteFloat(kLift, -1.0f);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nCutter Lift=-1082130432\r\n");
  EXPECT_EQ(file_.ReadFloat(kLift), -1.0f);
}

TEST_F(SettingsFileTest, WritesOneKeyAndLeavesTheOthers) {
  file_.WriteInt(kFast, 5000);
  file_.WriteInt(kSlow, -250);
  file_.WriteInt(kFast, 1);
  EXPECT_EQ(Contents(), "[Jog Speed]\r\nFast=1\r\nSlow=-250\r\n");
}

TEST_F(SettingsFileTest, WritingNullEmptiesTheKeyInsteadOfRemovingIt) {
  file_.WriteText(kProfile, L"Oak");
  file_.WriteText(kProfile, nullptr);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nMaterial Profile=\r\n");
}

TEST_F(SettingsFileTest, AFlagIsSetByAnyNumberButZeroAndWrittenAsOneOrZero) {
  EXPECT_FALSE(file_.ReadFlag(kSwitch));
  file_.WriteFlag(kSwitch, true);
  EXPECT_EQ(Contents(), "[Axis X]\r\nLimit Switch=1\r\n");
  EXPECT_TRUE(file_.ReadFlag(kSwitch));
  file_.WriteText(kSwitch, L"-7");
  EXPECT_TRUE(file_.ReadFlag(kSwitch));
  EXPECT_EQ(file_.ReadNumber(kSwitch), -7);
  file_.WriteFlag(kSwitch, false);
  EXPECT_EQ(Contents(), "[Axis X]\r\nLimit Switch=0\r\n");
}

TEST_F(SettingsFileTest, AMissingKeyReadsAsTheReaderTakesIt) {
  constexpr FloatRow kOffset = kPitch.ButFor(Reader::TableSetupDialog, 0.25);
  EXPECT_EQ(file_.ReadFloat(kOffset), 0.5f);
  EXPECT_EQ(file_.ReadFloat(kOffset, Reader::Load), 0.5f);
  EXPECT_EQ(file_.ReadFloat(kOffset, Reader::TableSetupDialog), 0.25f);
  EXPECT_EQ(file_.ReadNumber(kOffset, Reader::TableSetupDialog), 1048576000);
  file_.WriteFloat(kOffset, 2.0f);
  EXPECT_EQ(file_.ReadFloat(kOffset, Reader::TableSetupDialog), 2.0f);
}

TEST_F(SettingsFileTest, AMissingKeyOfAChainReadsAsTheValueThatStandsIn) {
  EXPECT_EQ(file_.ReadChained(kSteps, 17), 17);
  Raw(L"");
  EXPECT_EQ(file_.ReadChained(kSteps, 17), 0);
  Raw(L"3");
  EXPECT_EQ(file_.ReadChained(kSteps, 17), 3);
}

TEST_F(SettingsFileTest, CutsATextToTheBuffer) {
  file_.WriteText(kName, L"Workshop");
  wchar_t text[5];
  EXPECT_EQ(file_.ReadText(kName, text, 5), 4u);
  EXPECT_STREQ(text, L"Work");
  EXPECT_EQ(file_.ReadText(kName, nullptr, 5), 0u);
}

TEST_F(SettingsFileTest, ReadsAnyFileByPath) {
  file_.WriteInt(kRamp, 12);
  const SettingsFile other{file_.Path()};
  EXPECT_EQ(other.ReadInt(kRamp), 12);
}

}  // namespace
}  // namespace k7
