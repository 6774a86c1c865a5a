// Files as drawing and engraving programs write them, each against the picture that it must give.
// drawings/update.sh writes the pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "drawing/hpgl/hpgl.h"
#include "drawing/svg/svg.h"

namespace k7host {
namespace {

std::filesystem::path Folder() {
  const char* samples = std::getenv("K7_SAMPLES");
  return std::filesystem::path(samples != nullptr ? samples : ".") / "../../tests/host/drawings";
}

std::string Contents(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string Number(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.3f", value + 0.0);
  return std::string(text) == "-0.000" ? "0.000" : text;
}

// The strokes in inches, each with its pen; a dot is a piece without length. The notices stand
// before them.
std::string Picture(const Drawing& drawing) {
  if (drawing.error) return DrawingErrorText("error", *drawing.error) + "\n";
  double low[2] = {1e9, 1e9};
  double high[2] = {-1e9, -1e9};
  std::string notices;
  for (const DrawingNotice& notice : drawing.notices) {
    notices += "<!-- " + NoticeText(notice) + " -->\n";
  }
  std::string paths;
  for (const Stroke& stroke : drawing.strokes) {
    paths += "<path class=\"pen" + std::to_string(stroke.pen) + "\" d=\"M";
    for (const PlotterPoint& point : stroke.points) {
      const double at[2] = {point.x / kPlotterUnitsPerInch, -point.y / kPlotterUnitsPerInch};
      for (int axis = 0; axis < 2; ++axis) {
        low[axis] = std::min(low[axis], at[axis]);
        high[axis] = std::max(high[axis], at[axis]);
      }
      paths += " " + Number(at[0]) + "," + Number(at[1]);
    }
    paths += stroke.points.size() == 1 ? " z\"/>\n" : "\"/>\n";
  }
  constexpr double kMargin = 0.1;
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" + Number(low[0] - kMargin) + " " +
         Number(low[1] - kMargin) + " " + Number(high[0] - low[0] + 2 * kMargin) + " " +
         Number(high[1] - low[1] + 2 * kMargin) + "\">\n" +
         "<style>path{fill:none;stroke:#000;stroke-width:0.015;stroke-linecap:round}"
         ".pen2{stroke:#c00}.pen3{stroke:#080}</style>\n" +
         notices + paths + "</svg>\n";
}

class Drawings : public testing::TestWithParam<const char*> {};

TEST_P(Drawings, GivesItsPicture) {
  const std::string text = Contents(Folder() / GetParam());
  ASSERT_FALSE(text.empty()) << "K7_SAMPLES must name host/samples";
  const std::string picture = Picture(LooksLikeXml(text) ? ReadSvg(text) : ReadHpgl(text));
  std::filesystem::path golden = Folder() / GetParam();
  golden += golden.extension() == ".plt" ? ".svg" : ".picture.svg";
  if (std::getenv("K7_UPDATE_GOLDEN") != nullptr) {
    std::ofstream(golden, std::ios::binary) << picture;
    return;
  }
  EXPECT_EQ(picture, Contents(golden));
}

INSTANTIATE_TEST_SUITE_P(Programs, Drawings,
                         testing::Values("autocad.plt", "autocad_hpgl2.plt", "coreldraw.plt",
                                         "encoded_7bit.plt", "engraver.plt", "inkscape.plt",
                                         "lettering.plt", "pstoedit.plt", "scaled.plt",
                                         "coreldraw.drawing.svg", "illustrator.drawing.svg",
                                         "inkscape.drawing.svg"));

}  // namespace
}  // namespace k7host
