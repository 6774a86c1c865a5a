#include "common/number_list.h"

#include <gtest/gtest.h>

namespace k7sim {
namespace {

TEST(NumberList, HoldsNumbersBetweenCommas) {
  EXPECT_EQ(ParseNumbers("1,2.5,-3"), (std::vector<double>{1, 2.5, -3}));
  EXPECT_EQ(ParseNumbers(" 1 , 2 "), (std::vector<double>{1, 2}));
}

TEST(NumberList, IsNoneWhenItHoldsAnythingElse) {
  for (const char* text : {"", ",", "1,", ",1", "1,,2", "1 2", "x", "1x", "nan", "inf", "1e999"}) {
    EXPECT_FALSE(ParseNumbers(text)) << text;
  }
}

TEST(NumberList, OfThreeIsLeftAloneByAnyOtherNumber) {
  std::array<double, 3> out = {7, 8, 9};
  EXPECT_FALSE(ParseTriple("1,2", out));
  EXPECT_FALSE(ParseTriple("1,2,3,4", out));
  EXPECT_EQ(out, (std::array<double, 3>{7, 8, 9}));
  EXPECT_TRUE(ParseTriple("1,2,3", out));
  EXPECT_EQ(out, (std::array<double, 3>{1, 2, 3}));
}

}  // namespace
}  // namespace k7sim
