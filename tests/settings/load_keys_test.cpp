// Every key that goes into a field: exact name, default, and what a text in the file gives.
#include "settings/load_fixture.h"

namespace k7 {
namespace {

struct KeyCase {
  const char* name;  // section, key and field
  const wchar_t* section;
  const wchar_t* key;
  double otherwise;     // in the field without the key
  const wchar_t* text;  // as it stands in the file
  double want;          // in the field with that text
  double (*read)(const DeviceState& record);
};
void PrintTo(const KeyCase& c, std::ostream* out) {
  *out << c.name;
}

#define K7_KEY(section, key, otherwise, text, want, field)                    \
  {                                                                           \
    section "_" key "_" #field, L##section, L##key, otherwise, L##text, want, \
        [](const DeviceState& r) -> double { return r.field; }                \
  }

// clang-format off
const KeyCase kKeys[] = {
    K7_KEY("Settings", "Scissors", 1.0, "1073741824", 2.0, scissors),
    K7_KEY("Axis X", "Motor Steps", 200, "400", 400, motorStepsX),
    K7_KEY("Axis X", "Micro Steps", 10, "8", 8, microStepsX),
    K7_KEY("Axis X", "Screw Pitch", 0.5, "1040187392", 0.125, screwPitchX),
    K7_KEY("Axis X", "Limit Switch", 0, "1", 1, limitSwitchX),
    K7_KEY("Axis Y", "Motor Steps", 200, "400", 400, motorStepsY),
    K7_KEY("Axis Y", "Micro Steps", 10, "8", 8, microStepsY),
    K7_KEY("Axis Y", "Screw Pitch", 0.5, "1040187392", 0.125, screwPitchY),
    K7_KEY("Axis Y", "Limit Switch", 0, "7", 1, limitSwitchY),
    K7_KEY("Axis Z", "Motor Steps", 200, "400", 400, motorStepsZ),
    K7_KEY("Axis Z", "Micro Steps", 10, "8", 8, microStepsZ),
    K7_KEY("Axis Z", "Screw Pitch", 0.5, "1040187392", 0.125, screwPitchZ),
    K7_KEY("Axis Z", "Limit Switch", 0, "-1", 1, limitSwitchZ),
    K7_KEY("Axis Z", "Prox Switch", 0, "256", 1, proxSwitch),
    K7_KEY("Axis Z", "Cutter Home", 0, "1065353216", 4000, cutterHome),
    K7_KEY("Axis X", "Table Home", 0, "1065353216", 4000, tableHomeX),
    K7_KEY("Axis Y", "Table Home", 0, "1065353216", 4000, tableHomeY),
    K7_KEY("Axis Z", "Table Surface", 8000, "9000", 9000, tableSurface),
    K7_KEY("Axis Round", "Motor Steps", 200, "400", 400, motorStepsRound),
    K7_KEY("Axis Round", "Micro Steps", 10, "8", 8, microStepsRound),
    K7_KEY("Axis Round", "Circumference", 0, "2", 2, roundCircumference),
    K7_KEY("Axis Round", "Gear Ratio", 20.0, "1065353216", 1.0, roundGearRatio),
    K7_KEY("Table Size", "Width", 25000, "1", 1, tableWidth),
    K7_KEY("Table Size", "Height", 16000, "2", 2, tableHeight),
    K7_KEY("Table Size", "Depth", 2000, "3", 3, tableDepth),
    K7_KEY("Jog Speed", "Fast", 5000, "4", 4, jogFast),
    K7_KEY("Jog Speed", "Slow", 250, "5", 5, jogSlow),
    K7_KEY("Engrave Settings", "Cutter Lift", 0.125, "1056964608", 0.5, cutterLift),
    K7_KEY("Engrave Settings", "Engrave Depth", 0.0625, "1040187392", 0.125, engraveDepth),
    K7_KEY("Engrave Settings", "Engrave Depth", 0.0625, "1040187392", 0.125, passDepth),
    K7_KEY("Engrave Settings", "Traverse Speed", 1, "1073741824", 2, traverseSpeed),
    K7_KEY("Engrave Settings", "Cutter Down Speed", 1, "1073741824", 2, cutterDownSpeed),
    K7_KEY("Engrave Settings", "Cutter Up Speed", 1, "1073741824", 2, cutterUpSpeed),
    K7_KEY("Engrave Settings", "Engrave Speed", 1, "1073741824", 2, engraveSpeed),
    K7_KEY("Engrave Settings", "Grid Speed", 1, "1073741824", 2, gridSpeed),
    K7_KEY("Engrave Settings", "Engrave Delay", 0, "1069547520", 1500, engraveDelayMs),
    K7_KEY("Engrave Settings", "X Axis Factor", 1, "2", 2, xAxisFactor),
    K7_KEY("Engrave Settings", "Y Axis Factor", 1, "3", 3, yAxisFactor),
    K7_KEY("Engrave Settings", "Engrave Type", 8000, "2", 2, engraveType),
    K7_KEY("Engrave Settings", "Cutter Mode", 8000, "3", 3, cutterMode),
    K7_KEY("Engrave Settings", "Engrave By Color", 0, "1", 1, engraveByColor),
    K7_KEY("Engrave Settings", "Dont Lower Air Z", 0, "2", 1, dontLowerAirZ),
    K7_KEY("Prox", "Semi Auto Offset", 0.5, "1040187392", 0.125, probeOffset),
    K7_KEY("Spindle", "Has Spindle", 0, "1", 1, spindlePresent),
    K7_KEY("Spindle", "Motor RPM", 13000, "2000", 6500, spindleMaxRpm),
    K7_KEY("Spindle", "Gear Ratio", 13000, "1073741824", 8000, spindleMaxRpm),
    K7_KEY("Spindle", "Spindle RPM", 13000, "9000", 9000, spindleRpm),
    K7_KEY("Braille", "Bead Insert Tool", 0, "256", 1, beadInsertTool),
    K7_KEY("Braille", "Bead Insert Tool X Offset", 0, "1250", 1250, beadToolOffsetX),
    K7_KEY("Braille", "Bead Insert Tool X Offset", 0, "1250", 1250, beadToolOffsetY),
    K7_KEY("Braille", "Bead Insert Tool Y Offset", 0, "-500", -500, beadToolOffsetY),
    K7_KEY("Diode", "Diode Pointer", 0, "1", 1, diodePointer),
    K7_KEY("Diode", "Diode Pointer X Offset", 0, "-1250", -1250, diodeOffsetX),
    K7_KEY("Diode", "Diode Pointer X Offset", 0, "-1250", -1250, diodeOffsetY),
    K7_KEY("Diode", "Diode Pointer Y Offset", 0, "500", 500, diodeOffsetY),
    K7_KEY("Current Location", "X Axis", 0, "-123", -123, lastX),
    K7_KEY("Current Location", "X Axis", 0, "-123", -123, savedPositionX),
    K7_KEY("Current Location", "Y Axis", 0, "456", 456, lastY),
    K7_KEY("Current Location", "Y Axis", 0, "456", 456, savedPositionY),
};
// clang-format on

class LoadKey : public LoadTest, public testing::WithParamInterface<KeyCase> {};

TEST_P(LoadKey, HasItsDefaultAndGoesToItsField) {
  const KeyCase& c = GetParam();
  Load();
  EXPECT_EQ(c.read(record_), c.otherwise);
  Load({{c.section, c.key, c.text}});
  EXPECT_EQ(c.read(record_), c.want);
}

INSTANTIATE_TEST_SUITE_P(, LoadKey, testing::ValuesIn(kKeys), NameOfCase<KeyCase>);

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

class LoadValue : public LoadCaseTest {};
TEST_P(LoadValue, IsReadAs) {
  Check();
}
INSTANTIATE_TEST_SUITE_P(
    , LoadValue,
    testing::Values(
        LoadCase{"AnEmptyIntIsZeroNotItsDefault",
                 {{L"Axis X", L"Motor Steps", L""}, {L"Table Size", L"Width", L""}},
                 {K7_FIELD(motorStepsX, 0), K7_FIELD(tableWidth, 0)}},
        LoadCase{"AnEmptyFloatIsZeroNotItsDefault",
                 {{L"Engrave Settings", L"Engrave Speed", L""}},
                 {K7_FIELD(engraveSpeed, 0)}},
        LoadCase{"AnEmptyFlagIsOff", {{L"Axis Z", L"Prox Switch", L""}}, {K7_FIELD(proxSwitch, 0)}},
        LoadCase{"AFloatOfDecimalTextIsZero",
                 {{L"Engrave Settings", L"Engrave Depth", L"0.125"}},
                 {K7_FIELD(engraveDepth, 0)}}),
    NameOfCase<LoadCase>);

TEST_F(LoadTest, CutsAFriendlyNameToItsField) {
  Load({{L"Settings", L"FriendlyName", std::wstring(100, L'n')}});
  EXPECT_EQ(record_.friendlyName, std::wstring(63, L'n'));
  Load({{L"Settings", L"FriendlyName", L""}});
  EXPECT_STREQ(record_.friendlyName, L"");
}

TEST_F(LoadTest, KeepsTheCameraIdentityUntilTheFileHasNone) {
  Load({{L"Settings", L"CameraID", L"Camera 7"}});
  ASSERT_NE(record_.cameraId, nullptr);
  EXPECT_STREQ(record_.cameraId.get(), L"Camera 7");
  Load({{L"Settings", L"CameraID", L""}});
  EXPECT_EQ(record_.cameraId, nullptr);
}

TEST_F(LoadTest, CutsACameraIdentityTo2047Characters) {
  Load({{L"Settings", L"CameraID", std::wstring(3000, L'c')}});
  ASSERT_NE(record_.cameraId, nullptr);
  EXPECT_EQ(record_.cameraId.get(), std::wstring(2047, L'c'));
}

}  // namespace
}  // namespace k7
