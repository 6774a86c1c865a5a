// Placement, colours, order, preview and frame of a drawing.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/frame.h"
#include "core/preview.h"
#include "drawing/colours.h"
#include "drawing/hpgl/hpgl.h"
#include "drawing/placement.h"
#include "drawing/stroke_order.h"
#include "recording_engraver.h"

namespace k7host {
namespace {

std::string Text(const std::vector<Stroke>& strokes) {
  std::string text;
  for (const Stroke& stroke : strokes) {
    text += (text.empty() ? "" : "; ") + std::to_string(stroke.pen) + ":";
    for (const PlotterPoint& p : stroke.points) {
      text += " " + std::to_string(std::lround(p.x)) + "," + std::to_string(std::lround(p.y));
    }
  }
  return text;
}

std::string Placed(const char* file, const Placement& placement) {
  std::vector<Stroke> strokes = ReadHpgl(file).strokes;
  Place(strokes, placement);
  return Text(strokes);
}

TEST(Placement, ScalesRotatesAndMoves) {
  const char* const kLine = "PU10,20PD40,60";
  EXPECT_EQ(Placed(kLine, {}), "1: 10,20 40,60");
  EXPECT_EQ(Placed(kLine, {.scale = 2}), "1: 20,40 80,120");
  EXPECT_EQ(Placed(kLine, {.rotateDegrees = 90}), "1: -20,10 -60,40");
  EXPECT_EQ(Placed(kLine, {.rotateDegrees = -450}), "1: 20,-10 60,-40");
  EXPECT_EQ(Placed("PD100,0", {.rotateDegrees = 30}), "1: 0,0 87,50");
  EXPECT_EQ(Placed(kLine, {.offsetXInches = 1, .offsetYInches = -0.5}), "1: 1026,-488 1056,-448");
  EXPECT_EQ(Placed(kLine, {.origin = Origin::LowerLeft}), "1: 0,0 30,40");
  EXPECT_EQ(Placed(kLine, {.origin = Origin::UpperRight}), "1: -30,-40 0,0");
  EXPECT_EQ(Placed(kLine, {.origin = Origin::Center}), "1: -15,-20 15,20");
  EXPECT_EQ(Placed(kLine, {.rotateDegrees = 90, .origin = Origin::LowerRight, .offsetXInches = 1}),
            "1: 1016,0 976,30");
  EXPECT_EQ(Placed("", {.scale = 2, .origin = Origin::Center}), "");
}

TEST(Placement, OriginsHaveNames) {
  EXPECT_EQ(OriginNamed("upper-left"), Origin::UpperLeft);
  EXPECT_FALSE(OriginNamed("middle").has_value());
}

TEST(StrokeOrder, TheNearestEndComesNext) {
  std::vector<Stroke> strokes =
      ReadHpgl("PU5080,0PD6096,0PU0,0PD1016,0PU4064,0PD2032,0PU3048,0PD").strokes;
  const TravelSaved saved = OptimiseOrder(strokes);
  EXPECT_EQ(Text(strokes), "1: 0,0 1016,0; 1: 2032,0 4064,0; 1: 5080,0 6096,0; 1: 3048,0");
  EXPECT_DOUBLE_EQ(saved.beforeInches, 5 + 6 + 3 + 1 + 3);
  EXPECT_DOUBLE_EQ(saved.afterInches, 1 + 1 + 3 + 3);
}

TEST(StrokeOrder, PensStayApartAndNothingGrowsLonger) {
  std::vector<Stroke> strokes =
      ReadHpgl("SP2;PU900,0PD800,0;SP1;PU0,0PD10,0;SP2;PU20,0PD30,0").strokes;
  OptimiseOrder(strokes);
  EXPECT_EQ(Text(strokes), "2: 20,0 30,0; 2: 800,0 900,0; 1: 10,0 0,0");
  std::vector<Stroke> best = ReadHpgl("PU10,0PD20,0PU30,0PD40,0").strokes;
  const TravelSaved saved = OptimiseOrder(best);
  EXPECT_EQ(saved.beforeInches, saved.afterInches);
  EXPECT_EQ(Text(best), "1: 10,0 20,0; 1: 30,0 40,0");
  std::vector<Stroke> none;
  EXPECT_EQ(OptimiseOrder(none).afterInches, 0.0);
}

TEST(StrokeOrder, FindsTheNearestAsALookAtAllDoes) {
  std::vector<Stroke> strokes;
  unsigned random = 7;
  const auto next = [&] { return random = random * 1103515245u + 12345u, (random >> 8) % 5000; };
  for (int i = 0; i < 300; ++i) {
    const double x = next();
    const double y = next();
    strokes.push_back({1, {{x, y}, {x + next() % 100, y + next() % 100}}});
  }
  std::vector<Stroke> left = strokes;
  OptimiseOrder(strokes);
  PlotterPoint here;
  for (const Stroke& stroke : strokes) {
    double nearest = 1e18;
    for (const Stroke& other : left) {
      for (const PlotterPoint& end : {other.points[0], other.points[1]}) {
        nearest = std::min(nearest, std::hypot(end.x - here.x, end.y - here.y));
      }
    }
    ASSERT_EQ(std::hypot(stroke.points[0].x - here.x, stroke.points[0].y - here.y), nearest);
    std::erase_if(left, [&](const Stroke& other) {
      const auto same = [](const PlotterPoint& a, const PlotterPoint& b) {
        return a.x == b.x && a.y == b.y;
      };
      return (same(other.points[0], stroke.points[0]) && same(other.points[1], stroke.points[1])) ||
             (same(other.points[0], stroke.points[1]) && same(other.points[1], stroke.points[0]));
    });
    here = stroke.points[1];
  }
  EXPECT_TRUE(left.empty());
}

TEST(Colours, PensOfAPlotterHaveItsColours) {
  Drawing drawing = ReadHpgl("SP3;PD1,1;SP1;PD2,2;SP3;PD3,3");
  std::vector<ColourRow> rows = ColoursOf(drawing);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].pen, 3);
  EXPECT_EQ(rows[0].rgb, 0x008000u);
  EXPECT_EQ(rows[0].strokes, 2u);
  EXPECT_EQ(rows[1].rgb, 0x000000u);
  CutByColour(drawing.strokes, rows);
  EXPECT_EQ(Text(drawing.strokes), "3: 0,0 1,1; 3: 2,2 3,3; 1: 1,1 2,2");
  rows[0].cut = false;
  CutByColour(drawing.strokes, rows);
  EXPECT_EQ(Text(drawing.strokes), "1: 1,1 2,2");
}

TEST(Colours, AFileMayNameThem) {
  Drawing drawing = ReadHpgl("SP1;PD1,1;SP20;PD2,2");
  drawing.colours = {{20, 0x123456}};
  const std::vector<ColourRow> rows = ColoursOf(drawing);
  EXPECT_EQ(rows[1].rgb, 0x123456u);
}

JobPlan Plan(const char* file) {
  return BuildPlan(ReadHpgl(file).strokes, {1000.0, 1000.0, 4000, 3000}).plan;
}

TEST(Preview, ShowsTableTravelsCutsAndOrder) {
  const std::string svg =
      PreviewSvg(Plan("PU1016,1016PD2032,1016PU508,508PD"), {1000.0, 1000.0, 4000, 3000});
  EXPECT_NE(svg.find("<rect class=\"table\" x=\"0.000\" y=\"0.000\" width=\"400.000\" "
                     "height=\"300.000\"/>"),
            std::string::npos);
  EXPECT_NE(svg.find("<rect class=\"extent\" x=\"50.000\" y=\"200.000\" width=\"150.000\" "
                     "height=\"50.000\"/>"),
            std::string::npos);
  EXPECT_NE(
      svg.find(
          "d=\"M0.000 300.000L100.000 200.000M200.000 200.000L50.000 250.000M50.000 250.000L0.000 "
          "300.000\""),
      std::string::npos);
  EXPECT_NE(svg.find("stroke=\"#0000ff\" d=\"M100.000 200.000L200.000 200.000\""),
            std::string::npos);
  EXPECT_NE(svg.find("stroke=\"#ff0000\" d=\"M50.000 250.000L50.000 250.000\""), std::string::npos);
  EXPECT_NE(svg.find(">2</text>"), std::string::npos);
}

TEST(Preview, APngIsOne) {
  const std::string png = PreviewPng(Plan("PU1016,1016PD2032,1016"), {1000.0, 1000.0, 4000, 3000});
  EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x07\xd0\0\0\x05\xe6", 8));  // 2000 x 1510
}

class QuietObserver : public JobObserver {
 public:
  bool StopRequested() override { return looks++ >= stopAfter; }
  void WaitForProgress() override {}
  void OnPass(const std::string&) override {}
  void OnProgress(const ProgressView&) override {}
  bool OnManualCutter() override { return true; }
  int stopAfter = 100;
  int looks = 0;
};

TEST(Frame, IsDrivenWithTheCutterUp) {
  const JobPlan plan = Plan("PU1016,1016PD2032,1016,2032,1524");
  k7test::RecordingEngraver device;
  QuietObserver observer;
  EXPECT_EQ(DriveFrame(device, plan, observer).end, JobEnd::Done);
  EXPECT_EQ(device.Log(),
            "BeginJob MoveTo(1000,1000) MoveTo(2000,1000) MoveTo(2000,1500) MoveTo(1000,1500) "
            "MoveTo(1000,1000) MoveTo(1000,1000) EndJob");
}

TEST(Frame, EndsAsAJobDoes) {
  const JobPlan plan = Plan("PU1016,1016PD2032,1016");
  k7test::RecordingEngraver device;
  QuietObserver observer;
  observer.stopAfter = 1;
  EXPECT_EQ(DriveFrame(device, plan, observer).end, JobEnd::Stopped);
  EXPECT_EQ(device.Log(), "BeginJob MoveTo(1000,1000) EndJob");
  device = {};
  observer = {};
  device.beginAnswers = {false};
  EXPECT_EQ(DriveFrame(device, plan, observer).end, JobEnd::Refused);
  device = {};
  device.moveAnswers = {k7::kStatusOneShot};
  EXPECT_TRUE(DriveFrame(device, plan, observer).manualCutter);
}

}  // namespace
}  // namespace k7host
