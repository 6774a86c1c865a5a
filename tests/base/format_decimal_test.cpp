#include "base/format_decimal.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace k7 {
namespace {

std::wstring Text(float value, int decimals) {
  wchar_t buffer[512];
  FormatDecimal(value, buffer, 512, decimals);
  return buffer;
}

TEST(FormatDecimal, WritesTheDecimalsAskedFor) {
  constexpr struct {
    float value;
    int decimals;
    const wchar_t* want;
  } kCases[] = {
      {12.5f, 4, L"12.5000"},    {0.5f, 4, L"0.5000"},    {0.05f, 4, L"0.0500"},
      {-0.125f, 4, L"-0.1250"},  {-0.25f, 4, L"-0.2500"}, {10.0f, 0, L"10"},
      {3.0f, 0, L"3"},           {1.0f, 4, L"1.0000"},    {0.0001f, 4, L"0.0001"},
      {13000.0f, 0, L"13000"},   {-12.5f, 3, L"-12.500"}, {999.9999f, 4, L"999.9999"},
      {123.456f, 3, L"123.456"}, {0.125f, 3, L"0.125"},   {16777216.0f, 4, L"16777216.0000"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Text(c.value, c.decimals), c.want) << c.value;
}

TEST(FormatDecimal, RoundsTheExactValueTiesAwayFromZero) {
  EXPECT_EQ(Text(0.03125f, 4), L"0.0313");  // exactly between
  EXPECT_EQ(Text(-0.03125f, 4), L"-0.0313");
  EXPECT_EQ(Text(0.09375f, 4), L"0.0938");
  EXPECT_EQ(Text(2.5f, 0), L"3");
  EXPECT_EQ(Text(3.5f, 0), L"4");
  EXPECT_EQ(Text(0.00005f, 4), L"0.0000");  // the single lies just below
  EXPECT_EQ(Text(0.00015f, 4), L"0.0002");  // just above
  EXPECT_EQ(Text(1.00005f, 4), L"1.0000");  // 1.000049948...
  EXPECT_EQ(Text(333.33334f, 0), L"333");
}

TEST(FormatDecimal, CarriesThroughNines) {
  EXPECT_EQ(Text(9.99996f, 4), L"10.0000");
  EXPECT_EQ(Text(99.9996f, 3), L"100.000");
  EXPECT_EQ(Text(9.6f, 0), L"10");
  EXPECT_EQ(Text(0.09996f, 4), L"0.1000");
}

TEST(FormatDecimal, ShowsZeroAsZeroPointAndItsDecimals) {
  EXPECT_EQ(Text(0.0f, 4), L"0.0000");
  EXPECT_EQ(Text(0.0f, 3), L"0.000");
  EXPECT_EQ(Text(0.0f, 0), L"0.");
  EXPECT_EQ(Text(-0.0f, 4), L"-0.0000");
  EXPECT_EQ(Text(0.00001f, 4), L"0.0000");
  EXPECT_EQ(Text(-0.00001f, 4), L"-0.0000");
  EXPECT_EQ(Text(1e-30f, 4), L"0.0000");
}

TEST(FormatDecimal, KeepsZeroPointBeforeAValueThatRoundsUpToOne) {
  EXPECT_EQ(Text(0.99996f, 4), L"0.1.0000");
  EXPECT_EQ(Text(-0.99996f, 4), L"-0.1.0000");
  EXPECT_EQ(Text(0.99994f, 4), L"0.9999");
  EXPECT_EQ(Text(0.7f, 0), L"0.1");
  EXPECT_EQ(Text(0.5f, 0), L"0.1");
  EXPECT_EQ(Text(0.4f, 0), L"0.");
}

TEST(FormatDecimal, WritesEveryDigitOfALargeNumber) {
  EXPECT_EQ(Text(1e30f, 0), L"1000000015047466219876688855040");
  EXPECT_EQ(Text(8e30f, 1), L"8000000120379729759013510840320.0");
}

TEST(FormatDecimal, WritesANumberThatIsNotFiniteAsZero) {
  EXPECT_EQ(Text(std::numeric_limits<float>::infinity(), 4), L"0.0000");
  EXPECT_EQ(Text(-std::numeric_limits<float>::infinity(), 4), L"0.0000");
  EXPECT_EQ(Text(std::numeric_limits<float>::quiet_NaN(), 4), L"0.0000");
}

TEST(FormatDecimal, StaysWithinTheCapacityAndTerminates) {
  for (int capacity = 1; capacity <= 8; ++capacity) {
    wchar_t buffer[10];
    for (wchar_t& c : buffer) c = L'#';
    FormatDecimal(12.5f, buffer, capacity, 4);
    EXPECT_EQ(std::wstring{buffer},
              std::wstring{L"12.5000"}.substr(0, static_cast<std::size_t>(capacity - 1)));
    EXPECT_EQ(buffer[capacity], L'#');
  }
}

TEST(FormatDecimal, LeavesABufferWithoutCapacityAlone) {
  wchar_t buffer[2] = {L'a', L'b'};
  FormatDecimal(1.0f, buffer, 0, 4);
  FormatDecimal(1.0f, buffer, -5, 4);
  FormatDecimal(1.0f, nullptr, 10, 4);
  EXPECT_EQ(buffer[0], L'a');
  EXPECT_EQ(buffer[1], L'b');
}

TEST(FormatDecimal, TakesAnyCountOfDecimals) {
  EXPECT_EQ(Text(1.5f, -3), L"2");
  EXPECT_EQ(Text(0.5f, 149).size(), 151u);
  EXPECT_EQ(Text(0.5f, 1000).size(), 151u);
  EXPECT_EQ(Text(std::numeric_limits<float>::denorm_min(), 1000).back(), L'5');
}

// KEEP: installed drivers end here as well; nothing shorter may.
TEST(FormatDecimalDeathTest, EndsTheProcessAtThirtyTwoDigitsBeforeThePoint) {
  EXPECT_EQ(Text(9.9e30f, 0).size(), 31u);
  EXPECT_DEATH(Text(1.1e31f, 0), "");
  EXPECT_DEATH(Text(-3e38f, 4), "");
}

}  // namespace
}  // namespace k7
