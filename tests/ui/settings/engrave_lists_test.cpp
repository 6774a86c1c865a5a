#include "ui/settings/engrave_lists.h"

#include <gmock/gmock.h>

#include "ui/settings/settings_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;

using EngraveListsTest = SettingsDialogTest;

TEST_F(EngraveListsTest, ResolutionsAreWholePartsOfTheCoarserAxis) {
  WriteFloat(L"Axis X", L"Screw Pitch", 2.0f);  // 1000 steps per inch
  WriteFloat(L"Axis Y", L"Screw Pitch", 1.0f);  // 2000
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_RESOLUTION),
              ElementsAre(L"1000", L"500", L"333", L"250", L"200"));
}

// KEEP: the stored resolution does not choose the entry.
TEST_F(EngraveListsTest, TheFirstResolutionIsAlwaysSelected) {
  WriteFloat(L"Engrave Settings", L"Resolution", 2000.0f);
  Open();
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_RESOLUTION), 0);
}

// KEEP: whatever resolution is chosen.
TEST_F(EngraveListsTest, BothAxisFactorsAreWrittenAsOne) {
  Open();
  Pick(dialog_, IDC_CS_RESOLUTION, 3);
  CloseBy(IDC_CS_APPLY);
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Resolution"), 1000.0f);
  EXPECT_EQ(Stored(L"Engrave Settings", L"X Axis Factor"), L"1");
  EXPECT_EQ(Stored(L"Engrave Settings", L"Y Axis Factor"), L"1");
}

TEST_F(EngraveListsTest, EngraveTypesAreDragAndRoute) {
  WriteInt(L"Engrave Settings", L"Engrave Type", 1);
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_ENGRAVE_TYPE), ElementsAre(L"Drag", L"Route"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_ENGRAVE_TYPE), 1);
  EXPECT_EQ(dialogState.currentEngraveType, 1u);
}

// KEEP: sorted by style, "Full Automatic" would come first.
TEST_F(EngraveListsTest, CutterModesStandInTheOrderOfTheirNumbers) {
  FitAllSwitches();
  WriteInt(L"Engrave Settings", L"Engrave Type", 1);
  WriteInt(L"Engrave Settings", L"Cutter Mode", 3);
  Open();
  EXPECT_THAT(
      EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
      ElementsAre(L"No Cutter Set", L"Manual Cutter", L"Full Automatic", L"Semi Automatic"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 3);
}

TEST_F(EngraveListsTest, DraggingOffersNoSemiAutomaticCutter) {
  FitAllSwitches();
  WriteInt(L"Engrave Settings", L"Cutter Mode", 3);
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
              ElementsAre(L"No Cutter Set", L"Manual Cutter", L"Full Automatic"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 0);
}

TEST_F(EngraveListsTest, WithoutSwitchesAStoredAutomaticModeSelectsTheFirst) {
  constexpr struct {
    const wchar_t* section;
    const wchar_t* key;
  } kSwitches[] = {{L"Axis X", L"Limit Switch"},
                   {L"Axis Y", L"Limit Switch"},
                   {L"Axis Z", L"Limit Switch"},
                   {L"Axis Z", L"Prox Switch"}};
  WriteInt(L"Engrave Settings", L"Engrave Type", 1);
  for (const int mode : {2, 3}) {
    for (const auto& missing : kSwitches) {
      FitAllSwitches();
      WriteInt(missing.section, missing.key, 0);
      WriteInt(L"Engrave Settings", L"Cutter Mode", mode);
      Open();
      EXPECT_THAT(EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
                  ElementsAre(L"No Cutter Set", L"Manual Cutter"));
      EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 0);
      CloseBy(IDCANCEL);
    }
  }
}

TEST_F(EngraveListsTest, AModeThatIsNotOfferedSelectsTheFirst) {
  for (const int mode : {-1, 99}) {
    WriteInt(L"Engrave Settings", L"Cutter Mode", mode);
    Open();
    EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 0);
    CloseBy(IDCANCEL);
  }
}

TEST_F(EngraveListsTest, AirZIsTheLastModeAndSelected) {
  WriteInt(L"Axis Z", L"Air Z", 1);
  WriteInt(L"Engrave Settings", L"Cutter Mode", 1);
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
              ElementsAre(L"No Cutter Set", L"Manual Cutter", L"Air Z"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_CUTTER_MODE), 2);
}

TEST_F(EngraveListsTest, TheAutomaticModeCallsTheDepthASpringPressure) {
  WriteInt(L"Engrave Settings", L"Cutter Mode", 2);
  Open();
  EXPECT_EQ(Text(IDC_CS_ENGRAVE_DEPTH_LABEL), L"Spring Pressure") << "offered or not";
}

TEST_F(EngraveListsTest, TheSpindleSpeedIsShownWithinItsBounds) {
  constexpr struct {
    std::int32_t stored;
    const wchar_t* want;
  } kCases[] = {{20000, L"13000"}, {0, L"1"}, {9000, L"9000"}, {-5, L"1"}};
  for (const auto& c : kCases) {
    WriteInt(L"Spindle", L"Spindle RPM", c.stored);
    WriteInt(L"Spindle", L"Motor RPM", 4000);
    WriteFloat(L"Spindle", L"Gear Ratio", 3.25f);
    Open();
    EXPECT_EQ(Text(IDC_CS_SPINDLE_RPM), c.want);
    CloseBy(IDCANCEL);
  }
}

TEST_F(EngraveListsTest, ATypedSpindleSpeedIsSavedUpToTheMaximum) {
  constexpr struct {
    const wchar_t* typed;
    const wchar_t* want;
  } kCases[] = {{L"20000", L"13000"}, {L"12.9", L"12"}, {L"-7", L"-7"}, {L"fast", L"0"}};
  for (const auto& c : kCases) {
    Open();
    Type(IDC_CS_SPINDLE_RPM, c.typed);
    CloseBy(IDC_CS_APPLY);
    EXPECT_EQ(Stored(L"Spindle", L"Spindle RPM"), c.want);
  }
}

TEST_F(EngraveListsTest, WithoutADeviceNothingIsFilled) {
  EXPECT_EQ(MaxSpindleRpm(nullptr), 0);
  FillResolutionList(nullptr, nullptr);
  FillEngraveTypeList(nullptr, nullptr);
  FillCutterModeList(nullptr, nullptr);
  FillSpindleRpm(nullptr, nullptr);
  SaveResolution(nullptr, nullptr);
}

}  // namespace
}  // namespace k7
