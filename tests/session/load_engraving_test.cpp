// What a load makes of the heights, homes and engraving settings: clamps, rounding, the defaults
// that chain from key to key, and the pneumatic head.
#include "session/load_fixture.h"

namespace k7 {
namespace {

constexpr wchar_t kEngrave[] = L"Engrave Settings";

// ------------------------------------------------------------------------------ clamps and
// rounding

class LoadEngraving : public LoadCaseTest {};
TEST_P(LoadEngraving, GivesTheRecord) {
  Check();
}

const LoadCase kEngravingCases[] = {
    {"ALiftOfZeroIsAThousandth",
     {Whole(kEngrave, L"Cutter Lift", 0)},
     {K7_FIELD(tools.cutterLift, 0.001f)}},
    {"ANegativeLiftIsAThousandth",
     {Real(kEngrave, L"Cutter Lift", -1.0f)},
     {K7_FIELD(tools.cutterLift, 0.001f)}},
    {"ALiftBelowAThousandthIsAThousandth",
     {Real(kEngrave, L"Cutter Lift", 0.00099f)},
     {K7_FIELD(tools.cutterLift, 0.001f)}},
    {"ALiftThatIsNoNumberIsAThousandth",
     {Whole(kEngrave, L"Cutter Lift", 0x7FC00000)},
     {K7_FIELD(tools.cutterLift, 0.001f)}},
    {"ALiftAboveAThousandthStays",
     {Real(kEngrave, L"Cutter Lift", 0.0011f)},
     {K7_FIELD(tools.cutterLift, 0.0011f)}},
    {"ADelayIsCutToWholeMilliseconds",
     {Real(kEngrave, L"Engrave Delay", 0.0019f)},
     {K7_FIELD(tools.engraveDelayMs, 1)}},
    {"AnAbsurdDelaySaturates",
     {Real(kEngrave, L"Engrave Delay", 1e30f)},
     {K7_FIELD(tools.engraveDelayMs, INT32_MAX)}},
    {"HomesAreRoundedToWholeSteps",
     {Real(L"Axis X", L"Table Home", 1.0f + 0.4f / 4000.0f),
      Real(L"Axis Y", L"Table Home", 1.0f + 0.6f / 4000.0f),
      Real(L"Axis Z", L"Cutter Home", 1.0f + 0.6f / 4000.0f)},
     {K7_FIELD(position.tableHome.x, 4000), K7_FIELD(position.tableHome.y, 4001),
      K7_FIELD(position.cutterHome, 4001)}},
    // KEEP: a half is added whatever the sign.
    {"NegativeHomesAreRoundedTowardZero",
     {Real(L"Axis X", L"Table Home", -1.0f), Real(L"Axis Z", L"Cutter Home", -1.0f)},
     {K7_FIELD(position.tableHome.x, -3999), K7_FIELD(position.cutterHome, -3999)}},
    {"APitchOfZeroSaturates",
     {Whole(L"Axis X", L"Screw Pitch", 0), Whole(L"Axis Z", L"Screw Pitch", 0),
      Real(L"Axis X", L"Table Home", 1.0f)},
     {K7_FIELD(position.tableHome.x, INT32_MAX),
      K7_FIELD(position.cutterHome, 0),  // nothing times infinity
      K7_FIELD(position.tableSurface, INT32_MAX / 1000)}},
    {"TheTableSurfaceDefaultsToTheDepthOfTheTableInSteps",
     {Whole(L"Table Size", L"Depth", 1500), Real(L"Axis Z", L"Screw Pitch", 0.25f)},
     {K7_FIELD(position.tableSurface, 12000)}},
    // The depth of 0.5 in at 3 steps per inch: 1500 + 0.5 is cut, then divided without rest.
    {"TheDepthOfTheTableIsDividedWithoutRest",
     {Whole(L"Table Size", L"Depth", 500), Whole(L"Axis Z", L"Motor Steps", 3),
      Whole(L"Axis Z", L"Micro Steps", 1), Real(L"Axis Z", L"Screw Pitch", 1.0f)},
     {K7_FIELD(position.tableSurface, 1)}},
    {"ATableSurfaceOfZeroTakesTheCutterHome",
     {Whole(L"Axis Z", L"Table Surface", 0), Real(L"Axis Z", L"Cutter Home", 0.5f)},
     {K7_FIELD(position.tableSurface, 2000)}},
    {"ANegativeTableSurfaceStays",
     {Whole(L"Axis Z", L"Table Surface", -7), Real(L"Axis Z", L"Cutter Home", 0.5f)},
     {K7_FIELD(position.tableSurface, -7)}},
};
INSTANTIATE_TEST_SUITE_P(, LoadEngraving, testing::ValuesIn(kEngravingCases), NameOfCase<LoadCase>);

// ---------------------------------------------------------------------------------- chained
// defaults

// KEEP: a file that lacks the later key takes the number of the earlier one.
class LoadChain : public LoadCaseTest {};
TEST_P(LoadChain, GivesTheRecord) {
  Check();
}

const LoadCase kChainCases[] = {
    {"TheEngraveTypeDefaultsToTheTableSurface",
     {Whole(L"Axis Z", L"Table Surface", 9000)},
     {K7_FIELD(tools.engraveType, 9000), K7_FIELD(tools.cutterMode, 9000)}},
    {"TheEngraveTypeDefaultsToTheDepthOfTheTableWithoutASurface",
     {},
     {K7_FIELD(tools.engraveType, 8000), K7_FIELD(tools.cutterMode, 8000)}},
    // The number read, not the home that replaces it.
    {"TheEngraveTypeDefaultsToTheRawTableSurface",
     {Whole(L"Axis Z", L"Table Surface", 0), Real(L"Axis Z", L"Cutter Home", 0.5f)},
     {K7_FIELD(position.tableSurface, 2000), K7_FIELD(tools.engraveType, 0)}},
    {"TheCutterModeDefaultsToTheEngraveType",
     {Whole(kEngrave, L"Engrave Type", 2)},
     {K7_FIELD(tools.engraveType, 2), K7_FIELD(tools.cutterMode, 2)}},
    {"AirZDefaultsToTheCutterMode",
     {Whole(kEngrave, L"Cutter Mode", 1)},
     {K7_FIELD(tools.cutterMode, kCutterAirZ), K7_FIELD(tools.cutterUpSpeed, 10.0f)}},
    {"AirZDefaultsThroughAllThree",
     {Whole(L"Axis Z", L"Table Surface", 1)},
     {K7_FIELD(position.tableSurface, 1), K7_FIELD(tools.cutterMode, kCutterAirZ)}},
    {"AnAirZOfZeroEndsTheChain",
     {Whole(kEngrave, L"Cutter Mode", 1), Whole(L"Axis Z", L"Air Z", 0)},
     {K7_FIELD(tools.cutterMode, 1), K7_FIELD(tools.cutterUpSpeed, 1.0f)}},
};
INSTANTIATE_TEST_SUITE_P(, LoadChain, testing::ValuesIn(kChainCases), NameOfCase<LoadCase>);

// --------------------------------------------------------------------------------------------- air
// Z

TEST_F(LoadTest, AnAirZOfOneForcesItsModeSpeedsLiftAndDepth) {
  Load({Whole(L"Axis Z", L"Air Z", 1), Whole(kEngrave, L"Engrave Type", 1),
        Whole(kEngrave, L"Cutter Mode", 2), Real(kEngrave, L"Engrave Depth", 0.5f),
        Real(L"Axis Z", L"Cutter Home", 1.0f), Whole(L"Axis Z", L"Table Surface", 0)});
  Expect({K7_FIELD(tools.cutterMode, 4), K7_FIELD(tools.engraveType, 0),
          K7_FIELD(tools.cutterDownSpeed, 10.0f), K7_FIELD(tools.cutterUpSpeed, 10.0f),
          K7_FIELD(tools.cutterLift, 0.01f), K7_FIELD(tools.engraveDepth, 0.01f),
          K7_FIELD(passes.passDepth, 0.5f),  // keeps the file's depth
          K7_FIELD(position.cutterHome, 0),
          K7_FIELD(position.tableSurface, 4000)});  // took the home before it was cleared
  EXPECT_EQ(Passes(), std::vector<float>{0.01f});
}

// The one flag for which not every number but 0 is on.
TEST_F(LoadTest, AnyOtherAirZLeavesTheCutterModeAlone) {
  for (const std::int32_t value : {0, 2, 4, -1}) {
    Load({Whole(kEngrave, L"Cutter Mode", 2), Whole(L"Axis Z", L"Air Z", value)});
    Expect({K7_FIELD(tools.cutterMode, 2), K7_FIELD(tools.cutterUpSpeed, 1.0f)});
  }
}

}  // namespace
}  // namespace k7
