// Every key that goes into a field: exact name, default, and what a text in the file gives.
#include "session/load_fixture.h"

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
    K7_KEY("Settings", "Scissors", 1.0, "1073741824", 2.0, host.scissors),
    K7_KEY("Axis X", "Motor Steps", 200, "400", 400, mechanics.axis.x.motorSteps),
    K7_KEY("Axis X", "Micro Steps", 10, "8", 8, mechanics.axis.x.microSteps),
    K7_KEY("Axis X", "Screw Pitch", 0.5, "1040187392", 0.125, mechanics.axis.x.screwPitch),
    K7_KEY("Axis X", "Limit Switch", 0, "1", 1, mechanics.axis.x.limitSwitch),
    K7_KEY("Axis Y", "Motor Steps", 200, "400", 400, mechanics.axis.y.motorSteps),
    K7_KEY("Axis Y", "Micro Steps", 10, "8", 8, mechanics.axis.y.microSteps),
    K7_KEY("Axis Y", "Screw Pitch", 0.5, "1040187392", 0.125, mechanics.axis.y.screwPitch),
    K7_KEY("Axis Y", "Limit Switch", 0, "7", 1, mechanics.axis.y.limitSwitch),
    K7_KEY("Axis Z", "Motor Steps", 200, "400", 400, mechanics.axis.z.motorSteps),
    K7_KEY("Axis Z", "Micro Steps", 10, "8", 8, mechanics.axis.z.microSteps),
    K7_KEY("Axis Z", "Screw Pitch", 0.5, "1040187392", 0.125, mechanics.axis.z.screwPitch),
    K7_KEY("Axis Z", "Limit Switch", 0, "-1", 1, mechanics.axis.z.limitSwitch),
    K7_KEY("Axis Z", "Prox Switch", 0, "256", 1, mechanics.proxSwitch),
    K7_KEY("Axis Z", "Cutter Home", 0, "1065353216", 4000, position.cutterHome),
    K7_KEY("Axis X", "Table Home", 0, "1065353216", 4000, position.tableHome.x),
    K7_KEY("Axis Y", "Table Home", 0, "1065353216", 4000, position.tableHome.y),
    K7_KEY("Axis Z", "Table Surface", 8000, "9000", 9000, position.tableSurface),
    K7_KEY("Axis Round", "Motor Steps", 200, "400", 400, mechanics.motorStepsRound),
    K7_KEY("Axis Round", "Micro Steps", 10, "8", 8, mechanics.microStepsRound),
    K7_KEY("Axis Round", "Circumference", 0, "2", 2, mechanics.roundCircumference),
    K7_KEY("Axis Round", "Gear Ratio", 20.0, "1065353216", 1.0, mechanics.roundGearRatio),
    K7_KEY("Table Size", "Width", 25000, "1", 1, mechanics.tableWidth),
    K7_KEY("Table Size", "Height", 16000, "2", 2, mechanics.tableHeight),
    K7_KEY("Table Size", "Depth", 2000, "3", 3, mechanics.tableDepth),
    K7_KEY("Jog Speed", "Fast", 5000, "4", 4, jog.jogFast),
    K7_KEY("Jog Speed", "Slow", 250, "5", 5, jog.jogSlow),
    K7_KEY("Engrave Settings", "Cutter Lift", 0.125, "1056964608", 0.5, tools.cutterLift),
    K7_KEY("Engrave Settings", "Engrave Depth", 0.0625, "1040187392", 0.125, tools.engraveDepth),
    K7_KEY("Engrave Settings", "Engrave Depth", 0.0625, "1040187392", 0.125, passes.passDepth),
    K7_KEY("Engrave Settings", "Traverse Speed", 1, "1073741824", 2, tools.traverseSpeed),
    K7_KEY("Engrave Settings", "Cutter Down Speed", 1, "1073741824", 2, tools.cutterDownSpeed),
    K7_KEY("Engrave Settings", "Cutter Up Speed", 1, "1073741824", 2, tools.cutterUpSpeed),
    K7_KEY("Engrave Settings", "Engrave Speed", 1, "1073741824", 2, tools.engraveSpeed),
    K7_KEY("Engrave Settings", "Grid Speed", 1, "1073741824", 2, tools.gridSpeed),
    K7_KEY("Engrave Settings", "Engrave Delay", 0, "1069547520", 1500, tools.engraveDelayMs),
    K7_KEY("Engrave Settings", "X Axis Factor", 1, "2", 2, mechanics.xAxisFactor),
    K7_KEY("Engrave Settings", "Y Axis Factor", 1, "3", 3, mechanics.yAxisFactor),
    K7_KEY("Engrave Settings", "Engrave Type", 8000, "2", 2, tools.engraveType),
    K7_KEY("Engrave Settings", "Cutter Mode", 8000, "3", 3, tools.cutterMode),
    K7_KEY("Engrave Settings", "Engrave By Color", 0, "1", 1, host.engraveByColor),
    K7_KEY("Engrave Settings", "Dont Lower Air Z", 0, "2", 1, tools.dontLowerAirZ),
    K7_KEY("Prox", "Semi Auto Offset", 0.5, "1040187392", 0.125, tools.probeOffset),
    K7_KEY("Spindle", "Has Spindle", 0, "1", 1, spindle.spindlePresent),
    K7_KEY("Spindle", "Motor RPM", 13000, "2000", 6500, spindle.spindleMaxRpm),
    K7_KEY("Spindle", "Gear Ratio", 13000, "1073741824", 8000, spindle.spindleMaxRpm),
    K7_KEY("Spindle", "Spindle RPM", 13000, "9000", 9000, spindle.spindleRpm),
    K7_KEY("Braille", "Bead Insert Tool", 0, "256", 1, tools.beadInsertTool),
    K7_KEY("Braille", "Bead Insert Tool X Offset", 0, "1250", 1250, tools.beadToolOffsetX),
    K7_KEY("Braille", "Bead Insert Tool X Offset", 0, "1250", 1250, tools.beadToolOffsetY),
    K7_KEY("Braille", "Bead Insert Tool Y Offset", 0, "-500", -500, tools.beadToolOffsetY),
    K7_KEY("Diode", "Diode Pointer", 0, "1", 1, tools.diodePointer),
    K7_KEY("Diode", "Diode Pointer X Offset", 0, "-1250", -1250, tools.diodeOffsetX),
    K7_KEY("Diode", "Diode Pointer X Offset", 0, "-1250", -1250, tools.diodeOffsetY),
    K7_KEY("Diode", "Diode Pointer Y Offset", 0, "500", 500, tools.diodeOffsetY),
    K7_KEY("Current Location", "X Axis", 0, "-123", -123, position.last.x),
    K7_KEY("Current Location", "X Axis", 0, "-123", -123, position.saved.x),
    K7_KEY("Current Location", "Y Axis", 0, "456", 456, position.last.y),
    K7_KEY("Current Location", "Y Axis", 0, "456", 456, position.saved.y),
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
  EXPECT_STREQ(record_.link.friendlyName, L"K7 System Controller");
  EXPECT_EQ(record_.mechanics.roundAxisMode, 0u);
  EXPECT_EQ(record_.host.cameraId, nullptr);
  EXPECT_EQ(record_.passes.passCount, 1u);
  EXPECT_EQ(Passes(), std::vector<float>{0.0625f});
  EXPECT_EQ(record_.spindle.spindleMaxRpm, 13000);
  EXPECT_EQ(record_.spindle.spindleRpm, 13000);
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
    testing::Values(LoadCase{"AnEmptyIntIsZeroNotItsDefault",
                             {{L"Axis X", L"Motor Steps", L""}, {L"Table Size", L"Width", L""}},
                             {K7_FIELD(mechanics.axis.x.motorSteps, 0),
                              K7_FIELD(mechanics.tableWidth, 0)}},
                    LoadCase{"AnEmptyFloatIsZeroNotItsDefault",
                             {{L"Engrave Settings", L"Engrave Speed", L""}},
                             {K7_FIELD(tools.engraveSpeed, 0)}},
                    LoadCase{"AnEmptyFlagIsOff",
                             {{L"Axis Z", L"Prox Switch", L""}},
                             {K7_FIELD(mechanics.proxSwitch, 0)}},
                    LoadCase{"AFloatOfDecimalTextIsZero",
                             {{L"Engrave Settings", L"Engrave Depth", L"0.125"}},
                             {K7_FIELD(tools.engraveDepth, 0)}}),
    NameOfCase<LoadCase>);

TEST_F(LoadTest, CutsAFriendlyNameToItsField) {
  Load({{L"Settings", L"FriendlyName", std::wstring(100, L'n')}});
  EXPECT_EQ(record_.link.friendlyName, std::wstring(63, L'n'));
  Load({{L"Settings", L"FriendlyName", L""}});
  EXPECT_STREQ(record_.link.friendlyName, L"");
}

TEST_F(LoadTest, KeepsTheCameraIdentityUntilTheFileHasNone) {
  Load({{L"Settings", L"CameraID", L"Camera 7"}});
  ASSERT_NE(record_.host.cameraId, nullptr);
  EXPECT_STREQ(record_.host.cameraId.get(), L"Camera 7");
  Load({{L"Settings", L"CameraID", L""}});
  EXPECT_EQ(record_.host.cameraId, nullptr);
}

TEST_F(LoadTest, CutsACameraIdentityTo2047Characters) {
  Load({{L"Settings", L"CameraID", std::wstring(3000, L'c')}});
  ASSERT_NE(record_.host.cameraId, nullptr);
  EXPECT_EQ(record_.host.cameraId.get(), std::wstring(2047, L'c'));
}

}  // namespace
}  // namespace k7
