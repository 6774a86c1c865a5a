#include "common/nearest_word.h"

#include <gtest/gtest.h>

namespace k7sim {
namespace {

TEST(NearestWord, IsTheOneWithTheFewestLettersToChange) {
  const std::vector<std::string> known = {"drop", "delay", "duplicate"};
  EXPECT_EQ(NearestWord("dorp", known), "drop");
  EXPECT_EQ(NearestWord("dela", known), "delay");
  EXPECT_EQ(NearestWord("dup", {"duplicate", "dum"}), "dum");
  EXPECT_EQ(NearestWord("xyzzy", known), "");
  EXPECT_EQ(NearestWord("drop", {}), "");
  EXPECT_EQ(DidYouMean("dorp", known), "; did you mean drop?");
}

}  // namespace
}  // namespace k7sim
