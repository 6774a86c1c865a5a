#include "ui/table_setup/table_setup_fields.h"

#include <gtest/gtest.h>

#include "ui/sub_dialog_fixture.h"
#include "ui/table_setup/table_setup_dialog.h"

namespace k7 {
namespace {

using namespace k7test;

enum class Kind { Whole, Decimal, Thousandths };

// One number field: what it shows without its key, for a stored value, and what it saves.
struct NumberRow {
  int id;
  const wchar_t* section;
  const wchar_t* key;
  Kind kind;
  const wchar_t* missing;
  float stored;  // as the file holds it
  const wchar_t* shown;
  const wchar_t* typed;
  float saved;  // as the file holds it
};
constexpr NumberRow kNumbers[] = {
    {1016, L"Axis X", L"Motor Steps", Kind::Whole, L"200", 400, L"400", L"401", 401},
    {1017, L"Axis Y", L"Motor Steps", Kind::Whole, L"200", 400, L"400", L"402", 402},
    {1018, L"Axis Z", L"Motor Steps", Kind::Whole, L"200", 400, L"400", L"403", 403},
    {1019, L"Axis X", L"Micro Steps", Kind::Whole, L"10", 16, L"16", L"17", 17},
    {1020, L"Axis Y", L"Micro Steps", Kind::Whole, L"10", 16, L"16", L"18", 18},
    {1021, L"Axis Z", L"Micro Steps", Kind::Whole, L"10", 16, L"16", L"19", 19},
    {1022, L"Axis X", L"Screw Pitch", Kind::Decimal, L"0.5000", 0.25f, L"0.2500", L"0.2", 0.2f},
    {1023, L"Axis Y", L"Screw Pitch", Kind::Decimal, L"0.5000", 0.25f, L"0.2500", L"0.3", 0.3f},
    {1024, L"Axis Z", L"Screw Pitch", Kind::Decimal, L"0.5000", 0.25f, L"0.2500", L"0.4", 0.4f},
    {1074, L"Prox", L"Semi Auto Offset", Kind::Decimal, L"0.0000", 0.5f, L"0.5000", L"0.1", 0.1f},
    {1092, L"Settings", L"Scissors", Kind::Decimal, L"1.0000", 2.5f, L"2.5000", L"3", 3.0f},
    {1082, L"Spindle", L"Motor RPM", Kind::Whole, L"4000", 5000, L"5000", L"6000", 6000},
    {1084, L"Spindle", L"Gear Ratio", Kind::Decimal, L"3.2500", 2.0f, L"2.0000", L"1.5", 1.5f},
    {1090, L"Spindle", L"Ramp Time", Kind::Whole, L"30", 15, L"15", L"20", 20},
    {1132, L"Maximum Values", L"XY Speed", Kind::Decimal, L"10.0000", 8, L"8.0000", L"7", 7},
    {1134, L"Maximum Values", L"Z Speed", Kind::Decimal, L"10.0000", 6, L"6.0000", L"5", 5},
    {1136, L"Maximum Values", L"Engrave Depth", Kind::Decimal, L"1.0000", 2, L"2.0000", L"3", 3},
    {1034, L"Table Size", L"Width", Kind::Thousandths, L"25.000", 12345, L"12.345", L"24", 24000},
    {1035, L"Table Size", L"Height", Kind::Thousandths, L"16.000", 1, L"0.001", L"12.5", 12500},
    {1191, L"Table Size", L"Depth", Kind::Thousandths, L"2.000", 3000, L"3.000", L"1.5", 1500},
    {1178, L"Jog Speed", L"Fast", Kind::Thousandths, L"5.000", 4000, L"4.000", L"3", 3000},
    {1179, L"Jog Speed", L"Slow", Kind::Thousandths, L"0.250", 125, L"0.125", L"0.1", 100},
    {1038, L"Axis Round", L"Motor Steps", Kind::Whole, L"200", 400, L"400", L"404", 404},
    {1039, L"Axis Round", L"Micro Steps", Kind::Whole, L"10", 16, L"16", L"20", 20},
    {1088, L"Axis Round", L"Gear Ratio", Kind::Decimal, L"20.0000", 40, L"40.0000", L"36", 36},
};
constexpr NumberRow kBeadOffsets[] = {
    {1188, L"Braille", L"Bead Insert Tool X Offset", Kind::Thousandths, L"0.000", -1500, L"-1.500",
     L"2", 2000},
    {1189, L"Braille", L"Bead Insert Tool Y Offset", Kind::Thousandths, L"0.000", 250, L"0.250",
     L"-0.5", -500},
};

struct BoxRow {
  int id;
  const wchar_t* section;
  const wchar_t* key;
};
constexpr BoxRow kBoxes[] = {
    {1060, L"Axis X", L"Limit Switch"},
    {1061, L"Axis Y", L"Limit Switch"},
    {1062, L"Axis Z", L"Limit Switch"},
    {1063, L"Axis Z", L"Prox Switch"},
    {1192, L"Axis Z", L"Air Z"},
    {1094, L"Spindle", L"Has Spindle"},
    {1154, L"Braille", L"Bead Insert Tool"},
    {1161, L"Diode", L"Diode Pointer"},
    {1095, L"Axis Round", L"Has Round Attachment"},
};

class TableSetupFields : public SubDialogTest {
 protected:
  void OpenSetup() { OpenOn(&ShowTableSetupDialog); }
  void Save() {
    EnableWindow(GetDlgItem(dialog_, IDOK), TRUE);
    EXPECT_EQ(CloseBy(IDOK), 1);
  }
  void Store(const NumberRow& row) {
    if (row.kind == Kind::Decimal) {
      WriteFloat(row.section, row.key, row.stored);
    } else {
      WriteInt(row.section, row.key, static_cast<std::int32_t>(row.stored));
    }
  }
  void ExpectSaved(const NumberRow& row) {
    if (row.kind == Kind::Decimal) {
      EXPECT_EQ(StoredFloat(row.section, row.key), row.saved) << row.id;
    } else {
      EXPECT_EQ(Stored(row.section, row.key), std::to_wstring(static_cast<int>(row.saved)))
          << row.id;
    }
  }
};

TEST_F(TableSetupFields, ShowsTheIdentity) {
  OpenSetup();
  EXPECT_EQ(Text(1001), L"K7 Controller ID: " + id_);
}

TEST_F(TableSetupFields, ShowsTheDefaultOfEveryMissingKey) {
  OpenSetup();
  EXPECT_EQ(Text(1003), L"K7 System Controller");
  for (const NumberRow& row : kNumbers) EXPECT_EQ(Text(row.id), row.missing) << row.id;
  for (const NumberRow& row : kBeadOffsets) EXPECT_EQ(Text(row.id), row.missing) << row.id;
  for (const BoxRow& row : kBoxes) EXPECT_FALSE(Checked(row.id)) << row.id;
  for (const int id : {1065, 1066, 1067}) EXPECT_EQ(Text(id), L"Table Home  0.000000") << id;
  for (const int id : {1025, 1026, 1027}) EXPECT_EQ(Text(id), L"4000") << id;
  EXPECT_EQ(Text(1086), L"13000");
  EXPECT_EQ(Text(1166), L"X: 0.0000");
  EXPECT_EQ(Text(1167), L"Y: 0.0000");
}

TEST_F(TableSetupFields, ShowsTheStoredValueOfEveryKey) {
  File().WriteText(L"Settings", L"FriendlyName", L"Shop Engraver");
  for (const NumberRow& row : kNumbers) Store(row);
  for (const NumberRow& row : kBeadOffsets) Store(row);
  for (const BoxRow& row : kBoxes) WriteInt(row.section, row.key, 1);
  WriteFloat(L"Axis X", L"Table Home", 0.5f);
  WriteFloat(L"Axis Y", L"Table Home", -1.25f);
  WriteFloat(L"Axis Z", L"Table Home", 1.75f);
  WriteInt(L"Diode", L"Diode Pointer X Offset", -125);
  WriteInt(L"Diode", L"Diode Pointer Y Offset", 2500);
  OpenSetup();
  EXPECT_EQ(Text(1003), L"Shop Engraver");
  for (const NumberRow& row : kNumbers) EXPECT_EQ(Text(row.id), row.shown) << row.id;
  for (const NumberRow& row : kBeadOffsets) EXPECT_EQ(Text(row.id), row.shown) << row.id;
  for (const BoxRow& row : kBoxes) EXPECT_TRUE(Checked(row.id)) << row.id;
  EXPECT_EQ(Text(1065), L"Table Home  0.500000");
  EXPECT_EQ(Text(1066), L"Table Home  -1.250000");
  EXPECT_EQ(Text(1067), L"Table Home  1.750000");
  for (const int id : {1025, 1026, 1027}) EXPECT_EQ(Text(id), L"25600") << id;
  EXPECT_EQ(Text(1086), L"10000");
  EXPECT_EQ(Text(1166), L"X: -0.1250");
  EXPECT_EQ(Text(1167), L"Y: 2.5000");
}

TEST_F(TableSetupFields, AnyOtherNumberThanZeroChecksABox) {
  for (const BoxRow& row : kBoxes) WriteInt(row.section, row.key, 2);
  OpenSetup();
  for (const BoxRow& row : kBoxes) EXPECT_TRUE(Checked(row.id)) << row.id;
}

// KEEP: as every number without decimals: a zero keeps its point.
TEST_F(TableSetupFields, AStoredZeroIsShownWithAPoint) {
  for (const NumberRow& row : kNumbers) {
    if (row.kind == Kind::Whole) WriteInt(row.section, row.key, 0);
  }
  OpenSetup();
  for (const NumberRow& row : kNumbers) {
    if (row.kind != Kind::Whole) continue;
    EXPECT_EQ(Text(row.id), L"0.") << row.id;
  }
  Save();
  EXPECT_EQ(Stored(L"Axis X", L"Motor Steps"), L"0.") << "as typed";
}

// A pitch of 5 mm has more digits than its field.
TEST_F(TableSetupFields, OpensWithTheResultsOfTheStoredNumbers) {
  WriteFloat(L"Axis X", L"Screw Pitch", 0.19685f);
  WriteFloat(L"Axis Y", L"Screw Pitch", 0.39370f);
  WriteFloat(L"Axis Z", L"Screw Pitch", 0.09843f);
  WriteInt(L"Spindle", L"Motor RPM", 30000);
  WriteFloat(L"Spindle", L"Gear Ratio", 1.33333f);
  OpenSetup();
  EXPECT_EQ(Text(1022), L"0.1969");
  EXPECT_EQ(Text(1025), L"10160");
  EXPECT_EQ(Text(1026), L"5080");
  EXPECT_EQ(Text(1027), L"20319");
  EXPECT_EQ(Text(1084), L"1.3333");
  EXPECT_EQ(Text(1086), L"40000");
  Type(1022, L"0.1969");
  EXPECT_EQ(Text(1025), L"10157") << "from here on what is typed counts";
  Type(1084, L"1.3333");
  EXPECT_EQ(Text(1086), L"39999");
}

TEST_F(TableSetupFields, SavesEveryFieldUnderItsKey) {
  OpenSetup();
  Type(1003, L"Shop Engraver");
  for (const NumberRow& row : kNumbers) Type(row.id, row.typed);
  for (const NumberRow& row : kBeadOffsets) Type(row.id, row.typed);
  for (const BoxRow& row : kBoxes) SendDlgItemMessageW(dialog_, row.id, BM_SETCHECK, 1, 0);
  Save();
  EXPECT_EQ(Stored(L"Settings", L"FriendlyName"), L"Shop Engraver");
  for (const NumberRow& row : kNumbers) ExpectSaved(row);
  for (const NumberRow& row : kBeadOffsets) ExpectSaved(row);
  for (const BoxRow& row : kBoxes) EXPECT_EQ(Stored(row.section, row.key), L"1") << row.id;
  EXPECT_EQ(Stored(L"Axis X", L"Screw Pitch"), L"1045220557");
}

// The displays (resolution, spindle speed, table home, diode offset) are not among the keys.
TEST_F(TableSetupFields, WritesTheseKeysAndNoOthers) {
  OpenSetup();
  const auto before = AllKeys();
  SendDlgItemMessageW(dialog_, 1154, BM_SETCHECK, 1, 0);
  Save();
  std::map<std::wstring, std::wstring> expected = before;
  expected[L"Settings/FriendlyName"] = L"";
  const auto add = [&](const auto& row) {
    expected[std::wstring{row.section} + L"/" + row.key] = L"";
  };
  for (const NumberRow& row : kNumbers) add(row);
  for (const NumberRow& row : kBeadOffsets) add(row);
  for (const BoxRow& row : kBoxes) add(row);
  const auto after = AllKeys();
  for (const auto& [key, text] : after) EXPECT_TRUE(expected.contains(key)) << key;
  EXPECT_EQ(after.size(), expected.size());
}

// A file without keys takes them in the order in which they are written, by section.
TEST_F(TableSetupFields, SavesInTheOrderOfTheMachinesParts) {
  OpenSetup();
  SendDlgItemMessageW(dialog_, 1154, BM_SETCHECK, 1, 0);
  Save();
  std::vector<std::wstring> keysInOrder;
  for (const auto& [key, text] : KeysInOrder()) keysInOrder.push_back(key);
  EXPECT_EQ(keysInOrder, (std::vector<std::wstring>{L"Settings/FriendlyName",
                                                    L"Settings/Scissors",
                                                    L"Axis X/Motor Steps",
                                                    L"Axis X/Micro Steps",
                                                    L"Axis X/Screw Pitch",
                                                    L"Axis X/Limit Switch",
                                                    L"Axis Y/Motor Steps",
                                                    L"Axis Y/Micro Steps",
                                                    L"Axis Y/Screw Pitch",
                                                    L"Axis Y/Limit Switch",
                                                    L"Axis Z/Motor Steps",
                                                    L"Axis Z/Micro Steps",
                                                    L"Axis Z/Screw Pitch",
                                                    L"Axis Z/Limit Switch",
                                                    L"Axis Z/Prox Switch",
                                                    L"Axis Z/Air Z",
                                                    L"Spindle/Motor RPM",
                                                    L"Spindle/Gear Ratio",
                                                    L"Spindle/Ramp Time",
                                                    L"Spindle/Has Spindle",
                                                    L"Maximum Values/XY Speed",
                                                    L"Maximum Values/Z Speed",
                                                    L"Maximum Values/Engrave Depth",
                                                    L"Prox/Semi Auto Offset",
                                                    L"Table Size/Width",
                                                    L"Table Size/Height",
                                                    L"Table Size/Depth",
                                                    L"Jog Speed/Fast",
                                                    L"Jog Speed/Slow",
                                                    L"Braille/Bead Insert Tool",
                                                    L"Braille/Bead Insert Tool X Offset",
                                                    L"Braille/Bead Insert Tool Y Offset",
                                                    L"Diode/Diode Pointer",
                                                    L"Axis Round/Motor Steps",
                                                    L"Axis Round/Micro Steps",
                                                    L"Axis Round/Gear Ratio",
                                                    L"Axis Round/Has Round Attachment"}));
}

TEST_F(TableSetupFields, UncheckedBoxesAreSavedAsZero) {
  for (const BoxRow& row : kBoxes) WriteInt(row.section, row.key, 1);
  OpenSetup();
  for (const BoxRow& row : kBoxes) SendDlgItemMessageW(dialog_, row.id, BM_SETCHECK, 0, 0);
  Save();
  for (const BoxRow& row : kBoxes) EXPECT_EQ(Stored(row.section, row.key), L"0") << row.id;
}

TEST_F(TableSetupFields, AWidthIsRoundedToThousandths) {
  OpenSetup();
  Type(1034, L"25.0004");
  Type(1035, L"25.0005");
  Save();
  EXPECT_EQ(Stored(L"Table Size", L"Width"), L"25000");
  EXPECT_EQ(Stored(L"Table Size", L"Height"), L"25001");
}

TEST_F(TableSetupFields, ShownAndSavedAgainOffsetsBelowZeroStayTheSame) {
  WriteInt(L"Braille", L"Bead Insert Tool", 1);
  WriteInt(L"Braille", L"Bead Insert Tool X Offset", -500);
  WriteInt(L"Braille", L"Bead Insert Tool Y Offset", -1);
  OpenSetup();
  Save();
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool X Offset"), L"-500");
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool Y Offset"), L"-1");
}

// KEEP: nothing is checked.
TEST_F(TableSetupFields, TextThatIsNoNumberIsSavedAsZeroOrAsTyped) {
  OpenSetup();
  Type(1022, L"steep");
  Type(1034, L"wide");
  Type(1016, L"many");
  Type(1017, L"");
  Save();
  EXPECT_EQ(Stored(L"Axis X", L"Screw Pitch"), L"0");
  EXPECT_EQ(Stored(L"Table Size", L"Width"), L"0");
  EXPECT_EQ(Stored(L"Axis X", L"Motor Steps"), L"many");
  EXPECT_EQ(Stored(L"Axis Y", L"Motor Steps"), L"");
}

TEST_F(TableSetupFields, ASizeBeyondAllNumbersIsHeldAtTheLargest) {
  OpenSetup();
  Type(1034, L"1e30");
  Type(1035, L"-1e30");
  Save();
  EXPECT_EQ(Stored(L"Table Size", L"Width"), L"2147483647");
  EXPECT_EQ(Stored(L"Table Size", L"Height"), L"-2147483648");
}

// KEEP: a load takes 0.5.
TEST_F(TableSetupFields, AMissingSemiAutoOffsetIsShownAndSettledAsZero) {
  OpenSetup();
  EXPECT_EQ(Record().tools.probeOffset, 0.5f);
  EXPECT_EQ(Text(1074), L"0.0000");
  Save();
  EXPECT_EQ(Stored(L"Prox", L"Semi Auto Offset"), L"0");
}

// KEEP: a load takes the X offset.
TEST_F(TableSetupFields, AMissingBeadYOffsetIsShownAsZero) {
  WriteInt(L"Braille", L"Bead Insert Tool X Offset", 750);
  OpenSetup();
  EXPECT_EQ(Text(1188), L"0.750");
  EXPECT_EQ(Text(1189), L"0.000");
}

// KEEP: whatever is typed.
TEST_F(TableSetupFields, WithoutABeadToolItsOffsetsStayAsTheyWere) {
  WriteInt(L"Braille", L"Bead Insert Tool", 1);
  WriteInt(L"Braille", L"Bead Insert Tool X Offset", 750);
  WriteInt(L"Braille", L"Bead Insert Tool Y Offset", -250);
  OpenSetup();
  Click(dialog_, 1031);
  Type(1188, L"9");
  Click(dialog_, 1154);
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool"), L"0");
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool X Offset"), L"750");
  EXPECT_EQ(Stored(L"Braille", L"Bead Insert Tool Y Offset"), L"-250");
}

TEST_F(TableSetupFields, FillingSetsTheFlagsOfWhatIsThere) {
  for (const BoxRow& row : kBoxes) WriteInt(row.section, row.key, 1);
  OpenSetup();
  EXPECT_TRUE(dialogState.HasAllSwitches());
  EXPECT_EQ(hasSpindle, 1);
  EXPECT_EQ(hasRoundAttachment, 1);
}

TEST_F(TableSetupFields, SavingSetsTheFlagsToTheBoxes) {
  OpenSetup();
  for (const BoxRow& row : kBoxes) SendDlgItemMessageW(dialog_, row.id, BM_SETCHECK, 1, 0);
  EXPECT_FALSE(dialogState.HasAllSwitches());
  Save();
  EXPECT_TRUE(dialogState.HasAllSwitches());
  EXPECT_EQ(hasSpindle, 1);
  EXPECT_EQ(hasRoundAttachment, 1);
  OpenSetup();
  for (const BoxRow& row : kBoxes) SendDlgItemMessageW(dialog_, row.id, BM_SETCHECK, 0, 0);
  Save();
  EXPECT_EQ(dialogState.xLimitSwitch, 0);
  EXPECT_EQ(dialogState.yLimitSwitch, 0);
  EXPECT_EQ(dialogState.zLimitSwitch, 0);
  EXPECT_EQ(dialogState.zProxSwitch, 0);
  EXPECT_EQ(hasSpindle, 0);
  EXPECT_EQ(hasRoundAttachment, 0);
}

TEST_F(TableSetupFields, CancelLeavesTheFileAndTheFlags) {
  WriteInt(L"Axis X", L"Motor Steps", 400);
  OpenSetup();
  const auto before = AllKeys();
  Type(1016, L"401");
  SendDlgItemMessageW(dialog_, 1060, BM_SETCHECK, 1, 0);
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(AllKeys(), before);
  EXPECT_EQ(dialogState.xLimitSwitch, 0);
}

TEST_F(TableSetupFields, WithoutADeviceNothingIsShownAndNothingSaved) {
  OpenWith(&ShowTableSetupDialog, nullptr);
  EXPECT_EQ(Text(1003), L"");
  for (const NumberRow& row : kNumbers) EXPECT_EQ(Text(row.id), L"") << row.id;
  Click(dialog_, 1031);
  Type(1016, L"400");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_TRUE(AllKeys().empty());
}

}  // namespace
}  // namespace k7
