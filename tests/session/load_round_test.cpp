// What a load makes of the round fixture and of the last known position.
#include "motion/position.h"
#include "motion/round_fixture.h"
#include "session/load_fixture.h"

namespace k7 {
namespace {

constexpr wchar_t kRound[] = L"Axis Round";

// A fixture of 8000 steps per inch of circumference in that mode, on a machine of 4000 on X and
// 16000 on Y, with a position and homes.
std::vector<Entry> Fixture(std::int32_t mode) {
  return {Whole(kRound, L"Has Round Attachment", 1),  Whole(kRound, L"Mode", mode),
          {kRound, L"Circumference", L"5"},           Real(L"Axis Y", L"Screw Pitch", 0.125f),
          Real(L"Axis X", L"Table Home", 1.5f),       Real(L"Axis Y", L"Table Home", 2.5f),
          Whole(L"Current Location", L"X Axis", 111), Whole(L"Current Location", L"Y Axis", 222),
          Whole(L"Current Location", L"R Axis", 333)};
}

// ------------------------------------------------------------------------------------------ the
// mode

class LoadRoundMode : public LoadCaseTest {};
TEST_P(LoadRoundMode, GivesTheRecord) {
  Check();
}

Entry Circumference(const wchar_t* text) {
  return {kRound, L"Circumference", text};
}
const Entry kFitted = Whole(kRound, L"Has Round Attachment", 1);

const LoadCase kModeCases[] = {
    {"ACircumferenceWithALetterDIsADiameter",
     {Circumference(L"2D")},
     {K7_FIELD(mechanics.roundCircumference, 6.28318f), K7_FIELD(mechanics.roundAxisMode, 0)}},
    {"ACircumferenceWithoutIsTheNumber",
     {Circumference(L"2")},
     {K7_FIELD(mechanics.roundCircumference, 2.0f)}},
    // KEEP: without a mode the number of characters of the circumference is one.
    {"AModeOfNoCircumferenceIsNone", {kFitted}, {K7_FIELD(mechanics.roundAxisMode, 0)}},
    {"AModeDefaultsToTheOneCharacterOfTheCircumference",
     {kFitted, Circumference(L"9")},
     {K7_FIELD(mechanics.roundAxisMode, 1)}},
    {"AModeDefaultsToTheTwoCharactersOfTheCircumference",
     {kFitted, Circumference(L"2D")},
     {K7_FIELD(mechanics.roundAxisMode, 2)}},
    {"AModeDefaultsToAnUnknownOneAfterALongCircumference",
     {kFitted, Circumference(L"9.42")},
     {K7_FIELD(mechanics.roundAxisMode, 4)}},
    {"AnEmptyModeIsZero",
     {kFitted, Circumference(L"9"), {kRound, L"Mode", L""}},
     {K7_FIELD(mechanics.roundAxisMode, 0)}},
    {"AnyNumberButZeroIsAnAttachment",
     {Whole(kRound, L"Has Round Attachment", -256), Whole(kRound, L"Mode", 2)},
     {K7_FIELD(mechanics.roundAxisMode, 2)}},
};
INSTANTIATE_TEST_SUITE_P(, LoadRoundMode, testing::ValuesIn(kModeCases), NameOfCase<LoadCase>);

TEST_F(LoadTest, AnAttachmentIsOneForTheWholeModule) {
  Load({Whole(kRound, L"Has Round Attachment", 256)});
  EXPECT_EQ(hasRoundAttachment, 1);
}

TEST_F(LoadTest, WithoutTheAttachmentTheModeIsNone) {
  record_.mechanics.roundAxisMode = kRoundReplacesX;
  hasRoundAttachment = 1;
  Load({Whole(kRound, L"Mode", 2)});
  EXPECT_EQ(record_.mechanics.roundAxisMode, kRoundOff);
  EXPECT_EQ(hasRoundAttachment, 0);
}

// -------------------------------------------------------------------------------------- the
// position

TEST_F(LoadTest, AFixtureInPlaceOfXLoadsItsOwnPosition) {
  record_.mechanics.roundAxisMode = 1;  // as before this load
  Load(Fixture(1));
  EXPECT_EQ(hasRoundAttachment, 1);
  Expect({K7_FIELD(position.last.x, 333), K7_FIELD(position.last.y, 222),
          K7_FIELD(position.parkedPosition, 111), K7_FIELD(position.tableHome.x, 0),
          K7_FIELD(position.tableHome.y, 40000), K7_FIELD(position.roundStepsPerInch, 4000.0f),
          K7_FIELD(position.saved.x, 111), K7_FIELD(position.saved.y, 222)});
}

TEST_F(LoadTest, AFixtureInPlaceOfYLoadsItsOwnPosition) {
  record_.mechanics.roundAxisMode = 2;
  Load(Fixture(2));
  Expect({K7_FIELD(position.last.x, 111), K7_FIELD(position.last.y, 333),
          K7_FIELD(position.parkedPosition, 222), K7_FIELD(position.tableHome.x, 6000),
          K7_FIELD(position.tableHome.y, 0), K7_FIELD(position.roundStepsPerInch, 16000.0f),
          K7_FIELD(position.saved.x, 111), K7_FIELD(position.saved.y, 222)});
}

// The fixture makes 8000 steps per inch, the screws 4000 and 16000.
TEST_F(LoadTest, TheHomeOfAReplacedAxisIsPutAsideInTheStepsOfItsScrew) {
  Load(Fixture(1));
  Expect({K7_FIELD(position.tableHomeRound, 6000), K7_FIELD(position.tableHome.x, 0)});
  Load(Fixture(2));
  Expect({K7_FIELD(position.tableHomeRound, 40000), K7_FIELD(position.tableHome.y, 0)});
}

TEST_F(LoadTest, TheLocationOfAReplacedAxisIsShownByItsScrew) {
  std::int32_t x = 0, y = 0, third = 0;
  Load(Fixture(1));
  GetDisplayPosition(record_.mechanics, record_.position, &x, &y, &third);
  EXPECT_EQ(x, -1471);  // 111 steps less a home of 1.5 in, at 4000 steps per inch
  Load(Fixture(2));
  GetDisplayPosition(record_.mechanics, record_.position, &x, &y, &third);
  EXPECT_EQ(y, -2485);  // 222 steps less a home of 2.5 in, at 16000 steps per inch
}

TEST_F(LoadTest, SwitchingTheFixtureOffBringsTheHomeBackThatAMachineWithoutItHas) {
  for (const std::int32_t mode : {1, 2}) {
    Load(Fixture(mode));
    SwitchRoundMode(record_, kRoundOff);
    Expect({K7_FIELD(position.tableHome.x, 6000), K7_FIELD(position.tableHome.y, 40000),
            K7_FIELD(position.last.x, 111), K7_FIELD(position.last.y, 222)});
    std::int32_t x = 0, y = 0;
    GetPositionFromHome(record_, &x, &y, nullptr);
    EXPECT_EQ(x, -1471);
    EXPECT_EQ(y, -2485);
  }
}

TEST_F(LoadTest, WithoutAReplacedAxisTheHomePutAsideStays) {
  record_.position.tableHomeRound = 7;
  record_.position.roundStepsPerInch = 8.0f;
  for (const std::int32_t mode : {0, 3}) {
    Load(Fixture(mode));
    Expect({K7_FIELD(position.tableHomeRound, 7), K7_FIELD(position.roundStepsPerInch, 8.0f),
            K7_FIELD(position.tableHome.x, 6000), K7_FIELD(position.tableHome.y, 40000)});
  }
}

TEST_F(LoadTest, AChangedModeStartsTheFixtureAtZero) {
  Load(Fixture(1));
  Expect({K7_FIELD(position.last.x, 0), K7_FIELD(position.last.y, 222)});
  Load();  // the mode is the one before now
  Expect({K7_FIELD(position.last.x, 333)});
  Load(Fixture(2));
  Expect({K7_FIELD(position.last.x, 111), K7_FIELD(position.last.y, 0)});
}

TEST_F(LoadTest, AnUnknownModeLeavesTheLivePositionAlone) {
  record_.position.last.x = 7;
  record_.position.last.y = 8;
  Load(Fixture(3));
  Expect({K7_FIELD(mechanics.roundAxisMode, 3), K7_FIELD(position.last.x, 7),
          K7_FIELD(position.last.y, 8), K7_FIELD(position.saved.x, 111),
          K7_FIELD(position.saved.y, 222)});
}

TEST_F(LoadTest, AFixtureThatIsSwitchedOffLoadsTheLinearPosition) {
  Load(Fixture(0));
  EXPECT_EQ(hasRoundAttachment, 1);
  Expect({K7_FIELD(position.last.x, 111), K7_FIELD(position.last.y, 222)});
}

}  // namespace
}  // namespace k7
