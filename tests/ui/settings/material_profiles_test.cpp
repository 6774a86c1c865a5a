#include "ui/settings/material_profiles.h"

#include <gmock/gmock.h>

#include "ui/settings/filling.h"
#include "ui/settings/material_profiles_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(MaterialProfilesTest, ProfilesAreListedByNameInAnyCaseOfTheExtension) {
  for (const wchar_t* file :
       {L"Oak.INI", L"ash.ini", L"Brass.Ini", L"a.ini", L".ini", L"notes.txt", L"ini"}) {
    MakeProfile(file);
  }
  std::filesystem::create_directory(PathOf(L"Foo.ini"));
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL),
              ElementsAre(L"a", L"ash", L"Brass", L"Foo", L"Oak"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

// Makes a new file of exactly this name; false where another spelling of it is the same file. Under
// Wine the folder's path in the system below leads past the rules of Windows.
bool MakeFileExactly(const std::wstring& folder, const std::wstring& file) {
  std::wstring path = folder + L"\\" + file;
  const auto nameBelow = reinterpret_cast<char*(__cdecl*)(const wchar_t*)>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  if (nameBelow != nullptr) {
    const std::string below = nameBelow(folder.c_str());
    path = L"\\\\?\\unix" + std::wstring{below.begin(), below.end()} + L"\\" + file;
    std::ranges::replace(path, L'/', L'\\');
  }
  const HANDLE made = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_FLAG_POSIX_SEMANTICS, nullptr);
  if (made == INVALID_HANDLE_VALUE) return false;
  CloseHandle(made);
  return true;
}

TEST_F(MaterialProfilesTest, FilesThatDifferInCaseAloneAreBothListed) {
  MakeProfile(L"Oak.INI");
  if (!MakeFileExactly(folder_, L"oak.ini")) GTEST_SKIP() << "one file to this file system";
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), testing::UnorderedElementsAre(L"Oak", L"oak"));
}

// KEEP: with the extension "Oak 2.ini" comes before "Oak.ini", without it "Oak 2" follows "Oak".
TEST_F(MaterialProfilesTest, TheSelectedPositionIsThatInTheFolder) {
  MakeProfile(L"Oak.ini");
  MakeProfile(L"Oak 2.ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), ElementsAre(L"Oak", L"Oak 2"));
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak 2");
}

TEST_F(MaterialProfilesTest, TheProfileLastUsedIsSelected) {
  MakeProfile(L"Oak.ini");
  MakeProfile(L"Ash.ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  Open();
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak");
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  EXPECT_EQ(Text(IDC_CS_CUTTER_LIFT), L"0.1250") << "the fields come from the controller's file";
  CloseBy(IDC_CS_APPLY);
  EXPECT_EQ(Stored(L"Engrave Settings", L"Material Profile"), L"Oak");
}

TEST_F(MaterialProfilesTest, NamesAreComparedWithTheirCase) {
  MakeProfile(L"Oak.ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", L"oak");
  Open();
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
}

TEST_F(MaterialProfilesTest, AnEmptyFolderGivesAnEmptyList) {
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), IsEmpty());
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

TEST_F(MaterialProfilesTest, PickingAProfileFillsTheFieldsAndKeepsItSelected) {
  MakeProfile(L"Oak.ini", 0.75f);
  Open();
  const auto before = AllKeys();
  Choose(L"Oak");
  EXPECT_EQ(Text(IDC_CS_CUTTER_LIFT), L"0.7500");
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak");
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  EXPECT_EQ(FillingOf(dialog_), Filling::None);
  EXPECT_EQ(AllKeys(), before);
  Type(IDC_CS_CUTTER_LIFT, L"0.8");
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

// KEEP: a profile has no keys for them.
TEST_F(MaterialProfilesTest, AProfileShowsDefaultMaximaAndNoLastCutter) {
  WriteFloat(L"Maximum Values", L"XY Speed", 20.0f);
  WriteFloat(L"Engrave Settings", L"Last Cutter Set", 0.5f);
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  EXPECT_EQ(Text(IDC_CS_MAX_TRAVERSE_SPEED), L"10.0000");
  EXPECT_EQ(Text(IDC_CS_LAST_CUTTER), L"Last Cutter: 0.000");
}

// KEEP: a profile knows nothing of the Z axis.
TEST_F(MaterialProfilesTest, AProfileShowsTheControlsOfAZMotorEvenWithAirZ) {
  WriteInt(L"Axis Z", L"Air Z", 1);
  MakeProfile(L"Oak.ini");
  Open();
  ASSERT_FALSE(Shown(IDC_CS_CUTTER_LIFT));
  Choose(L"Oak");
  EXPECT_TRUE(Shown(IDC_CS_CUTTER_LIFT));
  EXPECT_FALSE(Shown(IDC_CS_DONT_LOWER_Z));
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_CUTTER_MODE),
              ElementsAre(L"No Cutter Set", L"Manual Cutter"));
}

TEST_F(MaterialProfilesTest, AProfileLeavesTheSwitchesAndTheFixture) {
  FitAllSwitches();
  WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  EXPECT_TRUE(dialogState.HasAllSwitches());
  EXPECT_TRUE(Shown(IDC_CS_ROUND_FIXTURE));
}

TEST_F(MaterialProfilesTest, AProfilesSpindleSpeedIsBoundedByTheMachine) {
  WriteInt(L"Spindle", L"Motor RPM", 1000);
  MakeProfile(L"Oak.ini");
  k7test::KeyFile{PathOf(L"Oak.ini")}.WriteInt(L"Spindle", L"Spindle RPM", 9000);
  MakeProfile(L"Slow.ini");
  k7test::KeyFile{PathOf(L"Slow.ini")}.WriteInt(L"Spindle", L"Spindle RPM", 700);
  Open();
  Choose(L"Oak");
  EXPECT_EQ(Text(IDC_CS_SPINDLE_RPM), L"3250");
  Choose(L"Slow");
  EXPECT_EQ(Text(IDC_CS_SPINDLE_RPM), L"700");
}

TEST_F(MaterialProfilesTest, AProfileSetsTheFlagsThatItHolds) {
  const k7test::KeyFile profile{PathOf(L"Oak.ini")};
  for (const wchar_t* axis : {L"Axis X", L"Axis Y", L"Axis Z"}) {
    profile.WriteInt(axis, L"Limit Switch", 1);
  }
  profile.WriteInt(L"Axis Z", L"Prox Switch", 1);
  profile.WriteInt(L"Spindle", L"Has Spindle", 1);
  Open();
  ASSERT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).size(), 2u);
  Choose(L"Oak");
  EXPECT_TRUE(dialogState.HasAllSwitches());
  EXPECT_EQ(hasSpindle, 1);
  EXPECT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).size(), 3u);
}

TEST_F(MaterialProfilesTest, AProfileWithAirZShowsItsLayout) {
  k7test::KeyFile{PathOf(L"Oak.ini")}.WriteInt(L"Axis Z", L"Air Z", 1);
  Open();
  ASSERT_TRUE(Shown(IDC_CS_CUTTER_LIFT));
  Choose(L"Oak");
  EXPECT_FALSE(Shown(IDC_CS_CUTTER_LIFT));
  EXPECT_TRUE(Shown(IDC_CS_DONT_LOWER_Z));
  EXPECT_EQ(EntriesOf(dialog_, IDC_CS_CUTTER_MODE).back(), L"Air Z");
}

TEST_F(MaterialProfilesTest, AProfileSetsAndClearsItsBoxes) {
  constexpr int kBoxes[] = {IDC_CS_ENGRAVE_BY_COLOR, IDC_CS_DONT_LOWER_Z, IDC_CS_MULTI_PASS};
  const k7test::KeyFile profile{PathOf(L"Oak.ini")};
  for (const wchar_t* key : {L"Engrave By Color", L"Dont Lower Air Z", L"Multi Pass"}) {
    profile.WriteInt(L"Engrave Settings", key, 1);
  }
  MakeProfile(L"Plain.ini");
  Open();
  Choose(L"Oak");
  for (const int box : kBoxes) EXPECT_TRUE(Checked(box)) << box;
  Choose(L"Plain");
  for (const int box : kBoxes) EXPECT_FALSE(Checked(box)) << box;
}

TEST_F(MaterialProfilesTest, AProfilesRoundFixtureIsShownOnAMachineThatHasOne) {
  const k7test::KeyFile profile{PathOf(L"Pen.ini")};
  profile.WriteInt(L"Axis Round", L"Mode", 2);
  profile.WriteText(L"Axis Round", L"Circumference", L"1.5");
  MakeProfile(L"Plain.ini");
  for (const bool fitted : {true, false}) {
    WriteInt(L"Axis Round", L"Has Round Attachment", fitted ? 1 : 0);
    // Of the profile's own attachment nothing is asked.
    profile.WriteInt(L"Axis Round", L"Has Round Attachment", fitted ? 0 : 1);
    Open();
    Choose(L"Pen");
    EXPECT_EQ(SelectionOf(dialog_, IDC_CS_ROUND_FIXTURE), 2);
    EXPECT_EQ(Text(IDC_CS_CIRCUMFERENCE), L"1.5");
    for (const int id : {1171, 1172, 1173, 1174}) EXPECT_EQ(Shown(id), fitted) << id;
    Choose(L"Plain");
    EXPECT_EQ(SelectionOf(dialog_, IDC_CS_ROUND_FIXTURE), 0);
    for (const int id : {1173, 1174}) EXPECT_FALSE(Shown(id)) << id;
    CloseBy(IDCANCEL);
  }
}

TEST_F(MaterialProfilesTest, WithoutANameNothingIsLoaded) {
  MakeProfile(L".ini", 0.75f);  // what an empty name would read
  Open();
  Type(IDC_CS_CUTTER_LIFT, L"0.3");
  Pick(dialog_, IDC_CS_MATERIAL, -1);
  EXPECT_EQ(Text(IDC_CS_CUTTER_LIFT), L"0.3");
}

TEST_F(MaterialProfilesTest, WhileFillingNothingIsLoaded) {
  MakeProfile(L"Oak.ini", 0.75f);
  Open();
  SetFilling(dialog_, Filling::AtOpening);
  Choose(L"Oak");
  SetFilling(dialog_, Filling::None);
  EXPECT_EQ(Text(IDC_CS_CUTTER_LIFT), L"0.1250");
}

TEST_F(MaterialProfilesTest, DeletingAsksThenRemovesTheProfile) {
  MakeProfile(L"Oak.ini");
  MakeProfile(L"Ash.ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  Open();
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  BoxSeen box = driver_->AnswerBox(dialog_, IDNO);
  EXPECT_EQ(box.text, L"Delete \"Oak\" Material Profile?");
  EXPECT_EQ(box.caption, L"Delete Material Profile");
  EXPECT_THAT(box.buttons, ElementsAre(L"Yes", L"No"));
  EXPECT_EQ(box.owner, dialog_);
  EXPECT_TRUE(Exists(L"Oak.ini"));

  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  driver_->AnswerBox(dialog_, IDYES);
  ASSERT_TRUE(WaitUntil([&] { return !Enabled(IDC_CS_DELETE_MATERIAL); }));
  EXPECT_FALSE(Exists(L"Oak.ini"));
  EXPECT_EQ(Stored(L"Engrave Settings", L"Material Profile"), L"");
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), ElementsAre(L"Ash"));
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
}

TEST_F(MaterialProfilesTest, AfterDeletingTheKeyboardIsOnTheList) {
  MakeProfile(L"Oak.ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  Open();
  SetFocusTo(IDC_CS_DELETE_MATERIAL);
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDYES).caption, L"Delete Material Profile");
  EXPECT_TRUE(driver_->WaitForFocus(dialog_, IDC_CS_MATERIAL)) << "not on a disabled button";
}

TEST_F(MaterialProfilesTest, AProfileThatCannotBeDeletedStaysInTheListAndSelected) {
  std::filesystem::create_directory(PathOf(L"Foo.ini"));
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Foo");
  Open();
  ASSERT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDYES).text, L"Delete \"Foo\" Material Profile?");
  WaitUntilHandled();
  EXPECT_TRUE(Exists(L"Foo.ini"));
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Foo");
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
  EXPECT_EQ(Stored(L"Engrave Settings", L"Material Profile"), L"");
}

// KEEP: whatever its state before.
TEST_F(MaterialProfilesTest, AfterDeletingTheJobCanBeRun) {
  MakeProfile(L"Oak.ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  Open(0, 1);
  ASSERT_FALSE(Enabled(IDOK));
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  driver_->AnswerBox(dialog_, IDYES);
  EXPECT_TRUE(WaitUntil([&] { return Enabled(IDOK); }));
}

// KEEP: the cut name is what is deleted.
TEST_F(MaterialProfilesTest, ALongNameIsCutToSixtyFourCharacters) {
  const std::wstring cut(64, L'x');
  const std::wstring whole = cut + L"yz";
  MakeProfile(cut + L".ini");
  MakeProfile(whole + L".ini");
  File().WriteText(L"Engrave Settings", L"Material Profile", whole.c_str());
  Open();
  ASSERT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), whole);
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  EXPECT_EQ(driver_->AnswerBox(dialog_, IDYES).text, L"Delete \"" + cut + L"\" Material Profile?");
  ASSERT_TRUE(WaitUntil([&] { return !Exists(cut + L".ini"); }));
  EXPECT_TRUE(Exists(whole + L".ini"));
}

TEST_F(MaterialProfilesTest, WithoutADeviceOrAListNothingIsFilled) {
  FillMaterialList(nullptr, L"Oak");
  MakeProfile(L"Oak.ini");
  Open();
  dialogDevice = nullptr;
  FillMaterialList(dialog_, L"Oak");
  dialogDevice = &Record();
  FillMaterialList(GetDlgItem(dialog_, IDOK), L"Oak");  // a window without the list
  EXPECT_EQ(SelectionOf(dialog_, IDC_CS_MATERIAL), -1);
}

}  // namespace
}  // namespace k7
