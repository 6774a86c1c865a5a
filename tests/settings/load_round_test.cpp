// What a load makes of the round fixture and of the last known position.
#include "settings/load_fixture.h"

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
     {K7_FIELD(roundCircumference, 6.28318f), K7_FIELD(roundAxisMode, 0)}},
    {"ACircumferenceWithoutIsTheNumber",
     {Circumference(L"2")},
     {K7_FIELD(roundCircumference, 2.0f)}},
    // KEEP: without a mode the number of characters of the circumference is one.
    {"AModeOfNoCircumferenceIsNone", {kFitted}, {K7_FIELD(roundAxisMode, 0)}},
    {"AModeDefaultsToTheOneCharacterOfTheCircumference",
     {kFitted, Circumference(L"9")},
     {K7_FIELD(roundAxisMode, 1)}},
    {"AModeDefaultsToTheTwoCharactersOfTheCircumference",
     {kFitted, Circumference(L"2D")},
     {K7_FIELD(roundAxisMode, 2)}},
    {"AModeDefaultsToAnUnknownOneAfterALongCircumference",
     {kFitted, Circumference(L"9.42")},
     {K7_FIELD(roundAxisMode, 4)}},
    {"AnEmptyModeIsZero",
     {kFitted, Circumference(L"9"), {kRound, L"Mode", L""}},
     {K7_FIELD(roundAxisMode, 0)}},
    {"AnyNumberButZeroIsAnAttachment",
     {Whole(kRound, L"Has Round Attachment", -256), Whole(kRound, L"Mode", 2)},
     {K7_FIELD(roundAxisMode, 2)}},
};
INSTANTIATE_TEST_SUITE_P(, LoadRoundMode, testing::ValuesIn(kModeCases), NameOfCase<LoadCase>);

TEST_F(LoadTest, AnAttachmentIsOneForTheWholeModule) {
  Load({Whole(kRound, L"Has Round Attachment", 256)});
  EXPECT_EQ(hasRoundAttachment, 1);
}

TEST_F(LoadTest, WithoutTheAttachmentTheModeIsNone) {
  record_.roundAxisMode = kRoundReplacesX;
  hasRoundAttachment = 1;
  Load({Whole(kRound, L"Mode", 2)});
  EXPECT_EQ(record_.roundAxisMode, kRoundOff);
  EXPECT_EQ(hasRoundAttachment, 0);
}

// -------------------------------------------------------------------------------------- the
// position

TEST_F(LoadTest, AFixtureInPlaceOfXLoadsItsOwnPosition) {
  record_.roundAxisMode = 1;  // as before this load
  Load(Fixture(1));
  EXPECT_EQ(hasRoundAttachment, 1);
  Expect({K7_FIELD(lastX, 333), K7_FIELD(lastY, 222), K7_FIELD(parkedPosition, 111),
          K7_FIELD(tableHomeX, 0), K7_FIELD(tableHomeY, 40000),
          K7_FIELD(roundStepsPerInch, 4000.0f), K7_FIELD(savedPositionX, 111),
          K7_FIELD(savedPositionY, 222)});
}

TEST_F(LoadTest, AFixtureInPlaceOfYLoadsItsOwnPosition) {
  record_.roundAxisMode = 2;
  Load(Fixture(2));
  Expect({K7_FIELD(lastX, 111), K7_FIELD(lastY, 333), K7_FIELD(parkedPosition, 222),
          K7_FIELD(tableHomeX, 6000), K7_FIELD(tableHomeY, 0),
          K7_FIELD(roundStepsPerInch, 16000.0f), K7_FIELD(savedPositionX, 111),
          K7_FIELD(savedPositionY, 222)});
}

// KEEP: the home is put aside as it was computed, in the fixture's steps, beside the resolution of
// the screw.
TEST_F(LoadTest, TheHomeOfAReplacedAxisIsPutAsideInTheStepsOfTheFixture) {
  Load(Fixture(1));
  Expect({K7_FIELD(tableHomeRound, 12000), K7_FIELD(tableHomeX, 0)});
  Load(Fixture(2));
  Expect({K7_FIELD(tableHomeRound, 20000), K7_FIELD(tableHomeY, 0)});
}

TEST_F(LoadTest, WithoutAReplacedAxisTheHomePutAsideStays) {
  record_.tableHomeRound = 7;
  record_.roundStepsPerInch = 8.0f;
  for (const std::int32_t mode : {0, 3}) {
    Load(Fixture(mode));
    Expect({K7_FIELD(tableHomeRound, 7), K7_FIELD(roundStepsPerInch, 8.0f),
            K7_FIELD(tableHomeX, 6000), K7_FIELD(tableHomeY, 40000)});
  }
}

TEST_F(LoadTest, AChangedModeStartsTheFixtureAtZero) {
  Load(Fixture(1));
  Expect({K7_FIELD(lastX, 0), K7_FIELD(lastY, 222)});
  Load();  // the mode is the one before now
  Expect({K7_FIELD(lastX, 333)});
  Load(Fixture(2));
  Expect({K7_FIELD(lastX, 111), K7_FIELD(lastY, 0)});
}

TEST_F(LoadTest, AnUnknownModeLeavesTheLivePositionAlone) {
  record_.lastX = 7;
  record_.lastY = 8;
  Load(Fixture(3));
  Expect({K7_FIELD(roundAxisMode, 3), K7_FIELD(lastX, 7), K7_FIELD(lastY, 8),
          K7_FIELD(savedPositionX, 111), K7_FIELD(savedPositionY, 222)});
}

TEST_F(LoadTest, AFixtureThatIsSwitchedOffLoadsTheLinearPosition) {
  Load(Fixture(0));
  EXPECT_EQ(hasRoundAttachment, 1);
  Expect({K7_FIELD(lastX, 111), K7_FIELD(lastY, 222)});
}

}  // namespace
}  // namespace k7
