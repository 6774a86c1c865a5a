#include "settings/file.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "settings/keys.h"
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
    return file_.ReadInt(keys::kAxisX, keys::kMotorSteps, otherwise);
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
  EXPECT_EQ(file_.ReadFloat(keys::kAxisX, keys::kScrewPitch, 0.5f), 0.5f);
  wchar_t text[64];
  EXPECT_EQ(file_.ReadText(keys::kSettings, keys::kFriendlyName, L"K7", text, 64), 2u);
  EXPECT_STREQ(text, L"K7");
}

TEST_F(SettingsFileTest, AKeyThatIsPresentButEmptyReadsAsZeroNotAsTheDefault) {
  Raw(L"");
  EXPECT_EQ(Read(200), 0);
  EXPECT_EQ(file_.ReadFloat(keys::kAxisX, keys::kMotorSteps, 0.5f), 0.0f);
  wchar_t text[8] = L"x";
  EXPECT_EQ(file_.ReadText(keys::kAxisX, keys::kMotorSteps, L"default", text, 8), 0u);
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
  EXPECT_EQ(file_.ReadFloat(keys::kAxisX, keys::kMotorSteps, 0.5f), 0.0f);
}

TEST_F(SettingsFileTest, WritesAFloatAsTheDecimalTextOfItsBits) {
  file_.WriteFloat(keys::kEngraveSettings, keys::kCutterLift, 0.125f);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nCutter Lift=1040187392\r\n");
  EXPECT_EQ(file_.ReadFloat(keys::kEngraveSettings, keys::kCutterLift, 1.0f), 0.125f);
  file_.WriteFloat(keys::kEngraveSettings, keys::kCutterLift, -1.0f);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nCutter Lift=-1082130432\r\n");
  EXPECT_EQ(file_.ReadFloat(keys::kEngraveSettings, keys::kCutterLift, 1.0f), -1.0f);
}

TEST_F(SettingsFileTest, WritesOneKeyAndLeavesTheOthers) {
  file_.WriteInt(keys::kJogSpeed, keys::kFast, 5000);
  file_.WriteInt(keys::kJogSpeed, keys::kSlow, -250);
  file_.WriteInt(keys::kJogSpeed, keys::kFast, 1);
  EXPECT_EQ(Contents(), "[Jog Speed]\r\nFast=1\r\nSlow=-250\r\n");
}

TEST_F(SettingsFileTest, WritingNullEmptiesTheKeyInsteadOfRemovingIt) {
  file_.WriteText(keys::kEngraveSettings, keys::kMaterialProfile, L"Oak");
  file_.WriteText(keys::kEngraveSettings, keys::kMaterialProfile, nullptr);
  EXPECT_EQ(Contents(), "[Engrave Settings]\r\nMaterial Profile=\r\n");
}

TEST_F(SettingsFileTest, CutsATextToTheBuffer) {
  file_.WriteText(keys::kSettings, keys::kFriendlyName, L"Workshop");
  wchar_t text[5];
  EXPECT_EQ(file_.ReadText(keys::kSettings, keys::kFriendlyName, L"", text, 5), 4u);
  EXPECT_STREQ(text, L"Work");
  EXPECT_EQ(file_.ReadText(keys::kSettings, keys::kFriendlyName, L"", nullptr, 5), 0u);
}

TEST_F(SettingsFileTest, ReadsAnyFileByPath) {
  file_.WriteInt(keys::kSpindle, keys::kRampTime, 12);
  const SettingsFile other{file_.Path()};
  EXPECT_EQ(other.ReadInt(keys::kSpindle, keys::kRampTime, 30), 12);
}

}  // namespace
}  // namespace k7
