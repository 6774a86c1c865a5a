#include "base/number_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

#include "base/parse_number.h"

namespace k7 {
namespace {

struct Case {
  double value;
  int decimals;
  const char* want;
};

void ExpectTexts(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    EXPECT_STREQ(FormatFixed(c.value, c.decimals).c_str(), c.want)
        << c.value << " with " << c.decimals;
  }
}

TEST(FormatFixed, WritesSignWholePartAndAllDecimals) {
  ExpectTexts({{2.5, 6, "2.500000"},
               {-0.25, 3, "-0.250"},
               {0.0, 6, "0.000000"},
               {-0.0, 3, "0.000"},
               {1524.0, 3, "1524.000"},
               {25.4, 6, "25.400000"},
               {-12.7, 6, "-12.700000"},
               {0.012, 3, "0.012"},
               {0.002, 3, "0.002"},
               {0.25, 1, "0.3"},
               {123456789.5, 9, "123456789.500000000"}});
}

TEST(FormatFixed, RoundsHalfUpInTheLastDecimal) {
  ExpectTexts({{0.0005, 3, "0.000"},  // rounds up to 1, and 1 is written as zeros
               {0.0015, 3, "0.002"},
               {0.0078125, 6, "0.007813"},
               {0.0078124, 6, "0.007812"},
               {157.480316, 5, "157.48032"}});
}

TEST(FormatFixed, AFractionThatIsAPowerOfTenGetsOneZeroTooMany) {
  ExpectTexts({{0.1, 3, "0.0100"},
               {0.01, 3, "0.0010"},
               {0.1, 6, "0.0100000"},
               {7.01, 6, "7.0010000"},
               {7.00001, 6, "7.0000010"},
               {-0.1, 3, "-0.0100"}});
}

TEST(FormatFixed, AFractionOfOneIsAllZeros) {
  ExpectTexts({{0.001, 3, "0.000"}, {3.000001, 6, "3.000000"}, {5.1, 1, "5.0"}});
}

TEST(FormatFixed, AFractionThatRoundsUpToAWholeIsAppendedWhole) {
  ExpectTexts({{0.9999996, 6, "0.1000000"}, {1.9996, 3, "1.1000"}, {0.96, 1, "0.10"}});
}

TEST(FormatFixed, TakesASinglePrecisionNumberAsItIs) {
  // The nearest single to 0.1 lies above it; the digits that are written do not tell.
  EXPECT_STREQ(FormatFixed(static_cast<double>(0.1f), 6).c_str(), "0.0100000");
  EXPECT_STREQ(FormatFixed(static_cast<double>(4000.0f / 25.4f), 5).c_str(), "157.48032");
}

TEST(FormatFixed, ANumberThatIsNotFiniteIsWrittenAsZero) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  ExpectTexts({{kInfinity, 6, "0.000000"},
               {-kInfinity, 3, "0.000"},
               {std::numeric_limits<double>::quiet_NaN(), 5, "0.00000"}});
}

TEST(FormatFixed, HoldsANumberBeyondTheRangeAtItsEnd) {
  ExpectTexts({{1e300, 9, "9223372036854775807.000000000"},
               {-1e300, 6, "-9223372036854775807.000000"},
               {9223372036854775808.0, 3, "9223372036854775807.000"},
               {kLargestFixed, 3, "9223372036854774784.000"}});
}

TEST(FormatFixed, TakesADecimalCountOutsideItsRangeToTheNearestEnd) {
  ExpectTexts({{0.25, 0, "0.3"}, {0.25, -7, "0.3"}, {0.25, 40, "0.250000000"}});
}

TEST(NumberText, KeepsThePointWhateverTheLocale) {
  const std::string before{std::setlocale(LC_ALL, nullptr)};
  bool found = false;
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany.1252", "de-DE"}) {
    found = found || std::setlocale(LC_ALL, name) != nullptr;
  }
  EXPECT_STREQ(FormatFixed(2.5, 6).c_str(), "2.500000");
  EXPECT_EQ(ParseFixed("2.500000"), 2.5);
  std::setlocale(LC_ALL, before.c_str());
  if (!found) GTEST_SKIP() << "no locale with a decimal comma is installed";
}

}  // namespace
}  // namespace k7
