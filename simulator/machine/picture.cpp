#include "machine/picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace k7sim {
namespace {

constexpr double kPixelsPerInch = 100;
constexpr double kMargin = 0.7;       // inches around the plate, room for the scale
constexpr double kDepthStep = 0.002;  // inches; cuts within one step share a path
constexpr double kJoin = 1e-7;        // inches; ends nearer than this are one point

template <typename... Args>
std::string Text(const char* format, Args... args) {
  char text[512];
  std::snprintf(text, sizeof text, format, args...);
  return text;
}

class Drawing {
 public:
  Drawing(const TableGeometry& table, HomeCorner corner)
      : width_(table.size[0]), height_(table.size[1]), corner_(corner) {}

  double X(double inches) const { return (inches + kMargin) * kPixelsPerInch; }
  double Y(double inches) const {
    const double down = corner_ == HomeCorner::TopLeft ? inches : height_ - inches;
    return (down + kMargin) * kPixelsPerInch;
  }

  std::string Begin() const {
    const double w = (width_ + 2 * kMargin) * kPixelsPerInch;
    const double h = (height_ + 2 * kMargin) * kPixelsPerInch;
    return Text(
               "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" "
               "viewBox=\"0 0 %.0f %.0f\">\n",
               w, h, w, h) +
           "<rect id=\"ground\" width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" +
           Text(
               "<rect id=\"plate\" x=\"%.1f\" y=\"%.1f\" width=\"%.1f\" height=\"%.1f\" "
               "fill=\"#f6efdf\" stroke=\"#8c8577\" stroke-width=\"2\"/>\n",
               X(0), kMargin * kPixelsPerInch, width_ * kPixelsPerInch, height_ * kPixelsPerInch);
  }

  // Ticks along the two edges that meet in the table home, one an inch. Every fifth has its number,
  // on a small plate every one.
  std::string Scale() const {
    std::string ticks =
        "<path id=\"scale\" fill=\"none\" stroke=\"#8c8577\" "
        "stroke-width=\"1.5\" d=\"";
    std::string numbers = "<g font-family=\"sans-serif\" font-size=\"18\" fill=\"#5c564b\">\n";
    const double out = corner_ == HomeCorner::TopLeft ? -1 : 1;
    const bool small = std::max(width_, height_) <= 6;
    for (int i = 0; i <= static_cast<int>(width_); ++i) {
      const bool numbered = small || i % 5 == 0;
      ticks += Text("M%.1f %.1fv%.1f", X(i), Y(0), out * (numbered ? 16 : 8));
      if (numbered) {
        numbers += Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\">%d</text>\n", X(i),
                        Y(0) + (out > 0 ? 36 : -24), i);
      }
    }
    for (int i = 0; i <= static_cast<int>(height_); ++i) {
      const bool numbered = small || i % 5 == 0;
      ticks += Text("M%.1f %.1fh%.1f", X(0), Y(i), numbered ? -16.0 : -8.0);
      if (numbered && i > 0) {
        numbers += Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\">%d</text>\n", X(0) - 22,
                        Y(i) + 6, i);
      }
    }
    return ticks + "\"/>\n" + numbers +
           Text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\">inches</text>\n</g>\n", X(width_),
                Y(0) + (out > 0 ? 58.0 : -46.0));
  }

  std::string Home() const {
    return Text(
        "<g id=\"home\" fill=\"none\" stroke=\"#c0392b\" stroke-width=\"2.5\">"
        "<circle cx=\"%.1f\" cy=\"%.1f\" r=\"9\"/>"
        "<path d=\"M%.1f %.1fh36M%.1f %.1fv36\"/></g>\n",
        X(0), Y(0), X(0) - 18, Y(0), X(0), Y(0) - 18);
  }

  // One path of all strokes. A stroke that starts where the last one ended continues its line.
  std::string Path(const std::vector<const Stroke*>& strokes) const {
    std::string d;
    const Stroke* last = nullptr;
    for (const Stroke* s : strokes) {
      const bool joined =
          last && std::abs(last->x1 - s->x0) < kJoin && std::abs(last->y1 - s->y0) < kJoin;
      if (!joined) d += Text("M%.2f %.2f", X(s->x0), Y(s->y0));
      d += Text("L%.2f %.2f", X(s->x1), Y(s->y1));
      last = s;
    }
    return d;
  }

 private:
  double width_;
  double height_;
  HomeCorner corner_;
};

}  // namespace

double CutWidthInches(double depthInches) {
  return std::clamp(0.012 + 0.5 * depthInches, 0.012, 0.15);
}

std::string CutColour(double depthInches, double deepestInches) {
  const double share = deepestInches > 0 ? std::clamp(depthInches / deepestInches, 0.0, 1.0) : 1;
  const auto mix = [&](int light, int dark) {
    return static_cast<int>(std::lround(light + (dark - light) * share));
  };
  return Text("#%02x%02x%02x", mix(0xb8, 0x1c), mix(0x9a, 0x14), mix(0x6c, 0x0c));
}

std::string DrawPicture(const std::vector<Stroke>& strokes, const TableGeometry& table,
                        HomeCorner corner) {
  std::vector<const Stroke*> travel;
  std::map<long, std::vector<const Stroke*>> cuts;  // by depth step, shallow first
  double deepest = 0;
  for (const Stroke& s : strokes) {
    if (s.depth > 0) {
      deepest = std::max(deepest, s.depth);
      cuts[std::lround(s.depth / kDepthStep)].push_back(&s);
    } else {
      travel.push_back(&s);
    }
  }
  const Drawing drawing(table, corner);
  std::string svg = drawing.Begin() + drawing.Scale();
  if (!travel.empty()) {
    svg += "<path id=\"travel\" fill=\"none\" stroke=\"#a3a9b0\" stroke-width=\"1.2\" d=\"" +
           drawing.Path(travel) + "\"/>\n";
  }
  svg += "<g id=\"cuts\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
  for (const auto& [step, lines] : cuts) {
    const double depth = lines.front()->depth;
    svg += Text("<path stroke=\"%s\" stroke-width=\"%.2f\" data-depth=\"%.4f\" d=\"",
                CutColour(depth, deepest).c_str(), CutWidthInches(depth) * kPixelsPerInch, depth) +
           drawing.Path(lines) + "\"/>\n";
  }
  return svg + "</g>\n" + drawing.Home() + "</svg>\n";
}

}  // namespace k7sim
