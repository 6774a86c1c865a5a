// The SVG writer, and what both writers show.
#include "core/preview.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "core/preview_colours.h"

namespace k7host {
namespace {

constexpr std::uint32_t kMostNumbers = 300;
constexpr double kMargin = 0.25;  // inches around the table

// The picture is drawn in hundredths of an inch, because letters of less than a unit are not shown
// everywhere. Three decimals, with "." whatever the locale.
std::string Number(double inches) {
  return InchesText(inches * 100.0);
}

std::string Hex(std::uint32_t rgb) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[rgb >> shift & 15];
  return text;
}

std::string Rectangle(const char* kind, double x0, double y0, double x1, double y1) {
  return std::string("<rect class=\"") + kind + "\" x=\"" + Number(x0) + "\" y=\"" + Number(y0) +
         "\" width=\"" + Number(x1 - x0) + "\" height=\"" + Number(y1 - y0) + "\"/>\n";
}

class Writer {
 public:
  Writer(const JobPlan& plan, const Table& table) : plan_(plan), table_(table) {}

  std::string Write() {
    const double width = table_.widthSteps / table_.xStepsPerInch;
    height_ = table_.heightSteps / table_.yStepsPerInch;
    out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + InchesText(width + 2 * kMargin) +
           "in\" height=\"" + InchesText(height_ + 2 * kMargin) + "in\" viewBox=\"" +
           Number(-kMargin) + " " + Number(-kMargin) + " " + Number(width + 2 * kMargin) + " " +
           Number(height_ + 2 * kMargin) + "\">\n<title>" + ExtentText(plan_, table_) +
           " inches, strokes " + std::to_string(plan_.strokes) + ", dots " +
           std::to_string(plan_.dots) +
           "</title>\n<style>.table{fill:#fff;stroke:#000;stroke-width:2}"
           ".extent{fill:none;stroke:#080;stroke-width:1;stroke-dasharray:8 5}"
           ".travel{fill:none;stroke:#999;stroke-width:.6}"
           ".cut{fill:none;stroke-width:1.2;stroke-linecap:round;stroke-linejoin:round}"
           "text{font:6px sans-serif;fill:#555}</style>\n";
    out_ += Rectangle("table", 0.0, 0.0, width, height_);
    out_ += Rectangle("extent", plan_.minXSteps / table_.xStepsPerInch,
                      height_ - plan_.maxYSteps / table_.yStepsPerInch,
                      plan_.maxXSteps / table_.xStepsPerInch,
                      height_ - plan_.minYSteps / table_.yStepsPerInch);
    std::string here = Point(0, 0);
    std::string travels;
    for (const Move& move : plan_.moves) {
      const std::string to = Point(move.xSteps, move.ySteps);
      if (move.kind == MoveKind::Travel) {
        travels.append("M").append(here).append("L").append(to);
      } else {
        if (cut_.empty()) BeginStroke(here);
        cut_ += "L" + to;
      }
      here = to;
      if (move.endsStroke) EndStroke();
    }
    travels += "M" + here + "L" + Point(0, 0);
    out_ += "<path class=\"travel\" d=\"" + travels + "\"/>\n" + strokes_ + numbers_ + "</svg>\n";
    return std::move(out_);
  }

 private:
  std::string Point(std::uint32_t xSteps, std::uint32_t ySteps) const {
    return Number(xSteps / table_.xStepsPerInch) + " " +
           Number(height_ - ySteps / table_.yStepsPerInch);
  }

  void BeginStroke(const std::string& at) {
    cut_ = "M" + at;
    if (++stroke_ > kMostNumbers) return;
    const std::size_t blank = at.find(' ');
    numbers_ += "<text x=\"" + at.substr(0, blank) + "\" y=\"" + at.substr(blank + 1) + "\">" +
                std::to_string(stroke_) + "</text>\n";
  }

  void EndStroke() {
    strokes_ += "<path class=\"cut\" stroke=\"" +
                Hex(StrokeColour(stroke_ - 1, plan_.strokes + plan_.dots)) + "\" d=\"" + cut_ +
                "\"/>\n";
    cut_.clear();
  }

  const JobPlan& plan_;
  const Table& table_;
  double height_ = 0.0;
  std::uint32_t stroke_ = 0;
  std::string out_;
  std::string strokes_;
  std::string numbers_;
  std::string cut_;  // the stroke under way
};

}  // namespace

std::uint32_t StrokeColour(std::uint32_t index, std::uint32_t count) {
  const std::uint32_t share =
      count < 2 ? 0 : static_cast<std::uint32_t>(std::uint64_t{index} * 255 / (count - 1));
  return share << 16 | (255 - share);
}

std::string PreviewSvg(const JobPlan& plan, const Table& table) {
  return Writer(plan, table).Write();
}

}  // namespace k7host
