#include "base/parse_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace k7 {
namespace {

TEST(ParseTypedDecimal, ReadsTheNumberThatTheTextStartsWith) {
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
  for (const auto& c : kCases) EXPECT_EQ(ParseTypedDecimal(c.text), c.want) << std::wstring{c.text};
}

TEST(ParseTypedDecimal, GivesZeroWhenThereIsNoNumber) {
  for (const wchar_t* text : {L"", L"   ", L"abc", L"-", L"+-1", L"--1", L".", L"e5", L"\x0661"}) {
    EXPECT_EQ(ParseTypedDecimal(text), 0.0f) << std::wstring{text};
  }
  EXPECT_EQ(ParseTypedDecimal(nullptr), 0.0f);
}

TEST(ParseTypedDecimal, SaturatesToInfinityAndZero) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(ParseTypedDecimal(L"1e39"), kInfinity);
  EXPECT_EQ(ParseTypedDecimal(L"1e400"), kInfinity);
  EXPECT_EQ(ParseTypedDecimal(L"-1e400"), -kInfinity);
  EXPECT_EQ(ParseTypedDecimal((std::wstring(400, L'9') + L".5").c_str()), kInfinity);
  EXPECT_EQ(ParseTypedDecimal(L"1e-400"), 0.0f);
  EXPECT_EQ(ParseTypedDecimal((L"0." + std::wstring(400, L'0') + L"1").c_str()), 0.0f);
  EXPECT_EQ(ParseTypedDecimal(L"1e999999999999999999999"), kInfinity);
  EXPECT_EQ(ParseTypedDecimal(L"0e999999999999999999999"), 0.0f);
  EXPECT_EQ(ParseTypedDecimal(L"inf"), kInfinity);
  EXPECT_TRUE(std::isnan(ParseTypedDecimal(L"nan")));
}

TEST(ParseTypedDecimal, EndsAtACharacterOutsideAscii) {
  EXPECT_EQ(ParseTypedDecimal(L"2\x00B5"), 2.0f);
  EXPECT_EQ(ParseTypedDecimal(L"\x00BD"), 0.0f);
  EXPECT_EQ(ParseTypedDecimal(std::wstring(5000, L'1').c_str()),
            std::numeric_limits<float>::infinity());
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

TEST(ParsePlainDecimal, ReadsDigitsPointAndExponentAlone) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr struct {
    const wchar_t* text;
    double want;
  } kCases[] = {
      {L" \t2.5D", 2.5}, {L"-.5e1 in", -5.0},   {L"+4", 4.0},
      {L"5.", 5.0},      {L"0x10", 0.0},        {L"inf", 0.0},
      {L"nan", 0.0},     {L"--1", 0.0},         {L"", 0.0},
      {L"D2", 0.0},      {L"1e", 1.0},          {L"1e-400", 0.0},
      {L".1e-400", 0.0}, {L"1e400", kInfinity}, {L"-1e400", -kInfinity},
  };
  for (const auto& c : kCases) EXPECT_EQ(ParsePlainDecimal(c.text), c.want) << std::wstring{c.text};
  EXPECT_EQ(ParsePlainDecimal(nullptr), 0.0);
}

TEST(ParsePlainDecimal, OfHundredsOfDigitsLooksAtTheExponentsSignOrTheFirstDigit) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::wstring nines(400, L'9');
  const std::wstring zeros(400, L'0');
  EXPECT_EQ(ParsePlainDecimal(nines.c_str()), kInfinity);
  EXPECT_EQ(ParsePlainDecimal((nines + L"e-1").c_str()), 0.0);
  EXPECT_EQ(ParsePlainDecimal((L"." + zeros + L"1").c_str()), 0.0);
  EXPECT_EQ(ParsePlainDecimal((L"." + zeros + L"1e1").c_str()), kInfinity);
}

TEST(ParseFixed, ReadsTheTextBackAsStrtodDoes) {
  for (const char* text : {"12.700000", "-0.250", "0.0100", "0.1000000", "9223372036854775807.000",
                           "157.48032", "0.000001", "-0.000"}) {
    EXPECT_EQ(ParseFixed(text), std::strtod(text, nullptr)) << text;
  }
}

TEST(ParseFixed, GivesZeroWhenThereIsNoNumber) {
  EXPECT_EQ(ParseFixed(""), 0.0);
  EXPECT_EQ(ParseFixed("X"), 0.0);
  EXPECT_EQ(ParseFixed(nullptr), 0.0);
}

TEST(ParseWhole, ReadsWhatTheControllerWrites) {
  constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
  constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
  constexpr struct {
    const char* text;
    std::int32_t want;
  } kCases[] = {
      {" 1234\r\n", 1234},
      {"1234", 1234},
      {"  \t\v\f\r\n7", 7},
      {" -12\r\n", -12},
      {"+5", 5},
      {"12.75", 12},
      {"12a34", 12},
      {"", 0},
      {" \r\n", 0},
      {"abc", 0},
      {"- 5", 0},
      {"--5", 0},
      {"-", 0},
      {"007", 7},
      {"2147483647", kMax},
      {"2147483648", kMax},
      {"99999999999999999999999999999999", kMax},
      {"-2147483648", kMin},
      {"-2147483649", kMin},
      {"-99999999999999999999999999999999", kMin},
      {"\xb2", 0},
  };
  for (const auto& c : kCases) EXPECT_EQ(ParseWhole(c.text), c.want) << c.text;
}

}  // namespace
}  // namespace k7
