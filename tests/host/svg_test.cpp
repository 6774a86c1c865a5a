#include "drawing/svg/svg.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "drawing_text.h"

namespace k7host {
namespace {

// In inches.
std::string Drawn(std::string_view file) {
  return DrawingText(ReadSvg(file), kPlotterUnitsPerInch, 4);
}

// In a page of 4 x 3 inches whose unit is an inch.
std::string Page(const std::string& content) {
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4in\" height=\"3in\" "
         "viewBox=\"0 0 4 3\"><g stroke=\"#000\" fill=\"none\">" +
         content + "</g></svg>";
}

TEST(Svg, ThePageEndsAtTheTableHome) {
  EXPECT_EQ(Drawn(Page("<line x1='1' y1='1' x2='2' y2='1'/>")), "1:1,2 2,2");
  EXPECT_EQ(Drawn("<svg width='96' height='96'><path stroke='red' d='M0 96H96'/></svg>"),
            "1:0,0 1,0");
  EXPECT_EQ(Drawn("<svg><path stroke='red' d='M0 96H96M0 0'/></svg>"), "1:0,0 1,0");
  EXPECT_EQ(Drawn("<svg viewBox='0 0 96 96'><path stroke='red' d='M0 96H96'/></svg>"), "1:0,0 1,0");
  EXPECT_EQ(Drawn("<svg:svg xmlns:svg='s' width='100mm' height='25.4mm'><svg:path d='M0 0V96' "
                  "stroke='red'/></svg:svg>"),
            "1:0,1 0,0");
}

TEST(Svg, TheViewBoxIsLaidOverThePage) {
  const char* const kLine = "<path stroke='#000' d='M0 0H10'/></svg>";
  const auto with = [&](const std::string& attributes) {
    return Drawn("<svg width='2in' height='1in' viewBox='0 0 10 10' " + attributes + ">" + kLine);
  };
  EXPECT_EQ(with(""), "1:0.5,1 1.5,1");
  EXPECT_EQ(with("preserveAspectRatio='xMinYMid'"), "1:0,1 1,1");
  EXPECT_EQ(with("preserveAspectRatio='xMaxYMid meet'"), "1:1,1 2,1");
  EXPECT_EQ(with("preserveAspectRatio='none'"), "1:0,1 2,1");
  EXPECT_EQ(with("preserveAspectRatio='xMidYMax slice'"), "1:0,2 2,2");
}

TEST(Svg, LengthsHaveUnits) {
  EXPECT_EQ(Drawn("<svg width='4in' height='3in'><line stroke='#000' x1='1in' y1='2.54cm' "
                  "x2='50.8mm' y2='72pt'/></svg>"),
            "1:1,2 2,2");
  EXPECT_EQ(Drawn("<svg width='4in' height='3in'><line stroke='#000' x1='25%' y1='6pc' "
                  "x2='50%' y2='101.6Q'/></svg>"),
            "1:1,2 2,2");
  EXPECT_EQ(Drawn("<svg width='4em' height='3in'/>"),
            "f:1:14: unit 'em' is not supported: use px, in, mm, cm, pt or pc");
}

TEST(Svg, PathsOfStraightPieces) {
  EXPECT_EQ(Drawn(Page("<path d='M1,1L2,1 2,2z'/>")), "1:1,2 2,2 2,1 1,2");
  EXPECT_EQ(Drawn(Page("<path d='m1 1 1 0 0 1zm1 1h.5v-.5'/>")),
            "1:1,2 2,2 2,1 1,2; 1:2,1 2.5,1 2.5,1.5");
  EXPECT_EQ(Drawn(Page("<path d='M1.5.5-1-1'/>")), "1:1.5,2.5 -1,4");
  EXPECT_EQ(Drawn(Page("<path d='M1e0 1 L2 +1'/>")), "1:1,2 2,2");
  EXPECT_EQ(Drawn(Page("<path d='M1 1z M3 3'/>")), "1:1,2");  // a dot, and nothing
  EXPECT_EQ(Drawn(Page("<path d=''/><path/>")), "");
}

TEST(Svg, CurvesEndWhereTheyShould) {
  const Drawing drawing =
      ReadSvg(Page("<path d='M0 1C0 0 1 0 1 1S2 2 2 1Q2.5 0 3 1T4 1'/>"
                   "<path d='M1 1A1 1 0 0 1 2 2'/><path d='M1 1a1 1 0 111 1'/>"));
  ASSERT_FALSE(drawing.error);
  ASSERT_EQ(drawing.strokes.size(), 3u);
  EXPECT_DOUBLE_EQ(drawing.strokes[0].points.back().x, 4 * kPlotterUnitsPerInch);
  double lowest = 1e9;
  for (const PlotterPoint& p : drawing.strokes[0].points) lowest = std::min(lowest, p.y);
  EXPECT_NEAR(lowest / kPlotterUnitsPerInch, 1.25, 0.002);  // the mirrored handle leads downwards
  // A quarter about (1, 2) and three quarters about (2, 1): each point on its circle.
  for (const PlotterPoint& p : drawing.strokes[1].points) {
    EXPECT_NEAR(std::hypot(p.x / 1016 - 1, p.y / 1016 - 1), 1.0, 0.001);
  }
  for (const PlotterPoint& p : drawing.strokes[2].points) {
    EXPECT_NEAR(std::hypot(p.x / 1016 - 2, p.y / 1016 - 2), 1.0, 0.001);
  }
  EXPECT_GT(drawing.strokes[2].points.size(), 2 * drawing.strokes[1].points.size());
  // Radii that are too small are made to reach.
  EXPECT_EQ(ReadSvg(Page("<path d='M1 1A.1 .1 0 0 1 2 1'/>")).strokes.size(), 1u);
}

TEST(Svg, ShapesAreOutlines) {
  EXPECT_EQ(Drawn(Page("<rect x='1' y='1' width='2' height='1'/>")), "1:1,2 3,2 3,1 1,1 1,2");
  EXPECT_EQ(Drawn(Page("<polyline points='0,0 1,0 1,1'/>")), "1:0,3 1,3 1,2");
  EXPECT_EQ(Drawn(Page("<polygon points='0,0 1,0 1,1'/>")), "1:0,3 1,3 1,2 0,3");
  const Drawing round =
      ReadSvg(Page("<circle cx='2' cy='1' r='1'/><ellipse cx='2' cy='1' rx='1' "
                   "ry='.5'/><rect width='1' height='1' rx='.25'/>"));
  ASSERT_EQ(round.strokes.size(), 3u);
  for (const PlotterPoint& p : round.strokes[0].points) {
    EXPECT_NEAR(std::hypot(p.x / 1016 - 2, p.y / 1016 - 2), 1.0, 0.001);
  }
  EXPECT_EQ(Drawn(Page("<rect width='0' height='1'/><circle r='0'/>")), "");
}

TEST(Svg, TransformationsAreJoined) {
  EXPECT_EQ(Drawn(Page("<g transform='translate(1,1)'><line transform='scale(2)' x2='1'/></g>")),
            "1:1,2 3,2");
  EXPECT_EQ(Drawn(Page("<line transform='rotate(90 1 1)' x1='1' y1='1' x2='2' y2='1'/>")),
            "1:1,2 1,1");
  EXPECT_EQ(Drawn(Page("<line transform='matrix(1 0 0 1 1 0) skewX(45)' y2='1'/>")), "1:1,3 2,2");
  EXPECT_EQ(Drawn(Page("<line transform='turn(1)' y2='1'/>")),
            "f:1:130: transformation 'turn' with 1 numbers");
  EXPECT_EQ(Drawn(Page("<line transform='scale(1' y2='1'/>")), "f:1:130: malformed transformation");
}

TEST(Svg, UseDrawsWhatItNames) {
  EXPECT_EQ(Drawn(Page("<defs><line id='a' x2='1'/></defs><use href='#a' x='1' y='1'/>"
                       "<use xlink:href='#a'/>")),
            "1:1,2 2,2; 1:0,3 1,3");
  EXPECT_EQ(Drawn(Page("<symbol id='s' viewBox='0 0 10 10'><line x2='10'/></symbol>"
                       "<use href='#s' width='1' height='1'/>")),
            "1:0,3 1,3");
  EXPECT_NE(Drawn(Page("<use href='#none'/>")).find("use of '#none', which is not in the file"),
            std::string::npos);
  EXPECT_NE(Drawn(Page("<g id='g'><use href='#g'/></g>")).find("within each other"),
            std::string::npos);
}

TEST(Svg, ColoursBecomePensInTheirOrder) {
  const Drawing drawing = ReadSvg(
      "<svg width='4in' height='3in' stroke='red'><style>.b{stroke:blue} #i{stroke:#0f0}"
      "/* */ line.c, rect{stroke:rgb(0,128,100%)} g line{stroke:red}</style>"
      "<line x2='1'/><line x2='1' class='x b'/><line x2='1' class='b' id='i'/>"
      "<line x2='1' class='c'/><line x2='1' style='stroke: #F00; x'/>"
      "<line x2='1' color='#00f' stroke='currentColor'/><line x2='1' stroke='#fff'/></svg>");
  ASSERT_FALSE(drawing.error);
  std::string pens;
  for (const Stroke& stroke : drawing.strokes) pens += std::to_string(stroke.pen);
  EXPECT_EQ(pens, "123412");
  ASSERT_EQ(drawing.colours.size(), 4u);
  EXPECT_EQ(drawing.colours[0].rgb, 0xff0000u);
  EXPECT_EQ(drawing.colours[1].rgb, 0x0000ffu);
  EXPECT_EQ(drawing.colours[2].rgb, 0x00ff00u);
  EXPECT_EQ(drawing.colours[3].rgb, 0x0080ffu);
  ASSERT_EQ(drawing.notices.size(), 2u);
  EXPECT_EQ(drawing.notices[0].what, "style rule");
  EXPECT_EQ(drawing.notices[1].what, "white shape");
}

TEST(Svg, ColoursBeyondTheSixteenthTakeTheNearest) {
  std::string lines;
  for (int i = 0; i < 16; ++i) {
    lines += "<line x2='1' stroke='#0000" + std::string(1, "0123456789abcdef"[i]) + "0'/>";
  }
  const Drawing drawing = ReadSvg(Page(lines + "<line x2='1' stroke='#000031'/>"));
  EXPECT_EQ(drawing.colours.size(), 16u);
  EXPECT_EQ(drawing.strokes.back().pen, 4);
  EXPECT_EQ(drawing.notices.size(), 1u);
}

TEST(Svg, AShapeThatIsOnlyFilledIsCutAroundIt) {
  const Drawing drawing = ReadSvg("<svg width='1in' height='1in'><path d='M0 0H9V9z'/></svg>");
  EXPECT_EQ(drawing.strokes.size(), 1u);
  ASSERT_EQ(drawing.notices.size(), 1u);
  EXPECT_EQ(NoticeText(drawing.notices[0]),
            "1:32: fill passed over: the outline of the shape is cut in its colour");
  EXPECT_EQ(Drawn(Page("<path stroke='none' d='M0 0H9'/><line stroke='none' fill='red' x2='1'/>")),
            "");
}

TEST(Svg, WhatIsNotShownIsNotCut) {
  EXPECT_EQ(Drawn(Page("<g display='none'><text>a</text><line x2='1'/></g>"
                       "<g visibility='hidden'><line x2='1'/><line visibility='visible' x2='2'/>"
                       "</g><defs><text>a</text></defs><g style='display:none'><text>b</text></g>"
                       "<text> </text><sodipodi:namedview/>")),
            "1:0,3 2,3");
}

TEST(Svg, TextIsAnErrorThatSaysWhatToDo) {
  EXPECT_EQ(Drawn("<svg width='1in' height='1in'>\n <text x='1'><tspan>a</tspan></text></svg>"),
            "f:2:3: text is not converted to paths: in the drawing program select it and choose "
            "\"Object to Path\" or \"Convert to Curves\", then save again");
}

TEST(Svg, WhatCannotBeEngravedIsTold) {
  const Drawing drawing = ReadSvg(
      Page("<image href='a.png'/><image/><line x2='1' clip-path='url(#c)' stroke='url(#g)'/>"
           "<line x2='1' style='stroke-dasharray:1,2;stroke:mauve'/><what/>"));
  std::string told;
  for (const DrawingNotice& notice : drawing.notices) {
    told += notice.what + "*" + std::to_string(notice.count) + " ";
  }
  EXPECT_EQ(told,
            "<image>*2 gradient or pattern*1 clip-path*1 stroke-dasharray*1 colour 'mauve'*1 "
            "<what>*1 ");
  EXPECT_EQ(drawing.strokes.size(), 2u);
}

TEST(Svg, ErrorsNameTheirPlace) {
  EXPECT_EQ(Drawn("<html><p/></html>"), "f:1:2: not an SVG file: it begins with <html>");
  EXPECT_EQ(Drawn("<!-- -->"), "f:1:1: not an SVG file: no element in it");
  EXPECT_EQ(Drawn("<svg>\n<g></svg>"), "f:2:9: not well-formed XML: invalid closing tag name");
  EXPECT_EQ(Drawn(Page("<path d='M1 1L2'/>")), "f:1:128: number expected");
  EXPECT_EQ(Drawn(Page("<path d='L1 1'/>")), "f:1:122: a path begins with M");
  EXPECT_EQ(Drawn(Page("<path d='M1 1X'/>")), "f:1:126: unknown path command 'X'");
  EXPECT_EQ(Drawn(Page("<path d='M1 1A1 1 0 2 0 1 1'/>")), "f:1:133: 0 or 1 expected");
  EXPECT_EQ(Drawn(Page("<path d='M1 1H1e9'/>")), "f:1:126: position out of range");
  EXPECT_EQ(Drawn(Page("<path d='M1 1H1e999'/>")), "f:1:127: number out of range");
  EXPECT_EQ(Drawn("<svg viewBox='0 0 0 1'/>"), "f:1:15: viewBox without a size");
  EXPECT_EQ(Drawn(std::string("<svg>\0</svg>", 12)), "f:1:6: unexpected byte 0x00");
}

TEST(Svg, BoundsAreKept) {
  std::string deep;
  for (int i = 0; i < 300; ++i) deep += "<g>";
  EXPECT_NE(Drawn("<svg>" + deep).find("nested too deeply"), std::string::npos);
  // Each doubles what the one before it draws.
  std::string many = "<defs><g id='a0'><line x2='1'/></g>";
  for (int i = 1; i < 15; ++i) {
    const std::string use = "<use href='#a" + std::to_string(i - 1) + "'/>";
    many += "<g id='a" + std::to_string(i) + "'>";
    for (int k = 0; k < 4; ++k) many += use;
    many += "</g>";
  }
  EXPECT_NE(Drawn(Page(many + "</defs><use href='#a14'/>")).find("too many elements"),
            std::string::npos);
}

TEST(Svg, XmlIsKnownByItsFirstCharacter) {
  EXPECT_TRUE(LooksLikeXml("<svg/>"));
  EXPECT_TRUE(LooksLikeXml("\xef\xbb\xbf \r\n<?xml?>"));
  EXPECT_FALSE(LooksLikeXml("IN;"));
  EXPECT_FALSE(LooksLikeXml(""));
}

}  // namespace
}  // namespace k7host
