#include "ui/set_cutter_dialog.h"

#include <gtest/gtest.h>

#include "ui/sub_dialog_fixture.h"

namespace k7 {
namespace {

using namespace k7test;
using Lifts = std::vector<long>;

class SetCutterDialog : public SubDialogTest {
 protected:
  SetCutterDialog() {
    WriteFloat(L"Prox", L"Semi Auto Offset", 0.0f);
    controller_.OnPrefix(
        "G30 ", [](FakeController& fake, const std::string&) { fake.Say("Z_Probe 4000\r\n"); });
  }
  // Opens the dialog, types the depth, presses OK, and tells what the machine has lifted.
  Lifts Set(const std::wstring& depth) {
    OpenOn(&ShowSetCutterDialog);
    Type(IDC_SC_DEPTH, depth);
    EXPECT_EQ(CloseBy(IDOK), 1);
    return LiftsAfterProbes();
  }
  std::wstring LastCutter() { return Stored(L"Engrave Settings", L"Last Cutter Set"); }
};

TEST_F(SetCutterDialog, ShowsTheLastDepthWithThreeDecimals) {
  WriteFloat(L"Engrave Settings", L"Last Cutter Set", 0.0625f);
  OpenOn(&ShowSetCutterDialog);
  EXPECT_EQ(Text(IDC_SC_DEPTH), L"0.063");
}

TEST_F(SetCutterDialog, ShowsZeroWhenNothingWasEverSet) {
  OpenOn(&ShowSetCutterDialog);
  EXPECT_EQ(Text(IDC_SC_DEPTH), L"0.000");
}

TEST_F(SetCutterDialog, ProbesAndLiftsOnceForANumberWithAFraction) {
  EXPECT_EQ(Set(L"1.25"), (Lifts{5000}));
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Last Cutter Set"), 1.25f);
  EXPECT_EQ(LastCutter(), L"1067450368");
}

TEST_F(SetCutterDialog, SetsFiftyThousandthsOnce) {
  EXPECT_EQ(Set(L"0.050"), (Lifts{200}));
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Last Cutter Set"), 0.05f);
}

// KEEP: digits only are inches first and thousandths then.
TEST_F(SetCutterDialog, ProbesAndLiftsTwiceForAWholeNumber) {
  EXPECT_EQ(Set(L"3"), (Lifts{12000, 12}));
  EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Last Cutter Set"), 3.0f);
}

TEST_F(SetCutterDialog, UpToAThousandthNothingIsSet) {
  for (const wchar_t* depth : {L"0.0005", L"0.001", L"0", L"-1", L"", L"deep"}) {
    EXPECT_EQ(Set(depth), Lifts{}) << depth;
    EXPECT_EQ(LastCutter(), L"(none)") << depth;
  }
}

// The lift of the first is held at the largest number of steps; the second, as thousandths, becomes
// negative from 2147483648 on and does not fit 32 bits from 4294967296 on.
TEST_F(SetCutterDialog, BeyondTheLargestLiftThereIsNoSecondOne) {
  EXPECT_EQ(Set(L"2147483647").size(), 2u);
  for (const wchar_t* depth : {L"2147483648", L"4294967295", L"4294967296", L"8589934593",
                               L"18446744073709551617", L"99999999999999999999999999"}) {
    Record().position.last.z = 0;
    EXPECT_EQ(Set(depth).size(), 1u) << depth;
    EXPECT_EQ(StoredFloat(L"Engrave Settings", L"Last Cutter Set"), std::wcstof(depth, nullptr))
        << depth;
  }
}

// KEEP: only digits count the second time; a sign, a blank or a letter is none.
TEST_F(SetCutterDialog, ProbesOnceForAnythingButDigits) {
  for (const wchar_t* depth : {L"+3", L" 3", L"3 ", L"3.", L"3e0", L"0x3"}) {
    EXPECT_EQ(Set(depth), (Lifts{12000})) << depth;
  }
}

TEST_F(SetCutterDialog, LeadingZerosAreDigits) {
  EXPECT_EQ(Set(L"003"), (Lifts{12000, 12}));
}

TEST_F(SetCutterDialog, ReadsTheNumberThatTheTextStartsWith) {
  EXPECT_EQ(Set(L"0.5 in"), (Lifts{2000}));
}

TEST_F(SetCutterDialog, CancelSetsNothing) {
  OpenOn(&ShowSetCutterDialog);
  Type(IDC_SC_DEPTH, L"1.25");
  EXPECT_EQ(CloseBy(IDCANCEL), 2);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(LastCutter(), L"(none)");
}

TEST_F(SetCutterDialog, WithoutADeviceOnlyCloses) {
  OpenWith(&ShowSetCutterDialog, nullptr);
  EXPECT_EQ(Text(IDC_SC_DEPTH), L"");
  Type(IDC_SC_DEPTH, L"3");
  EXPECT_EQ(CloseBy(IDOK), 1);
  EXPECT_EQ(Sent(), "");
}

}  // namespace
}  // namespace k7
