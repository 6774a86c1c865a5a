// An object whose record could not be made answers every operation and touches nothing.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "module/smoothieboard.h"

namespace k7 {
namespace {

// What an operation could write to; compared whole after each call.
struct Outputs {
  wchar_t text[8] = L"??????";
  std::int32_t x = 71, y = 72, z = 73;
  std::uint8_t a = 11, b = 12, c = 13, d = 14;
};

constexpr std::uint32_t kTriples[] = {0, 0, 1, 4000, 0, 2};

void Ignore(std::uint32_t, std::uint64_t) {}

template <typename T>
double Number(T value) {
  if constexpr (std::is_pointer_v<T>) {
    return value == nullptr ? 0.0 : 1.0;
  } else {
    return static_cast<double>(value);
  }
}

struct Row {
  int slot;
  double (*call)(IEngraver& d, Outputs& o);
  double want;  // 0 for an operation without result
};

// clang-format off
constexpr Row kRows[] = {
    {0, [](IEngraver& d, Outputs&) { return Number(d.GetInterfaceVersion()); }, 0},
    {1, [](IEngraver& d, Outputs&) { return Number(d.GetTableWidthSteps()); }, 0},
    {2, [](IEngraver& d, Outputs&) { return Number(d.GetTableHeightSteps()); }, 0},
    {3, [](IEngraver& d, Outputs&) { d.Reserved3(); return 0.0; }, 0},
    {4, [](IEngraver& d, Outputs&) { return Number(d.BeginJob()); }, 1},
    {5, [](IEngraver& d, Outputs&) { d.Reserved5(); return 0.0; }, 0},
    {6, [](IEngraver& d, Outputs&) { return Number(d.MoveTo(1, 1)); }, 0},
    {7, [](IEngraver& d, Outputs&) { return Number(d.EngraveTo(1, 1)); }, 0},
    {8, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero8()); }, 0},
    {9, [](IEngraver& d, Outputs&) { d.EndJob(); return 0.0; }, 0},
    {10, [](IEngraver& d, Outputs&) { d.Reserved10(); return 0.0; }, 0},
    {11, [](IEngraver& d, Outputs&) { d.Reserved11(); return 0.0; }, 0},
    {12, [](IEngraver& d, Outputs&) { d.SetHostFlag(1); return 0.0; }, 0},
    {13, [](IEngraver& d, Outputs&) { return Number(d.GetHostFlag()); }, 0},
    {14, [](IEngraver& d, Outputs&) { return Number(d.ReturnFalse14()); }, 0},
    {15, [](IEngraver& d, Outputs&) { d.Reserved15(); return 0.0; }, 0},
    {16, [](IEngraver& d, Outputs&) { d.Reserved16(); return 0.0; }, 0},
    {17, [](IEngraver& d, Outputs&) { d.Reserved17(); return 0.0; }, 0},
    {18, [](IEngraver& d, Outputs&) { return Number(d.ReturnFalse18()); }, 0},
    {19, [](IEngraver& d, Outputs&) { d.Reserved19(); return 0.0; }, 0},
    {20, [](IEngraver& d, Outputs&) { d.Reserved20(); return 0.0; }, 0},
    {21, [](IEngraver& d, Outputs&) { d.Reserved21(); return 0.0; }, 0},
    {22, [](IEngraver& d, Outputs&) { d.Reserved22(); return 0.0; }, 0},
    {23, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero23()); }, 0},
    {24, [](IEngraver& d, Outputs&) { d.Reserved24(); return 0.0; }, 0},
    {25, [](IEngraver& d, Outputs&) { return Number(d.ReturnFalse25()); }, 0},
    {26, [](IEngraver& d, Outputs&) { return Number(d.ReturnOne26()); }, 1},
    {27, [](IEngraver& d, Outputs&) { return Number(d.ReturnTrue27()); }, 1},
    {28, [](IEngraver& d, Outputs&) { d.Reserved28(); return 0.0; }, 0},
    {29, [](IEngraver& d, Outputs&) { d.Reserved29(); return 0.0; }, 0},
    {30, [](IEngraver& d, Outputs&) { d.Reserved30(); return 0.0; }, 0},
    {31, [](IEngraver& d, Outputs&) { d.Reserved31(); return 0.0; }, 0},
    {32, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero32()); }, 0},
    {33, [](IEngraver& d, Outputs&) { return Number(d.LowerCutter()); }, 0},
    {34, [](IEngraver& d, Outputs&) { return Number(d.LowerCutterContinue()); }, 0},
    {35, [](IEngraver& d, Outputs&) { d.Reserved35(); return 0.0; }, 0},
    {36, [](IEngraver& d, Outputs& o) { return Number(d.QueryControllerId(o.text, 8)); }, 24},
    {37, [](IEngraver& d, Outputs& o) { return Number(d.GetFriendlyName(o.text, 8)); }, 8},
    {38, [](IEngraver& d, Outputs&) { d.SetFriendlyName(L"x"); return 0.0; }, 0},
    {39, [](IEngraver& d, Outputs&) { return Number(d.CheckAlive()); }, 0},
    {40, [](IEngraver& d, Outputs& o) { return Number(d.ShowSettingsDialog(&o, 1, 1, 1, 1)); }, 2},
    {41, [](IEngraver& d, Outputs& o) { d.SetConnectNotify(&o, 1); return 0.0; }, 0},
    {42, [](IEngraver& d, Outputs&) { return Number(d.GetTableWidth()); }, 0},
    {43, [](IEngraver& d, Outputs&) { return Number(d.GetTableHeight()); }, 0},
    {44, [](IEngraver& d, Outputs&) { return Number(d.GetXStepsPerUnit()); }, 0},
    {45, [](IEngraver& d, Outputs&) { return Number(d.GetYStepsPerUnit()); }, 0},
    {46, [](IEngraver& d, Outputs&) { return Number(d.GetZStepsPerInch()); }, 0},
    {47, [](IEngraver& d, Outputs&) { d.EnableMotors(1); return 0.0; }, 0},
    {48, [](IEngraver& d, Outputs& o) { d.SetNotifyWindow(&o, 1, 1, 1, 1, 1, 1); return 0.0; }, 0},
    {49, [](IEngraver& d, Outputs&) { d.SetNotifyCallback(&Ignore, 1, 1, 1, 1); return 0.0; }, 0},
    {50, [](IEngraver& d, Outputs&) { d.SyncCurrentLocation(1, 1, 1); return 0.0; }, 0},
    {51, [](IEngraver& d, Outputs&) { d.GoToAsJob(1, 1, 1); return 0.0; }, 0},
    {52, [](IEngraver& d, Outputs& o) { d.GetCurrentPosition(&o.x, &o.y); return 0.0; }, 0},
    {53, [](IEngraver& d, Outputs&) { d.HomeCutter(); return 0.0; }, 0},
    {54, [](IEngraver& d, Outputs&) { d.StartJog(1, 1, 1, 1); return 0.0; }, 0},
    {55, [](IEngraver& d, Outputs&) { d.SetPlungeHold(1); return 0.0; }, 0},
    {56, [](IEngraver& d, Outputs&) { return Number(d.HomeTable()); }, 0},
    {57, [](IEngraver& d, Outputs& o) { d.GetMachinePosition(&o.x, &o.y, &o.z); return 0.0; }, 0},
    {58, [](IEngraver& d, Outputs& o) { d.GetTableHome(&o.x, &o.y, &o.z); return 0.0; }, 0},
    {59, [](IEngraver& d, Outputs&) { return Number(d.FindCutterHome()); }, 0},
    {60, [](IEngraver& d, Outputs&) { d.Reserved60(); return 0.0; }, 0},
    {61, [](IEngraver& d, Outputs&) { d.SetSpindle(1); return 0.0; }, 0},
    {62, [](IEngraver& d, Outputs& o) { d.ReadSwitches(&o.a, &o.b, &o.c, &o.d); return 0.0; }, 0},
    {63, [](IEngraver& d, Outputs& o) { return Number(d.StartSpindleRamp(1, &o, 1, 1)); }, 0},
    {64, [](IEngraver& d, Outputs&) { return Number(d.GetSpindleValue()); }, 0},
    {65, [](IEngraver& d, Outputs&) { return Number(d.GetScissors()); }, -10},
    {66, [](IEngraver& d, Outputs&) { return Number(d.GetEngraveByColor()); }, 0},
    {67, [](IEngraver& d, Outputs&) { return Number(d.HasSpindle()); }, 0},
    {68, [](IEngraver& d, Outputs&) { d.SetColorTableIndex(1); return 0.0; }, 0},
    {69, [](IEngraver& d, Outputs&) { return Number(d.GetColorTableIndex()); }, 0},
    {70, [](IEngraver& d, Outputs& o) { return Number(d.EnsureTableHome(&o)); }, 0},
    {71, [](IEngraver& d, Outputs&) { return Number(d.HasBeadInsertTool()); }, 0},
    {72, [](IEngraver& d, Outputs&) { return Number(d.GetBeadToolOffsetX()); }, 0},
    {73, [](IEngraver& d, Outputs&) { return Number(d.GetBeadToolOffsetY()); }, 0},
    {74, [](IEngraver& d, Outputs&) { return Number(d.SetBeadToolOffset(1, 1)); }, 0},
    {75, [](IEngraver& d, Outputs&) { return Number(d.MoveBeadToolTo(1, 1)); }, 0},
    {76, [](IEngraver& d, Outputs& o) { d.AttachLink(&o, 1, L"x"); return 0.0; }, 0},
    {77, [](IEngraver& d, Outputs&) { return Number(d.IsConnected()); }, 0},
    {78, [](IEngraver& d, Outputs&) { d.ResetControllerId(); return 0.0; }, 0},
    {79, [](IEngraver& d, Outputs&) { d.SendLine("M17\n"); return 0.0; }, 0},
    {80, [](IEngraver& d, Outputs&) { d.LoadSettings(); return 0.0; }, 0},
    {81, [](IEngraver& d, Outputs& o) { return Number(d.GetSettingsFilePath(o.text, 8)); }, 0},
    {82, [](IEngraver& d, Outputs& o) { return Number(d.GetCameraId(o.text, 8)); }, 0},
    {83, [](IEngraver& d, Outputs&) { d.SetCameraId(L"x"); return 0.0; }, 0},
    {84, [](IEngraver& d, Outputs&) { return Number(d.ReturnOne84()); }, 1},
    {85, [](IEngraver& d, Outputs&) { return Number(d.GetPassCount()); }, 1},
    {86, [](IEngraver& d, Outputs& o) { return Number(d.StartPass(1, 1, 1, o.text, 8)); }, 0},
    {87, [](IEngraver& d, Outputs&) { return Number(d.IsDiodePointerFitted()); }, 0},
    {88, [](IEngraver& d, Outputs&) { return Number(d.GetDiodeOffsetX()); }, 0},
    {89, [](IEngraver& d, Outputs&) { return Number(d.GetDiodeOffsetY()); }, 0},
    {90, [](IEngraver& d, Outputs&) { return Number(d.SetDiodeOffset(1, 1)); }, 0},
    {91, [](IEngraver& d, Outputs&) { return Number(d.MoveDiodeTo(1, 1)); }, 0},
    {92, [](IEngraver& d, Outputs& o) { return Number(d.GetMaterialLibraryFolder(o.text, 8)); }, 0},
    {93, [](IEngraver& d, Outputs& o) { return Number(d.GetTempHomeLibraryFolder(o.text, 8)); }, 0},
    {94, [](IEngraver& d, Outputs&) { return Number(d.GetCurrentPass()); }, 0},
    {95, [](IEngraver& d, Outputs&) { return Number(d.GetRoundMode()); }, 0},
    {96, [](IEngraver& d, Outputs&) { d.SetRoundMode(1); return 0.0; }, 0},
    {97, [](IEngraver& d, Outputs&) { d.SetGridMode(1); return 0.0; }, 0},
    {98, [](IEngraver& d, Outputs&) { return Number(d.GetGridMode()); }, 0},
    {99, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero99()); }, 0},
    {100, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero100()); }, 0},
    {101, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero101()); }, 0},
    {102, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero102()); }, 0},
    {103, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero103()); }, 0},
    {104, [](IEngraver& d, Outputs&) { return Number(d.ReturnZero104()); }, 0},
    {105, [](IEngraver& d, Outputs&) { d.Reserved105(); return 0.0; }, 0},
    {106, [](IEngraver& d, Outputs&) { return Number(d.ReturnTrue106()); }, 1},
    {107, [](IEngraver& d, Outputs&) { d.Reserved107(); return 0.0; }, 0},
    {108, [](IEngraver& d, Outputs&) { return Number(d.ReturnFalse108()); }, 0},
    {109, [](IEngraver& d, Outputs&) { d.Reserved109(); return 0.0; }, 0},
    {110, [](IEngraver& d, Outputs&) { return Number(d.ReturnTrue110()); }, 1},
    {111, [](IEngraver& d, Outputs&) { d.Reserved111(); return 0.0; }, 0},
    {112, [](IEngraver& d, Outputs&) { return Number(d.GetRecordReserved()); }, 0},
    {113, [](IEngraver& d, Outputs&) { d.Reserved113(); return 0.0; }, 0},
    {114, [](IEngraver& d, Outputs&) { return Number(d.IsRoundModeActive()); }, 0},
    {115, [](IEngraver& d, Outputs&) { d.SetHostText(L"x"); return 0.0; }, 0},
    {116, [](IEngraver& d, Outputs& o) { return Number(d.GetHostText(o.text, 8)); }, 8},
    {117, [](IEngraver& d, Outputs&) { return Number(d.TravelTo(1, 1)); }, 0},
    {118, [](IEngraver& d, Outputs&) { return Number(d.IsAirZ()); }, 0},
    {119, [](IEngraver& d, Outputs&) { return Number(d.EstimateJobTime(kTriples, 2)); }, 0},
    {120, [](IEngraver& d, Outputs&) { d.SetReaderAlive(1); return 0.0; }, 0},
    {121, [](IEngraver& d, Outputs&) { return Number(d.GetReaderAlive()); }, 0},
    {122, [](IEngraver& d, Outputs&) { return Number(d.GetLinkType()); }, 0},
    {123, [](IEngraver& d, Outputs& o) { return Number(d.GetPortName(o.text, 8)); }, 0},
    {124, [](IEngraver& d, Outputs&) { return Number(d.GetLinkHandle()); }, 0},
};
// clang-format on

TEST(Operations, GiveTheirNeutralValuesWithoutARecord) {
  Smoothieboard device{nullptr};
  int next = 0;
  for (const Row& row : kRows) {
    ASSERT_EQ(row.slot, next++);
    Outputs outputs;
    EXPECT_EQ(row.call(device, outputs), row.want) << "slot " << row.slot;
    const Outputs untouched;
    EXPECT_STREQ(outputs.text, untouched.text) << "slot " << row.slot;
    EXPECT_EQ(outputs.x, untouched.x) << "slot " << row.slot;
    EXPECT_EQ(outputs.y, untouched.y) << "slot " << row.slot;
    EXPECT_EQ(outputs.z, untouched.z) << "slot " << row.slot;
    EXPECT_EQ(outputs.a + outputs.b + outputs.c + outputs.d, 50) << "slot " << row.slot;
  }
  EXPECT_EQ(next, kOperationCount - 1);  // DeleteSelf: the next test
}

TEST(Operations, DeleteSelfWithoutARecordReturnsTheAddress) {
  auto* const device = new Smoothieboard{nullptr};
  EXPECT_EQ(device->DeleteSelf(1), static_cast<void*>(device));
}

// The placeholders answer the same with a record.
TEST(Operations, PlaceholdersAnswerTheSameWithARecord) {
  constexpr int kPlaceholders[] = {3,   5,   8,   10,  11,  14,  15,  16,  17,  18,  19,
                                   20,  21,  22,  23,  24,  25,  26,  27,  28,  29,  30,
                                   31,  32,  35,  60,  84,  99,  100, 101, 102, 103, 104,
                                   105, 106, 107, 108, 109, 110, 111, 113};
  Smoothieboard device{std::make_unique<DeviceState>()};
  for (const int slot : kPlaceholders) {
    Outputs outputs;
    EXPECT_EQ(kRows[slot].call(device, outputs), kRows[slot].want) << "slot " << slot;
  }
  for (const int one : {26, 27, 84, 106, 110}) EXPECT_EQ(kRows[one].want, 1.0);
  for (const int zero : {8, 14, 18, 23, 25, 32, 99, 100, 101, 102, 103, 104, 108}) {
    EXPECT_EQ(kRows[zero].want, 0.0);
  }
}

}  // namespace
}  // namespace k7
