#include "settings/load.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "device/module_state.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "settings/settings_values.h"
#include "support/controller_id.h"

namespace k7 {
namespace {

// A record without a link and the settings file of an identity of its own.
class LoadTest : public testing::Test {
 protected:
  LoadTest() : file_((record_.controllerId.Set(id_.c_str()), record_)) {}
  ~LoadTest() override {
    std::filesystem::remove(file_.Path());
    hasRoundAttachment = 0;
    hasSpindle = 0;
  }

  void Load() { LoadSettings(record_); }
  void Int(const wchar_t* section, const wchar_t* key, std::int32_t value) {
    file_.WriteInt(section, key, value);
  }
  void Float(const wchar_t* section, const wchar_t* key, float value) {
    file_.WriteFloat(section, key, value);
  }
  void Text(const wchar_t* section, const wchar_t* key, const wchar_t* text) {
    file_.WriteText(section, key, text);
  }
  void Fixture(std::int32_t mode) {
    Int(L"Axis Round", L"Has Round Attachment", 1);
    Int(L"Axis Round", L"Mode", mode);
    Text(L"Axis Round", L"Circumference", L"10");
  }
  void Locations(std::int32_t x, std::int32_t y, std::int32_t round) {
    Int(L"Current Location", L"X Axis", x);
    Int(L"Current Location", L"Y Axis", y);
    Int(L"Current Location", L"R Axis", round);
  }
  std::vector<float> Passes() const {
    if (!record_.passDepths) return {};
    return {record_.passDepths.get(), record_.passDepths.get() + record_.passCount};
  }

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
  const SettingsFile file_;
};

// ----------------------------------------------------------------------------- keys and defaults

// Every key that goes into a field: its default without a file, a value, and empty.
struct KeyCase {
  const wchar_t* section;
  const wchar_t* key;
  double otherwise;     // without the key
  const wchar_t* text;  // as it would stand in the file
  double want;          // with that text
  std::function<double(const DeviceState&)> field;
};

#define K7_FIELD(name) [](const DeviceState& r) -> double { return r.name; }

const KeyCase kKeyCases[] = {
    {L"Settings", L"Scissors", 1.0, L"1073741824", 2.0, K7_FIELD(scissors)},
    {L"Axis X", L"Motor Steps", 200, L"400", 400, K7_FIELD(motorStepsX)},
    {L"Axis X", L"Micro Steps", 10, L"8", 8, K7_FIELD(microStepsX)},
    {L"Axis X", L"Screw Pitch", 0.5, L"1040187392", 0.125, K7_FIELD(screwPitchX)},
    {L"Axis X", L"Limit Switch", 0, L"1", 1, K7_FIELD(limitSwitchX)},
    {L"Axis Y", L"Motor Steps", 200, L"400", 400, K7_FIELD(motorStepsY)},
    {L"Axis Y", L"Micro Steps", 10, L"8", 8, K7_FIELD(microStepsY)},
    {L"Axis Y", L"Screw Pitch", 0.5, L"1040187392", 0.125, K7_FIELD(screwPitchY)},
    {L"Axis Y", L"Limit Switch", 0, L"7", 1, K7_FIELD(limitSwitchY)},
    {L"Axis Z", L"Motor Steps", 200, L"400", 400, K7_FIELD(motorStepsZ)},
    {L"Axis Z", L"Micro Steps", 10, L"8", 8, K7_FIELD(microStepsZ)},
    {L"Axis Z", L"Screw Pitch", 0.5, L"1040187392", 0.125, K7_FIELD(screwPitchZ)},
    {L"Axis Z", L"Limit Switch", 0, L"-1", 1, K7_FIELD(limitSwitchZ)},
    {L"Axis Z", L"Prox Switch", 0, L"256", 1, K7_FIELD(proxSwitch)},
    {L"Axis Z", L"Cutter Home", 0, L"1065353216", 4000, K7_FIELD(cutterHome)},
    {L"Axis X", L"Table Home", 0, L"1065353216", 4000, K7_FIELD(tableHomeX)},
    {L"Axis Y", L"Table Home", 0, L"1065353216", 4000, K7_FIELD(tableHomeY)},
    {L"Axis Z", L"Table Surface", 8000, L"9000", 9000, K7_FIELD(tableSurface)},
    {L"Axis Round", L"Motor Steps", 200, L"400", 400, K7_FIELD(motorStepsRound)},
    {L"Axis Round", L"Micro Steps", 10, L"8", 8, K7_FIELD(microStepsRound)},
    {L"Axis Round", L"Circumference", 0, L"2", 2, K7_FIELD(roundCircumference)},
    {L"Axis Round", L"Gear Ratio", 20.0, L"1065353216", 1.0, K7_FIELD(roundGearRatio)},
    {L"Table Size", L"Width", 25000, L"1", 1, K7_FIELD(tableWidth)},
    {L"Table Size", L"Height", 16000, L"2", 2, K7_FIELD(tableHeight)},
    {L"Table Size", L"Depth", 2000, L"3", 3, K7_FIELD(tableDepth)},
    {L"Jog Speed", L"Fast", 5000, L"4", 4, K7_FIELD(jogFast)},
    {L"Jog Speed", L"Slow", 250, L"5", 5, K7_FIELD(jogSlow)},
    {L"Engrave Settings", L"Cutter Lift", 0.125, L"1056964608", 0.5, K7_FIELD(cutterLift)},
    {L"Engrave Settings", L"Engrave Depth", 0.0625, L"1040187392", 0.125, K7_FIELD(engraveDepth)},
    {L"Engrave Settings", L"Engrave Depth", 0.0625, L"1040187392", 0.125, K7_FIELD(passDepth)},
    {L"Engrave Settings", L"Traverse Speed", 1, L"1073741824", 2, K7_FIELD(traverseSpeed)},
    {L"Engrave Settings", L"Cutter Down Speed", 1, L"1073741824", 2, K7_FIELD(cutterDownSpeed)},
    {L"Engrave Settings", L"Cutter Up Speed", 1, L"1073741824", 2, K7_FIELD(cutterUpSpeed)},
    {L"Engrave Settings", L"Engrave Speed", 1, L"1073741824", 2, K7_FIELD(engraveSpeed)},
    {L"Engrave Settings", L"Grid Speed", 1, L"1073741824", 2, K7_FIELD(gridSpeed)},
    {L"Engrave Settings", L"Engrave Delay", 0, L"1069547520", 1500, K7_FIELD(engraveDelayMs)},
    {L"Engrave Settings", L"X Axis Factor", 1, L"2", 2, K7_FIELD(xAxisFactor)},
    {L"Engrave Settings", L"Y Axis Factor", 1, L"3", 3, K7_FIELD(yAxisFactor)},
    {L"Engrave Settings", L"Engrave Type", 8000, L"2", 2, K7_FIELD(engraveType)},
    {L"Engrave Settings", L"Cutter Mode", 8000, L"3", 3, K7_FIELD(cutterMode)},
    {L"Engrave Settings", L"Engrave By Color", 0, L"1", 1, K7_FIELD(engraveByColor)},
    {L"Engrave Settings", L"Dont Lower Air Z", 0, L"2", 1, K7_FIELD(dontLowerAirZ)},
    {L"Prox", L"Semi Auto Offset", 0.5, L"1040187392", 0.125, K7_FIELD(probeOffset)},
    {L"Spindle", L"Has Spindle", 0, L"1", 1, K7_FIELD(spindlePresent)},
    {L"Spindle", L"Motor RPM", 13000, L"2000", 6500, K7_FIELD(spindleMaxRpm)},
    {L"Spindle", L"Gear Ratio", 13000, L"1073741824", 8000, K7_FIELD(spindleMaxRpm)},
    {L"Spindle", L"Spindle RPM", 13000, L"9000", 9000, K7_FIELD(spindleRpm)},
    {L"Braille", L"Bead Insert Tool", 0, L"256", 1, K7_FIELD(beadInsertTool)},
    {L"Braille", L"Bead Insert Tool X Offset", 0, L"1250", 1250, K7_FIELD(beadToolOffsetX)},
    {L"Braille", L"Bead Insert Tool X Offset", 0, L"1250", 1250, K7_FIELD(beadToolOffsetY)},
    {L"Braille", L"Bead Insert Tool Y Offset", 0, L"-500", -500, K7_FIELD(beadToolOffsetY)},
    {L"Diode", L"Diode Pointer", 0, L"1", 1, K7_FIELD(diodePointer)},
    {L"Diode", L"Diode Pointer X Offset", 0, L"-1250", -1250, K7_FIELD(diodeOffsetX)},
    {L"Diode", L"Diode Pointer X Offset", 0, L"-1250", -1250, K7_FIELD(diodeOffsetY)},
    {L"Diode", L"Diode Pointer Y Offset", 0, L"500", 500, K7_FIELD(diodeOffsetY)},
    {L"Current Location", L"X Axis", 0, L"-123", -123, K7_FIELD(lastX)},
    {L"Current Location", L"X Axis", 0, L"-123", -123, K7_FIELD(savedPositionX)},
    {L"Current Location", L"Y Axis", 0, L"456", 456, K7_FIELD(lastY)},
    {L"Current Location", L"Y Axis", 0, L"456", 456, K7_FIELD(savedPositionY)},
};

#undef K7_FIELD

TEST_F(LoadTest, EveryKeyHasItsDefaultAndGoesToItsField) {
  for (const KeyCase& c : kKeyCases) {
    std::filesystem::remove(file_.Path());
    Load();
    EXPECT_EQ(c.field(record_), c.otherwise) << c.section << L" / " << c.key;
    Text(c.section, c.key, c.text);
    Load();
    EXPECT_EQ(c.field(record_), c.want) << c.section << L" / " << c.key;
  }
}

TEST_F(LoadTest, AMissingFileYieldsTheMachineAsDelivered) {
  Load();
  EXPECT_STREQ(record_.friendlyName, L"K7 System Controller");
  EXPECT_EQ(record_.roundAxisMode, 0u);
  EXPECT_EQ(record_.cameraId, nullptr);
  EXPECT_EQ(record_.passCount, 1u);
  EXPECT_EQ(Passes(), std::vector<float>{0.0625f});
  EXPECT_EQ(record_.spindleMaxRpm, 13000);
  EXPECT_EQ(record_.spindleRpm, 13000);
  EXPECT_EQ(hasRoundAttachment, 0);
  EXPECT_EQ(hasSpindle, 0);
  EXPECT_FALSE(std::filesystem::exists(file_.Path()));
}

TEST_F(LoadTest, AnEmptyKeyIsZeroNotItsDefault) {
  Text(L"Axis X", L"Motor Steps", L"");
  Text(L"Table Size", L"Width", L"");
  Text(L"Engrave Settings", L"Engrave Speed", L"");
  Load();
  EXPECT_EQ(record_.motorStepsX, 0);
  EXPECT_EQ(record_.tableWidth, 0);
  EXPECT_EQ(record_.engraveSpeed, 0.0f);
}

TEST_F(LoadTest, AFloatKeyOfDecimalTextIsZero) {
  Text(L"Engrave Settings", L"Engrave Depth", L"0.125");
  Load();
  EXPECT_EQ(record_.engraveDepth, 0.0f);
}

TEST_F(LoadTest, CutsAFriendlyNameToItsField) {
  Text(L"Settings", L"FriendlyName", std::wstring(100, L'n').c_str());
  Load();
  EXPECT_EQ(record_.friendlyName, std::wstring(63, L'n'));
  Text(L"Settings", L"FriendlyName", L"");
  Load();
  EXPECT_STREQ(record_.friendlyName, L"");
}

TEST_F(LoadTest, KeepsTheCameraIdentityUntilTheFileHasNone) {
  Text(L"Settings", L"CameraID", L"Camera 7");
  Load();
  ASSERT_NE(record_.cameraId, nullptr);
  EXPECT_STREQ(record_.cameraId.get(), L"Camera 7");
  Text(L"Settings", L"CameraID", L"");
  Load();
  EXPECT_EQ(record_.cameraId, nullptr);
}

// ------------------------------------------------------------------------------------- engraving

TEST_F(LoadTest, ALiftBelowAThousandthIsAThousandth) {
  for (const std::int32_t bits : {0, BitsOfFloat(-1.0f), BitsOfFloat(0.0005f), 0x7FC00000}) {
    Int(L"Engrave Settings", L"Cutter Lift", bits);
    Load();
    EXPECT_EQ(record_.cutterLift, 0.001f) << bits;
  }
}

TEST_F(LoadTest, ADelayIsCutToWholeMilliseconds) {
  Float(L"Engrave Settings", L"Engrave Delay", 0.0019f);
  Load();
  EXPECT_EQ(record_.engraveDelayMs, 1);
  Float(L"Engrave Settings", L"Engrave Delay", 1e30f);
  Load();
  EXPECT_EQ(record_.engraveDelayMs, INT32_MAX);
}

TEST_F(LoadTest, HomesAreRoundedToWholeSteps) {
  Float(L"Axis X", L"Table Home", 1.0f + 0.4f / 4000.0f);
  Float(L"Axis Y", L"Table Home", 1.0f + 0.6f / 4000.0f);
  Load();
  EXPECT_EQ(record_.tableHomeX, 4000);
  EXPECT_EQ(record_.tableHomeY, 4001);
}

TEST_F(LoadTest, APitchOfZeroSaturatesInsteadOfOverflowing) {
  Int(L"Axis X", L"Screw Pitch", 0);
  Int(L"Axis Z", L"Screw Pitch", 0);
  Float(L"Axis X", L"Table Home", 1.0f);
  Load();
  EXPECT_EQ(record_.tableHomeX, INT32_MAX);
  EXPECT_EQ(record_.cutterHome, 0);  // nothing times infinity
  EXPECT_EQ(record_.tableSurface, INT32_MAX / 1000);
}

// The depth of the table, thousandths of an inch, in steps.
TEST_F(LoadTest, TheTableSurfaceDefaultsToTheDepthOfTheTable) {
  Int(L"Table Size", L"Depth", 1500);
  Float(L"Axis Z", L"Screw Pitch", 0.25f);
  Load();
  EXPECT_EQ(record_.tableSurface, 12000);
}

TEST_F(LoadTest, ATableSurfaceOfZeroTakesTheCutterHome) {
  Int(L"Axis Z", L"Table Surface", 0);
  Float(L"Axis Z", L"Cutter Home", 0.5f);
  Load();
  EXPECT_EQ(record_.tableSurface, 2000);
}

// ------------------------------------------------------------------------------ chained defaults

TEST_F(LoadTest, TheEngraveTypeDefaultsToTheRawTableSurface) {
  Int(L"Axis Z", L"Table Surface", 0);
  Float(L"Axis Z", L"Cutter Home", 0.5f);
  Load();
  EXPECT_EQ(record_.engraveType, 0u);  // the number read, not the home that replaced it
  Int(L"Axis Z", L"Table Surface", 9000);
  Load();
  EXPECT_EQ(record_.engraveType, 9000u);
}

TEST_F(LoadTest, TheCutterModeDefaultsToTheEngraveType) {
  Int(L"Engrave Settings", L"Engrave Type", 2);
  Load();
  EXPECT_EQ(record_.cutterMode, 2u);
  EXPECT_EQ(record_.engraveType, 2u);
}

TEST_F(LoadTest, AirZDefaultsToTheCutterMode) {
  Int(L"Engrave Settings", L"Cutter Mode", 1);
  Load();
  EXPECT_EQ(record_.cutterMode, kCutterAirZ);
  Int(L"Axis Z", L"Air Z", 0);
  Load();
  EXPECT_EQ(record_.cutterMode, 1u);
}

TEST_F(LoadTest, TheSpindleSpeedDefaultsToTheBitsOfTheSemiAutoOffset) {
  Float(L"Prox", L"Semi Auto Offset", 0.25f);
  Load();
  EXPECT_EQ(record_.spindleRpm, 13000);  // bits far above any maximum
  Int(L"Prox", L"Semi Auto Offset", 0);
  Load();
  EXPECT_EQ(record_.spindleRpm, 1);
  Int(L"Prox", L"Semi Auto Offset", 500);
  Load();
  EXPECT_EQ(record_.spindleRpm, 500);
}

TEST_F(LoadTest, TheRoundModeDefaultsToTheLengthOfTheCircumferenceText) {
  Int(L"Axis Round", L"Has Round Attachment", 1);
  Load();
  EXPECT_EQ(record_.roundAxisMode, 0u);
  Text(L"Axis Round", L"Circumference", L"9");
  Load();
  EXPECT_EQ(record_.roundAxisMode, 1u);
  Text(L"Axis Round", L"Circumference", L"2D");
  Load();
  EXPECT_EQ(record_.roundAxisMode, 2u);
  Text(L"Axis Round", L"Circumference", L"9.42");
  Load();
  EXPECT_EQ(record_.roundAxisMode, 4u);
}

// ----------------------------------------------------------------------------------------- air Z

TEST_F(LoadTest, AnAirZOfOneForcesItsModeSpeedsLiftAndDepth) {
  Int(L"Axis Z", L"Air Z", 1);
  Int(L"Engrave Settings", L"Engrave Type", 1);
  Int(L"Engrave Settings", L"Cutter Mode", 2);
  Float(L"Engrave Settings", L"Engrave Depth", 0.5f);
  Float(L"Axis Z", L"Cutter Home", 1.0f);
  Int(L"Axis Z", L"Table Surface", 0);
  Load();
  EXPECT_EQ(record_.cutterMode, 4u);
  EXPECT_EQ(record_.engraveType, 0u);
  EXPECT_EQ(record_.cutterDownSpeed, 10.0f);
  EXPECT_EQ(record_.cutterUpSpeed, 10.0f);
  EXPECT_EQ(record_.cutterLift, 0.01f);
  EXPECT_EQ(record_.engraveDepth, 0.01f);
  EXPECT_EQ(record_.passDepth, 0.5f);  // keeps the file's depth
  EXPECT_EQ(record_.cutterHome, 0);
  EXPECT_EQ(record_.tableSurface, 4000);  // took the home before it was cleared
  EXPECT_EQ(Passes(), std::vector<float>{0.01f});
}

TEST_F(LoadTest, AnyOtherAirZLeavesTheCutterModeAlone) {
  Int(L"Engrave Settings", L"Cutter Mode", 2);
  for (const std::int32_t value : {0, 2, 4, -1}) {
    Int(L"Axis Z", L"Air Z", value);
    Load();
    EXPECT_EQ(record_.cutterMode, 2u);
    EXPECT_EQ(record_.cutterUpSpeed, 1.0f);
  }
}

// --------------------------------------------------------------------------------- round fixture

TEST_F(LoadTest, ACircumferenceWithALetterDIsADiameter) {
  Text(L"Axis Round", L"Circumference", L"2D");
  Load();
  EXPECT_EQ(record_.roundCircumference, 6.28318f);
  Text(L"Axis Round", L"Circumference", L"2");
  Load();
  EXPECT_EQ(record_.roundCircumference, 2.0f);
}

TEST_F(LoadTest, WithoutTheAttachmentTheModeIsNone) {
  record_.roundAxisMode = kRoundReplacesX;
  hasRoundAttachment = 1;
  Int(L"Axis Round", L"Mode", 2);
  Load();
  EXPECT_EQ(record_.roundAxisMode, kRoundOff);
  EXPECT_EQ(hasRoundAttachment, 0);
}

TEST_F(LoadTest, AFixtureInPlaceOfXLoadsItsOwnPosition) {
  Fixture(1);
  Locations(111, 222, 333);
  Float(L"Axis X", L"Table Home", 1.0f);
  Float(L"Axis Y", L"Table Home", 2.0f);
  record_.roundAxisMode = 1;  // as before this load
  Load();
  EXPECT_EQ(hasRoundAttachment, 1);
  EXPECT_EQ(record_.lastX, 333);
  EXPECT_EQ(record_.lastY, 222);
  EXPECT_EQ(record_.parkedPosition, 111);
  EXPECT_EQ(record_.tableHomeX, 0);
  EXPECT_EQ(record_.tableHomeY, 8000);
  EXPECT_EQ(record_.roundStepsPerInch, 4000.0f);
  EXPECT_EQ(record_.savedPositionX, 111);
  EXPECT_EQ(record_.savedPositionY, 222);
}

TEST_F(LoadTest, AFixtureInPlaceOfYLoadsItsOwnPosition) {
  Fixture(2);
  Locations(111, 222, 333);
  Float(L"Axis X", L"Table Home", 1.0f);
  Float(L"Axis Y", L"Table Home", 2.0f);
  Float(L"Axis Y", L"Screw Pitch", 0.25f);
  record_.roundAxisMode = 2;
  Load();
  EXPECT_EQ(record_.lastX, 111);
  EXPECT_EQ(record_.lastY, 333);
  EXPECT_EQ(record_.parkedPosition, 222);
  EXPECT_EQ(record_.tableHomeX, 4000);
  EXPECT_EQ(record_.tableHomeY, 0);
  EXPECT_EQ(record_.roundStepsPerInch, 8000.0f);
}

// KEEP: as it was computed, beside the resolution of the screw.
TEST_F(LoadTest, TheHomeOfAReplacedAxisIsPutAsideInTheStepsOfTheFixture) {
  Fixture(1);
  Text(L"Axis Round", L"Circumference", L"5");  // 8000 steps per inch of circumference
  Float(L"Axis X", L"Table Home", 1.5f);
  Float(L"Axis Y", L"Table Home", 2.5f);
  Load();
  EXPECT_EQ(record_.tableHomeRound, 12000);
  Int(L"Axis Round", L"Mode", 2);
  Load();
  EXPECT_EQ(record_.tableHomeRound, 20000);
}

TEST_F(LoadTest, AChangedModeStartsTheFixtureAtZero) {
  Fixture(1);
  Locations(111, 222, 333);
  Load();
  EXPECT_EQ(record_.lastX, 0);
  EXPECT_EQ(record_.lastY, 222);
  Load();  // the mode is the one before now
  EXPECT_EQ(record_.lastX, 333);
  Int(L"Axis Round", L"Mode", 2);
  Load();
  EXPECT_EQ(record_.lastX, 111);
  EXPECT_EQ(record_.lastY, 0);
}

TEST_F(LoadTest, AnUnknownModeLeavesTheLivePositionAlone) {
  Fixture(3);
  Locations(111, 222, 333);
  record_.lastX = 7;
  record_.lastY = 8;
  Load();
  EXPECT_EQ(record_.roundAxisMode, 3u);
  EXPECT_EQ(record_.lastX, 7);
  EXPECT_EQ(record_.lastY, 8);
  EXPECT_EQ(record_.savedPositionX, 111);
  EXPECT_EQ(record_.savedPositionY, 222);
}

TEST_F(LoadTest, AFixtureThatIsSwitchedOffLoadsTheLinearPosition) {
  Fixture(0);
  Locations(111, 222, 333);
  Load();
  EXPECT_EQ(hasRoundAttachment, 1);
  EXPECT_EQ(record_.lastX, 111);
  EXPECT_EQ(record_.lastY, 222);
}

// --------------------------------------------------------------------------------------- spindle

TEST_F(LoadTest, TheSpindleSpeedStaysBetweenOneAndTheMaximum) {
  constexpr struct {
    std::int32_t rpm;
    std::int32_t want;
  } kCases[] = {{13001, 13000}, {13000, 13000}, {1, 1}, {0, 1}, {-5, 1}};
  for (const auto& c : kCases) {
    Int(L"Spindle", L"Spindle RPM", c.rpm);
    Load();
    EXPECT_EQ(record_.spindleRpm, c.want);
  }
  Int(L"Spindle", L"Motor RPM", 0);
  Load();
  EXPECT_EQ(record_.spindleMaxRpm, 0);
  EXPECT_EQ(record_.spindleRpm, 1);
}

TEST_F(LoadTest, TheSpindleMaximumIsRounded) {
  Float(L"Spindle", L"Gear Ratio", 1.5f);
  Int(L"Spindle", L"Motor RPM", 1001);
  Load();
  EXPECT_EQ(record_.spindleMaxRpm, 1502);
}

TEST_F(LoadTest, ASpindleSetsBothOfItsFlags) {
  Int(L"Spindle", L"Has Spindle", 1);
  Load();
  EXPECT_EQ(record_.spindlePresent, 1);
  EXPECT_EQ(hasSpindle, 1);
  Int(L"Spindle", L"Has Spindle", 0);
  Load();
  EXPECT_EQ(record_.spindlePresent, 0);
  EXPECT_EQ(hasSpindle, 0);
}

// ---------------------------------------------------------------------------------------- passes

TEST_F(LoadTest, CopiesAreReadAtFullDepth) {
  Int(L"Engrave Settings", L"Multi Pass", 1);
  Int(L"Engrave Settings", L"Multi Pass Mode", 1);
  Load();
  EXPECT_EQ(Passes(), std::vector<float>(2, 0.0625f));
  Int(L"Engrave Settings", L"Multi Pass Copies", 5);
  Load();
  EXPECT_EQ(Passes(), std::vector<float>(5, 0.0625f));
  Int(L"Engrave Settings", L"Multi Pass Copies", 1);
  Load();
  EXPECT_EQ(Passes(), std::vector<float>(1, 0.0625f));
}

TEST_F(LoadTest, DepthStepsAreReadWithTheFinishingPass) {
  Int(L"Engrave Settings", L"Multi Pass", 1);
  Float(L"Engrave Settings", L"Max Pass Depth", 0.02f);
  Float(L"Engrave Settings", L"Finish Pass Depth", 0.005f);
  Load();
  const std::vector<float> depths = Passes();
  ASSERT_EQ(depths.size(), 4u);
  EXPECT_NEAR(depths[0], 0.019167f, 1e-6);
  EXPECT_NEAR(depths[2], 0.0575f, 1e-6);
  EXPECT_EQ(depths[3], 0.0625f);
  Int(L"Engrave Settings", L"Multi Pass", 0);
  Load();
  EXPECT_EQ(Passes(), std::vector<float>{0.0625f});
}

TEST_F(LoadTest, AnAbsurdNumberOfCopiesLeavesNoTable) {
  Int(L"Engrave Settings", L"Multi Pass", 1);
  Int(L"Engrave Settings", L"Multi Pass Mode", 1);
  Int(L"Engrave Settings", L"Multi Pass Copies", -1);
  Load();
  EXPECT_EQ(record_.passCount, 0xFFFFFFFFu);
  EXPECT_EQ(record_.passDepths, nullptr);
}

}  // namespace
}  // namespace k7
