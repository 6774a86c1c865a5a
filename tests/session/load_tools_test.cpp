// What a load makes of the spindle, the accessories and the passes.
#include "session/load_fixture.h"

namespace k7 {
namespace {

constexpr wchar_t kEngrave[] = L"Engrave Settings";
constexpr wchar_t kSpindle[] = L"Spindle";

class LoadTools : public LoadCaseTest {};
TEST_P(LoadTools, GivesTheRecord) {
  Check();
}

const LoadCase kToolCases[] = {
    {"ASpindleSpeedAboveTheMaximumIsTheMaximum",
     {Whole(kSpindle, L"Spindle RPM", 13001)},
     {K7_FIELD(spindle.spindleRpm, 13000)}},
    {"ASpindleSpeedOfTheMaximumStays",
     {Whole(kSpindle, L"Spindle RPM", 13000)},
     {K7_FIELD(spindle.spindleRpm, 13000)}},
    {"ASpindleSpeedOfZeroIsOne",
     {Whole(kSpindle, L"Spindle RPM", 0)},
     {K7_FIELD(spindle.spindleRpm, 1)}},
    {"ANegativeSpindleSpeedIsOne",
     {Whole(kSpindle, L"Spindle RPM", -5)},
     {K7_FIELD(spindle.spindleRpm, 1)}},
    {"ASpindleWithoutAMaximumHasASpeedOfOne",
     {Whole(kSpindle, L"Motor RPM", 0), Whole(kSpindle, L"Spindle RPM", 500)},
     {K7_FIELD(spindle.spindleMaxRpm, 0), K7_FIELD(spindle.spindleRpm, 1)}},
    {"TheSpindleMaximumIsRounded",
     {Real(kSpindle, L"Gear Ratio", 1.5f), Whole(kSpindle, L"Motor RPM", 1001)},
     {K7_FIELD(spindle.spindleMaxRpm, 1502)}},
    // Single precision has no 2^24 + 1.
    {"TheSpindleMaximumIsComputedInDoublePrecision",
     {Real(kSpindle, L"Gear Ratio", 1.0f), Whole(kSpindle, L"Motor RPM", 16777217)},
     {K7_FIELD(spindle.spindleMaxRpm, 16777217)}},
    // KEEP: the bits of an offset are a number far above any maximum.
    {"TheSpindleSpeedDefaultsToTheBitsOfTheSemiAutoOffset",
     {Real(L"Prox", L"Semi Auto Offset", 0.25f)},
     {K7_FIELD(spindle.spindleRpm, 13000)}},
    {"AnOffsetOfZeroIsASpindleSpeedOfOne",
     {Whole(L"Prox", L"Semi Auto Offset", 0)},
     {K7_FIELD(spindle.spindleRpm, 1)}},
    {"TheSpindleSpeedDefaultsToTheOffsetAsAWholeNumber",
     {Whole(L"Prox", L"Semi Auto Offset", 500)},
     {K7_FIELD(spindle.spindleRpm, 500)}},
    {"ABeadOffsetInYDoesNotReachX",
     {Whole(L"Braille", L"Bead Insert Tool Y Offset", 7)},
     {K7_FIELD(tools.beadToolOffsetX, 0), K7_FIELD(tools.beadToolOffsetY, 7)}},
    {"ADiodeOffsetInYDoesNotReachX",
     {Whole(L"Diode", L"Diode Pointer Y Offset", 7)},
     {K7_FIELD(tools.diodeOffsetX, 0), K7_FIELD(tools.diodeOffsetY, 7)}},
};
INSTANTIATE_TEST_SUITE_P(, LoadTools, testing::ValuesIn(kToolCases), NameOfCase<LoadCase>);

TEST_F(LoadTest, ASpindleSetsBothOfItsFlags) {
  Load({Whole(kSpindle, L"Has Spindle", 256)});
  EXPECT_EQ(record_.spindle.spindlePresent, 1);
  EXPECT_EQ(hasSpindle, 1);
  Load({Whole(kSpindle, L"Has Spindle", 0)});
  EXPECT_EQ(record_.spindle.spindlePresent, 0);
  EXPECT_EQ(hasSpindle, 0);
}

// --------------------------------------------------------------------------------------------
// passes

struct PassCase {
  const char* name;
  std::vector<Entry> file;
  std::vector<float> want;  // in
};
void PrintTo(const PassCase& c, std::ostream* out) {
  *out << c.name;
}

class LoadPasses : public LoadTest, public testing::WithParamInterface<PassCase> {};
TEST_P(LoadPasses, GivesTheTable) {
  Load(GetParam().file);
  EXPECT_EQ(Passes(), GetParam().want);
  EXPECT_EQ(record_.passes.passCount, GetParam().want.size());
}

const Entry kMultiPass = Whole(kEngrave, L"Multi Pass", 1);
const Entry kCopies = Whole(kEngrave, L"Multi Pass Mode", 1);
const Entry kHalf = Real(kEngrave, L"Engrave Depth", 0.5f);
const Entry kEighth = Real(kEngrave, L"Max Pass Depth", 0.125f);

const PassCase kPassCases[] = {
    {"CopiesAreTwoWithoutANumber", {kMultiPass, kCopies}, {0.0625f, 0.0625f}},
    {"CopiesAreAtFullDepth",
     {kMultiPass, kCopies, kHalf, kEighth, Whole(kEngrave, L"Multi Pass Copies", 5)},
     {0.5f, 0.5f, 0.5f, 0.5f, 0.5f}},
    {"OneCopyIsASinglePass",
     {kMultiPass, kCopies, Whole(kEngrave, L"Multi Pass Copies", 1)},
     {0.0625f}},
    {"NoCopyIsASinglePass",
     {kMultiPass, kCopies, Whole(kEngrave, L"Multi Pass Copies", 0)},
     {0.0625f}},
    // KEEP: the key that the settings dialog writes for emptied fields is not the one read.
    {"PassCopiesIsNotTheNumberOfCopies",
     {kMultiPass, kCopies, Whole(kEngrave, L"Pass Copies", 5)},
     {0.0625f, 0.0625f}},
    {"DepthStepsAreTheModeWithoutAMode",
     {kMultiPass, kHalf, kEighth},
     {0.125f, 0.25f, 0.375f, 0.5f}},
    {"DepthStepsEndWithTheFinishingPass",
     {kMultiPass, kHalf, kEighth, Real(kEngrave, L"Finish Pass Depth", 0.25f)},
     {0.125f, 0.25f, 0.5f}},
    {"AnyNumberButZeroIsMultiPass",
     {Whole(kEngrave, L"Multi Pass", -256), kCopies},
     {0.0625f, 0.0625f}},
    {"WithoutMultiPassTheOtherKeysDoNotCount",
     {Whole(kEngrave, L"Multi Pass", 0), kHalf, kEighth},
     {0.5f}},
};
INSTANTIATE_TEST_SUITE_P(, LoadPasses, testing::ValuesIn(kPassCases), NameOfCase<PassCase>);

TEST_F(LoadTest, ATableIsReplacedByTheNextLoad) {
  Load({kMultiPass, kCopies});
  EXPECT_EQ(Passes().size(), 2u);
  Load({Whole(kEngrave, L"Multi Pass", 0)});
  EXPECT_EQ(Passes(), std::vector<float>{0.0625f});
}

TEST_F(LoadTest, AnAbsurdNumberOfCopiesLeavesNoTable) {
  Load({kMultiPass, kCopies, Whole(kEngrave, L"Multi Pass Copies", -1)});
  EXPECT_EQ(record_.passes.passCount, 0xFFFFFFFFu);
  EXPECT_EQ(record_.passes.passDepths, nullptr);
}

}  // namespace
}  // namespace k7
