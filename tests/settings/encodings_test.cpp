#include "settings/encodings.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace k7 {
namespace {

TEST(FloatBits, AreThePatternOfTheNumberBothWays) {
  constexpr struct {
    float value;
    std::int32_t bits;
  } kCases[] = {
      {0.0f, 0},           {0.0625f, 1031798784}, {0.125f, 1040187392},
      {0.5f, 1056964608},  {1.0f, 1065353216},    {3.25f, 1078984704},
      {10.0f, 1092616192}, {20.0f, 1101004800},   {-1.0f, -1082130432},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(BitsOfFloat(c.value), c.bits);
    EXPECT_EQ(FloatOfBits(c.bits), c.value);
  }
}

TEST(FloatBits, OfANegativeNumberAreANegativeNumber) {
  EXPECT_LT(BitsOfFloat(-0.125f), 0);
}

TEST(TextOfInt, IsSignedDecimal) {
  EXPECT_STREQ(TextOfInt(0).c_str(), L"0");
  EXPECT_STREQ(TextOfInt(1040187392).c_str(), L"1040187392");
  EXPECT_STREQ(TextOfInt(-1082130432).c_str(), L"-1082130432");
  EXPECT_STREQ(TextOfInt(INT32_MIN).c_str(), L"-2147483648");
  EXPECT_STREQ(TextOfInt(INT32_MAX).c_str(), L"2147483647");
}

TEST(ParseCircumference, TakesTheNumberThatTheTextBeginsWith) {
  constexpr struct {
    const wchar_t* text;
    float want;
  } kCases[] = {
      {L"", 0.0f},       {L"2", 2.0f},      {L"9.42", 9.42f},    {L"0.125", 0.125f},
      {L".5", 0.5f},     {L"5.", 5.0f},     {L"  \t1.5", 1.5f},  {L"+1.5", 1.5f},
      {L"-1.5", -1.5f},  {L"1.5 in", 1.5f}, {L"1e3", 1000.0f},   {L"1e", 1.0f},
      {L"1,5", 1.0f},    {L"abc", 0.0f},    {L"-", 0.0f},        {L"+-1", 0.0f},
      {L"--1", 0.0f},    {L"1.2.3", 1.2f},  {L"0x10", 0.0f},     {L"\u0661", 0.0f},
      {L"1e-400", 0.0f}, {L"INF", 0.0f},    {L"infinity", 0.0f}, {L"nan", 0.0f},
  };
  for (const auto& c : kCases) EXPECT_EQ(ParseCircumference(c.text), c.want) << c.text;
}

TEST(ParseCircumference, IsADiameterWhenTheTextHoldsALetterDAnywhere) {
  EXPECT_EQ(ParseCircumference(L"2D"), 6.28318f);
  EXPECT_EQ(ParseCircumference(L"2d"), 6.28318f);
  EXPECT_EQ(ParseCircumference(L"2 inch wide"), 2.0f * 3.14159f);
}

// A second letter does not multiply again.
TEST(ParseCircumference, MultipliesOnceHoweverManyLettersThereAre) {
  EXPECT_EQ(ParseCircumference(L"1dD"), 3.14159f);
}

TEST(ParseCircumference, OfNoNumberIsZero) {
  EXPECT_EQ(ParseCircumference(L""), 0.0f);
  EXPECT_EQ(ParseCircumference(L"D"), 0.0f);
  EXPECT_EQ(ParseCircumference(nullptr), 0.0f);
}

TEST(ParseCircumference, BeyondTheRangeIsInfiniteOrZeroNotUndefined) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(ParseCircumference(L"1e300"), kInfinity);
  EXPECT_EQ(ParseCircumference(L"-1e999"), -kInfinity);
  EXPECT_EQ(ParseCircumference(std::wstring(400, L'9').c_str()), kInfinity);
  EXPECT_EQ(ParseCircumference((L"0." + std::wstring(400, L'0') + L"1").c_str()), 0.0f);
}

}  // namespace
}  // namespace k7
