#include "base/typed_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace k7 {
namespace {

TEST(ParseDecimal, ReadsTheNumberThatTheTextStartsWith) {
  constexpr struct {
    const wchar_t* text;
    float want;
  } kCases[] = {
      {L"1.5", 1.5f},       {L"  2", 2.0f},   {L"\t\n 0.25in", 0.25f},
      {L"-3.5", -3.5f},     {L"+4", 4.0f},    {L".5", 0.5f},
      {L"5.", 5.0f},        {L"1e2", 100.0f}, {L"1E-2x", 0.01f},
      {L"1e", 1.0f},        {L"1.2.3", 1.2f}, {L"1,5", 1.0f},
      {L"0x10", 16.0f},     {L"0x", 0.0f},    {L"0xg", 0.0f},
      {L"-0x1.8p1", -3.0f}, {L"0.1", 0.1f},   {L"16777217", 16777216.0f},
  };
  for (const auto& c : kCases) EXPECT_EQ(ParseDecimal(c.text), c.want) << std::wstring{c.text};
}

TEST(ParseDecimal, GivesZeroWhenThereIsNoNumber) {
  for (const wchar_t* text : {L"", L"   ", L"abc", L"-", L"+-1", L"--1", L".", L"e5", L"\x0661"}) {
    EXPECT_EQ(ParseDecimal(text), 0.0f) << std::wstring{text};
  }
  EXPECT_EQ(ParseDecimal(nullptr), 0.0f);
}

TEST(ParseDecimal, SaturatesToInfinityAndZero) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(ParseDecimal(L"1e39"), kInfinity);
  EXPECT_EQ(ParseDecimal(L"1e400"), kInfinity);
  EXPECT_EQ(ParseDecimal(L"-1e400"), -kInfinity);
  EXPECT_EQ(ParseDecimal((std::wstring(400, L'9') + L".5").c_str()), kInfinity);
  EXPECT_EQ(ParseDecimal(L"1e-400"), 0.0f);
  EXPECT_EQ(ParseDecimal((L"0." + std::wstring(400, L'0') + L"1").c_str()), 0.0f);
  EXPECT_EQ(ParseDecimal(L"1e999999999999999999999"), kInfinity);
  EXPECT_EQ(ParseDecimal(L"0e999999999999999999999"), 0.0f);
  EXPECT_EQ(ParseDecimal(L"inf"), kInfinity);
  EXPECT_TRUE(std::isnan(ParseDecimal(L"nan")));
}

TEST(ParseDecimal, EndsAtACharacterOutsideAscii) {
  EXPECT_EQ(ParseDecimal(L"2\x00B5"), 2.0f);
  EXPECT_EQ(ParseDecimal(L"\x00BD"), 0.0f);
  EXPECT_EQ(ParseDecimal(std::wstring(5000, L'1').c_str()), std::numeric_limits<float>::infinity());
}

TEST(ParseWhole, ReadsTheWholeNumberThatTheTextStartsWith) {
  constexpr struct {
    const wchar_t* text;
    std::int32_t want;
  } kCases[] = {
      {L"13000", 13000},
      {L" 12.9", 12},
      {L"-7x", -7},
      {L"+7", 7},
      {L"abc", 0},
      {L"", 0},
      {L"0x10", 0},
      {L"1e3", 1},
      {L"-", 0},
      {L"2147483647", 2147483647},
      {L"99999999999999999999999", 2147483647},
      {L"-99999999999", -2147483647 - 1},
  };
  for (const auto& c : kCases) EXPECT_EQ(ParseWhole(c.text), c.want) << std::wstring{c.text};
  EXPECT_EQ(ParseWhole(nullptr), 0);
}

}  // namespace
}  // namespace k7
