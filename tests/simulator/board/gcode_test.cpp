#include "board/gcode.h"

#include <gtest/gtest.h>

namespace k7sim {
namespace {

TEST(Gcode, TakesALineApart) {
  const auto codes = ParseGcodeLine("G0 X12.700000 Y-25.400000");
  ASSERT_EQ(codes.size(), 1u);
  EXPECT_TRUE(codes[0].Is('G', 0));
  EXPECT_DOUBLE_EQ(*codes[0].Word('X'), 12.7);
  EXPECT_DOUBLE_EQ(*codes[0].Word('Y'), -25.4);
  EXPECT_FALSE(codes[0].Has('Z'));
}

TEST(Gcode, NeedsNoBlanksBetweenWords) {
  const auto codes = ParseGcodeLine("G0F1524.000");
  ASSERT_EQ(codes.size(), 1u);
  EXPECT_DOUBLE_EQ(*codes[0].Word('F'), 1524);
  EXPECT_DOUBLE_EQ(*ParseGcodeLine("M92 X157.48032")[0].Word('X'), 157.48032);
}

TEST(Gcode, KnowsSeveralCommandsInALine) {
  const auto codes = ParseGcodeLine("g21 g90 ; rest is a comment G1");
  ASSERT_EQ(codes.size(), 2u);
  EXPECT_TRUE(codes[0].Is('G', 21));
  EXPECT_TRUE(codes[1].Is('G', 90));
  EXPECT_EQ(ParseGcodeLine("G0 (not X9) X1")[0].words.size(), 1u);
}

TEST(Gcode, TellsGcodeFromWords) {
  EXPECT_TRUE(LooksLikeGcode("G0"));
  EXPECT_TRUE(LooksLikeGcode("m119"));
  EXPECT_FALSE(LooksLikeGcode("Material"));
  EXPECT_FALSE(LooksLikeGcode("TableIsHomed"));
  EXPECT_FALSE(LooksLikeGcode("G"));
}

TEST(Gcode, SurvivesNumbersThatAreNone) {
  EXPECT_DOUBLE_EQ(*ParseGcodeLine("G0 X--1")[0].Word('X'), 0);
  EXPECT_DOUBLE_EQ(*ParseGcodeLine("G0 X1e5")[0].Word('X'), 1);
  EXPECT_DOUBLE_EQ(*ParseGcodeLine("G0 X" + std::string(400, '9'))[0].Word('X'), 1e9);
  EXPECT_EQ(ParseGcodeLine("M" + std::string(400, '9'))[0].number, 1'000'000'000);
  EXPECT_TRUE(ParseGcodeLine("").empty());
}

}  // namespace
}  // namespace k7sim
