#include "core/hpgl.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace k7host {
namespace {

// Strokes as text: "pen:x,y x,y; ..." with at most three decimals.
std::string Drawn(std::string_view file) {
  const HpglDrawing drawing = ReadHpgl(file);
  if (drawing.error) return HpglErrorText("f", *drawing.error);
  std::string text;
  for (const Stroke& stroke : drawing.strokes) {
    text += (text.empty() ? "" : "; ") + std::to_string(stroke.pen) + ":";
    for (const PlotterPoint& point : stroke.points) {
      char buffer[64];
      std::snprintf(buffer, sizeof buffer, "%g,%g", point.x, point.y);
      text += (text.back() == ':' ? "" : " ") + std::string(buffer);
    }
  }
  return text;
}

struct Case {
  const char* file;
  const char* want;
};

TEST(Hpgl, ReadsEveryCommand) {
  constexpr Case kCases[] = {
      {"", ""},
      {"IN;", ""},
      {"IN;SP1;PU10,20;PD30,40;PU;", "1:10,20 30,40"},
      {"PA5,6;PD;PA7,8;PU", "1:5,6 7,8"},
      {"PD1,1", "1:0,0 1,1"},
      {"PU10,10PD", "1:10,10"},
      {"PD;PU;", "1:0,0"},
      {"PR10,0;PD;PR0,10;PU", "1:10,0 10,10"},
      {"PR;PU5,5;PD1,0,0,1;PA;PD2,2;PU", "1:5,5 6,5 6,6 2,2"},
      {"SP3;PD1,1;PU;SP2;PD2,2", "3:0,0 1,1; 2:1,1 2,2"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Drawn(c.file), c.want) << c.file;
}

TEST(Hpgl, TakesSeveralPairsPerCommand) {
  EXPECT_EQ(Drawn("PU1,2,3,4;PD5,6,7,8,9,10"), "1:3,4 5,6 7,8 9,10");
  EXPECT_EQ(Drawn("PR;PD1,1,1,1,1,1"), "1:0,0 1,1 2,2 3,3");
}

TEST(Hpgl, SeparatorsAreOptionalAsInRealFiles) {
  constexpr const char* kSame[] = {
      "PU10,20;PD30,-40;PU;", "PU10,20PD30,-40PU",     "PU10 20 PD 30 -40",
      "PU10+20PD30-40",       "pu10,20;Pd30,-40;",     "PU\r\n10,\r\n20;\r\nPD 30 , -40\t;",
      ";;PU10,20;;PD30,-40;", "PU10.0,20.PD30,-40.00",
  };
  for (const char* file : kSame) EXPECT_EQ(Drawn(file), "1:10,20 30,-40") << file;
}

TEST(Hpgl, ReadsFractions) {
  EXPECT_EQ(Drawn("PU.5,-.25PD1.125,+2.5"), "1:0.5,-0.25 1.125,2.5");
  const HpglDrawing drawing = ReadHpgl("PD0.1234567891,0");
  EXPECT_EQ(drawing.strokes[0].points[1].x, 0.123456789);  // nine digits, the rest passed over
}

TEST(Hpgl, PenUpBetweenStrokesSeparatesThem) {
  EXPECT_EQ(Drawn("PD1,0;PU2,0;PD3,0;"), "1:0,0 1,0; 1:2,0 3,0");
  EXPECT_EQ(Drawn("PD1,0;PD2,0;"), "1:0,0 1,0 2,0");  // a second PD goes on
}

TEST(Hpgl, SelectingAPenLiftsItAndPenZeroDrawsNothing) {
  EXPECT_EQ(Drawn("PD1,0;SP2;PA2,0;PD3,0"), "1:0,0 1,0; 2:2,0 3,0");
  EXPECT_EQ(Drawn("SP0;PD1,0;PU;"), "");
  EXPECT_EQ(Drawn("PD1,0;SP;PD2,0"), "1:0,0 1,0");
  EXPECT_EQ(Drawn("SP0;PD1,0;SP255;PA2,0;PD3,0"), "255:2,0 3,0");
}

TEST(Hpgl, InitialiseStartsAfresh) {
  EXPECT_EQ(Drawn("SP4;PR5,5;PD1,1;IN;PD3,3"), "4:5,5 6,6; 1:0,0 3,3");
}

TEST(Hpgl, ErrorsNameTheirPlace) {
  constexpr Case kCases[] = {
      {"XX", "f:1:1: unknown command 'XX'"},
      {"IN;PU0,0;lt;", "f:1:10: unknown command 'lt'"},
      {"P", "f:1:1: unknown command 'P'"},
      {"P1", "f:1:1: unknown command 'P'"},
      {"IN;\n  PA1,2e3;", "f:2:8: unknown command 'e'"},
      {"IN;\nPU1,2;\nPD3;", "f:3:3: X coordinate without a Y"},
      {"PA1,2,3", "f:1:7: X coordinate without a Y"},
      {"12,13", "f:1:1: number without a command"},
      {"IN;\n\n -4", "f:3:2: number without a command"},
      {"PA1,,2", "f:1:5: number expected"},
      {"PA1,2,;", "f:1:7: number expected"},
      {"PA1,", "f:1:5: number expected"},
      {"PA,1,2", "f:1:3: unexpected character ','"},
      {"PA1,-;", "f:1:5: malformed number"},
      {"PA1,.;", "f:1:5: malformed number"},
      {"PA1,--2", "f:1:5: malformed number"},
      {"PA1.2.3,4", "f:1:3: malformed number"},
      {"PA1,2:3", "f:1:6: unexpected character ':'"},
      {"\x1b.(", "f:1:1: unexpected byte 0x1B"},
      {"PU;\xff", "f:1:4: unexpected byte 0xFF"},
      {"IN1", "f:1:3: IN takes no number"},
      {"SP1,2", "f:1:5: SP takes one pen number"},
      {"SP-1", "f:1:3: pen number is not a whole number from 0 to 255"},
      {"SP256", "f:1:3: pen number is not a whole number from 0 to 255"},
      {"SP1.5", "f:1:3: pen number is not a whole number from 0 to 255"},
      {"PA8388608,0", "f:1:3: number out of range"},
      {"PA0,-8388607.1", "f:1:5: number out of range"},
      {"PA8388607,0;PR0,0,1,0", "f:1:19: position out of range"},
      {"PR0,-8388607,0,-1", "f:1:14: position out of range"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Drawn(c.file), c.want) << c.file;
}

TEST(Hpgl, AnAbsurdlyLongNumberIsOutOfRange) {
  EXPECT_EQ(Drawn("PA" + std::string(5000, '9') + ",0"), "f:1:3: number out of range");
  EXPECT_EQ(Drawn("PD1." + std::string(5000, '9') + ",0"), "1:0,0 2,0");
}

TEST(Hpgl, AnErrorLeavesNoStrokes) {
  const HpglDrawing drawing = ReadHpgl("PD1,1;PU;PD5,5;XX");
  ASSERT_TRUE(drawing.error.has_value());
  EXPECT_TRUE(drawing.strokes.empty());
}

TEST(Hpgl, TheFirstErrorCounts) {
  EXPECT_EQ(Drawn("PA1;\nXX;"), "f:1:3: X coordinate without a Y");
}

}  // namespace
}  // namespace k7host
