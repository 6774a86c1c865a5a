#include "drawing/hpgl/hpgl.h"

#include <gtest/gtest.h>

#include <string>

#include "drawing_text.h"

namespace k7host {
namespace {

std::string Drawn(std::string_view file) {
  return DrawingText(ReadHpgl(file));
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
  const Drawing drawing = ReadHpgl("PD0.1234567891,0");
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
      {"IN;PU0,0;lx;", "f:1:10: unknown command 'lx'"},
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
      {"\x1b(", "f:1:1: unexpected byte 0x1B"},
      {"\x1b", "f:1:1: unexpected byte 0x1B"},
      {"\x1b.a", "f:1:1: unexpected byte 0x1B"},
      {"\x1b%0", "f:1:1: unexpected byte 0x1B"},
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
  const Drawing drawing = ReadHpgl("PD1,1;PU;PD5,5;XX");
  ASSERT_TRUE(drawing.error.has_value());
  EXPECT_TRUE(drawing.strokes.empty());
}

TEST(Hpgl, TheFirstErrorCounts) {
  EXPECT_EQ(Drawn("PA1;\nXX;"), "f:1:3: X coordinate without a Y");
}

TEST(Hpgl, CommandsThatDoNotMoveThePenAreToldOnceEach) {
  const Drawing drawing = ReadHpgl("IN;VS10;\nPD1,1;VS 20,1;FS;BP1,\"a;b\",5,1;PD2,2");
  ASSERT_FALSE(drawing.error);
  ASSERT_EQ(drawing.strokes.size(), 1u);
  ASSERT_EQ(drawing.notices.size(), 3u);
  EXPECT_EQ(NoticeText(drawing.notices[0]),
            "1:4: VS passed over (2 times): speeds and forces come from the engrave settings");
  EXPECT_EQ(NoticeText(drawing.notices[1]),
            "2:15: FS passed over: speeds and forces come from the engrave settings");
  EXPECT_EQ(drawing.notices[2].what, "BP");
}

TEST(Hpgl, CodesThatSwitchAPlotterOnAreToldAndPassedOver) {
  EXPECT_EQ(Drawn("\x1b.(\x1b.I81;;17:\x1b.N;19:PD1,1\x03\x1b.)"), "1:0,0 1,1");
  EXPECT_EQ(Drawn("\x1b%-12345X@PJL SET X=\"PD5,5\"\r\n\x1b"
                  "E\x1b%1BPD1,1;\x1b%0A"),
            "1:0,0 1,1");
  EXPECT_EQ(Drawn("\xef\xbb\xbfPD1,1"), "1:0,0 1,1");
  EXPECT_EQ(Drawn("\xff\xfeP"),
            "f:1:1: the file is UTF-16 text: save it as plain text (ASCII or UTF-8)");
  const Drawing drawing = ReadHpgl("\xef\xbb\xbf\x1b.I81;;17:PD1,1;\x03");
  ASSERT_EQ(drawing.notices.size(), 3u);
  EXPECT_EQ(drawing.notices[0].what, "byte order mark");
  EXPECT_EQ(drawing.notices[1].what, "ESC.I");
  EXPECT_EQ(drawing.notices[2].what, "ETX");
}

TEST(Hpgl, ScalingLaysAWindowOverTheTwoPoints) {
  constexpr Case kCases[] = {
      {"IP100,200,1100,700;SC0,10,0,5;PU1,1PD2,2", "1:200,300 300,400"},
      {"IP0,0,1000,500;SC0,10,0,10,1;PU0,0PD10,10", "1:250,0 750,500"},  // in the middle
      {"IP0,0,1000,500;SC0,10,0,10,1,0,0;PD10,10", "1:0,0 500,500"},
      {"IP0,0,1000,500;SC0,10,0,10,1,100,0;PU0,0PD10,10", "1:500,0 1000,500"},
      {"SC0,40,0,40,2;PD1,1", "1:0,0 40,40"},  // plotter units in a user unit
      {"IP100,100;SC0,40,0,40,2;PD1,1", "f:1:1: IP with P1 alone: P2 has not been named before"},
      {"IP0,0,100,100;IP50,50;SC0,1,0,1;PU0,0PD1,1", "1:50,50 150,150"},
      {"IP0,0,100,100;SC0,10,0,10;PU5,5;PR;PD1,1", "1:50,50 60,60"},
      {"IP0,0,100,100;SC0,10,0,10;PU5,5;SC;PD1,1", "1:50,50 1,1"},
      {"IP0,0,100,100;SC10,0,0,10;PU1,1PD2,2", "1:90,10 80,20"},
      {"SC0,10,0,10",
       "f:1:1: SC without IP: the size of the page is not known; add IP with P1 and P2, or write "
       "the file without scaling"},
      {"IP0,0,100,100;SC0,0,0,10", "f:1:15: SC makes a window without a size"},
      {"IP0,0,0,100;SC0,1,0,10", "f:1:13: SC makes a window without a size"},
      {"IP1,2,3", "f:1:1: IP takes the two coordinates of P1, or the four of P1 and P2"},
      {"SC1,2", "f:1:1: SC takes xmin,xmax,ymin,ymax"},
      {"IP0,0,9,9;SC0,1,0,1,3", "f:1:21: SC knows the kinds 0, 1 and 2"},
      {"IP0,0,8388607,8388607;SC0,.001,0,1;PA1,0", "f:1:38: position out of range"},
      {"IP0,0,8388607,1;SC0,.000000001,0,1;PR8388607,0", "f:1:38: position out of range"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Drawn(c.file), c.want) << c.file;
}

TEST(Hpgl, RotationTurnsAboutTheOrigin) {
  EXPECT_EQ(Drawn("RO90;PU1,2PD3,4"), "1:-2,1 -4,3");
  EXPECT_EQ(Drawn("RO180;PU1,2PD3,4"), "1:-1,-2 -3,-4");
  EXPECT_EQ(Drawn("RO270;PU1,2PD3,4;RO;PD1,1"), "1:2,-1 4,-3 1,1");
  EXPECT_EQ(Drawn("RO90;PU1,2;PR;PD3,4"), "1:-2,1 -6,4");
  EXPECT_EQ(Drawn("RO45"), "f:1:3: RO takes 0, 90, 180 or 270 degrees");
}

TEST(Hpgl, ArcsTakeTheChordAngleOfTheFile) {
  EXPECT_EQ(Drawn("PU10,0;PD;AA0,0,90,90"), "1:10,0 6.12323e-16,10");
  EXPECT_EQ(Drawn("PU10,0;AA0,0,360"), "");
  const Drawing hexagon = ReadHpgl("PU100,100;CI50,60");
  ASSERT_EQ(hexagon.strokes.size(), 1u);
  EXPECT_EQ(hexagon.strokes[0].points.size(), 7u);
  const Drawing finest = ReadHpgl("CI50,0");
  EXPECT_EQ(finest.strokes[0].points.size(), 1001u);
  EXPECT_EQ(Drawn("AA1,1,361"), "f:1:7: the angle of an arc is at most 360 degrees");
  EXPECT_EQ(Drawn("AR1,1"), "f:1:1: an arc takes its center and its angle");
  EXPECT_EQ(Drawn("CI"), "f:1:1: CI takes a radius");
}

TEST(Hpgl, AnArcWithoutAChordAngleKeepsToTheTolerance) {
  const Drawing coarse = ReadHpgl("CI1016", 0.01);
  const Drawing fine = ReadHpgl("CI1016", 0.0001);
  EXPECT_LT(coarse.strokes[0].points.size() * 5, fine.strokes[0].points.size());
}

TEST(Hpgl, ACircleLeavesThePenWhereItWas) {
  const Drawing up = ReadHpgl("PU100,100;CI50,180;PD200,200");
  ASSERT_EQ(up.strokes.size(), 2u);
  EXPECT_EQ(up.strokes[1].points[0].x, 100.0);
  // A pen that is down marks the center once, as on a plotter.
  const Drawing down = ReadHpgl("PU100,100;PD;CI50,180;PU");
  ASSERT_EQ(down.strokes.size(), 2u);
  EXPECT_EQ(down.strokes[0].points.size(), 1u);
  EXPECT_EQ(ReadHpgl("PU100,100;PD;CI50,180;PD200,200").strokes.size(), 3u);
}

TEST(Hpgl, RectanglesAndWedgesAreOutlines) {
  EXPECT_EQ(Drawn("PU10,10;EA20,30;PD11,11"), "1:10,10 20,10 20,30 10,30 10,10; 1:10,10 11,11");
  EXPECT_EQ(Drawn("PU10,10;ER20,30"), "1:10,10 30,10 30,40 10,40 10,10");
  const Drawing filled = ReadHpgl("RA5,5");
  ASSERT_EQ(filled.notices.size(), 1u);
  EXPECT_EQ(filled.strokes.size(), 1u);
  EXPECT_EQ(ReadHpgl("EW100,0,90,45").strokes[0].points.size(), 5u);
  EXPECT_EQ(Drawn("EA1"), "f:1:1: EA takes the opposite corner");
}

TEST(Hpgl, EncodedPolylinesAreDecoded) {
  // Base 64: "?" is digit 0 that goes on, 0xBF digit 0 that ends.
  EXPECT_EQ(Drawn("PE<=\xc9\xd3\xc3\xc3;"), "1:5,10 7,12");
  EXPECT_EQ(Drawn("PE\xc2\xbf;"), "1:0,0 -1,0");        // the lowest bit is the sign
  EXPECT_EQ(Drawn("PE?\xc0\xbf;"), "1:0,0 32,0");       // 0 + 1 * 64, halved
  EXPECT_EQ(Drawn("PE7?`_;"), "1:0,0 16,0");            // base 32
  EXPECT_EQ(Drawn("PE:\xc1\xc1\xbf;"), "1:0,0 0.5,0");  // one bit of fraction
  EXPECT_EQ(Drawn("PE>\xc3<\xc1\xc1 \r\n\xc1\xc1;"), "2:1,1 2,2");
  EXPECT_EQ(Drawn("PA;PE\xc1\xc1;PD5,5"), "1:0,0 1,1 5,5");  // PA is as it was
  EXPECT_EQ(Drawn("SP0;PE\xc1\xc1;"), "");
  EXPECT_EQ(Drawn("PE\xc1\xc1"), "f:1:3: PE is not ended by ';'");
  EXPECT_EQ(Drawn("PE\xc1;"), "f:1:4: PE: unexpected character ';'");
  EXPECT_EQ(Drawn("PE\xc1!;"), "f:1:4: PE: unexpected character '!'");
  EXPECT_EQ(Drawn("PE>???????????\xf1;"), "f:1:4: PE: number out of range");
  EXPECT_EQ(Drawn("PE:\xff;"), "f:1:4: PE: unexpected byte 0xFF");
  EXPECT_EQ(Drawn("PE:\xfd;"), "f:1:3: PE: fraction bits out of range");
  EXPECT_EQ(Drawn("PE>?\xd0;"), "f:1:3: PE: pen number out of range");
  EXPECT_EQ(Drawn("PE?????\xc0\xbf;"), "f:1:3: position out of range");
}

TEST(Hpgl, LabelsAreDrawnInSingleStrokes) {
  // 0.8 cm wide and 1.2 cm high: a grid of 40 plotter units.
  EXPECT_EQ(Drawn("SI.8,1.2;PU100,100;LBL\x03"), "1:100,580 100,100 420,100");
  EXPECT_EQ(Drawn("SI.8,1.2;DI0,1;LBL\x03"), "1:-480,0 0,0 0,320");
  EXPECT_EQ(Drawn("SI.8,1.2;RO90;LBL\x03"), "1:-480,0 0,0 0,320");
  EXPECT_EQ(Drawn("SI.8,1.2;LBLL\x03;PD0,0"),
            "1:0,480 0,0 320,0; 1:480,480 480,0 800,0; 1:960,0 0,0");
  EXPECT_EQ(Drawn("SI.8,1.2;LB\r\n-\x03"), "1:40,-720 280,-720");
  EXPECT_EQ(Drawn("DT#;SI.8,1.2;LB-#LB-#"), "1:40,240 280,240; 1:520,240 760,240");
  EXPECT_EQ(Drawn("LBabc"), "f:1:1: LB is not ended by ETX (byte 0x03)");
  EXPECT_EQ(Drawn("DT#;LBabc\x03"),
            "f:1:10: no letter for byte 0x03: convert the text to curves "
            "in the drawing program");
  EXPECT_EQ(Drawn("LBa\xc4\x03"),
            "f:1:4: no letter for byte 0xC4: convert the text to curves in "
            "the drawing program");
  EXPECT_EQ(Drawn("SI0,1"), "f:1:1: letters without a size");
  EXPECT_EQ(Drawn("DI0,0"), "f:1:1: a direction of 0,0");
  EXPECT_EQ(Drawn("SI20000,1;LBAAAA\x03"), "f:1:13: position out of range");
}

TEST(Hpgl, ASecondPageIsRefused) {
  EXPECT_EQ(Drawn("PD1,1;PU;PG;EC;SP0"), "1:0,0 1,1");
  EXPECT_EQ(Drawn("PG;PD1,1"), "1:0,0 1,1");
  EXPECT_EQ(Drawn("PD1,1;PG;PD2,2"),
            "f:1:10: a second page begins here: engrave one page at a time");
}

TEST(Hpgl, AFileCannotFillTheMemory) {
  std::string circles;
  for (int i = 0; i < 4100; ++i) circles += "CI9,.36;";
  EXPECT_EQ(Drawn(circles).substr(0, 2), "f:");
  EXPECT_NE(Drawn(circles).find("too many points"), std::string::npos);
}

}  // namespace
}  // namespace k7host
