#include "drawing/svg/shapes.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "drawing/svg/scanner.h"

namespace k7host {
namespace {

void Polygon(std::string_view points, bool closed, SvgOutline& outline) {
  SvgScanner scanner(points);
  bool begun = false;
  while (!scanner.AtEnd()) {
    outline.SetPlace(scanner.At());
    const double x = scanner.Number();
    const double y = scanner.Number();
    if (begun) {
      outline.Line({x, y});
    } else {
      outline.Move({x, y});
    }
    begun = true;
  }
  if (begun && closed) outline.Close();
}

void Ellipse(double cx, double cy, double rx, double ry, SvgOutline& outline) {
  if (!(rx > 0.0 && ry > 0.0)) return;
  outline.Move({cx + rx, cy});
  outline.Arc(rx, ry, 0.0, false, true, {cx - rx, cy});
  outline.Arc(rx, ry, 0.0, false, true, {cx + rx, cy});
}

void Rectangle(SvgNode node, const SvgSize& size, SvgOutline& outline) {
  const double x = size.X(node, "x");
  const double y = size.Y(node, "y");
  const double width = size.X(node, "width");
  const double height = size.Y(node, "height");
  if (!(width > 0.0 && height > 0.0)) return;
  double rx = SvgLengthOf(node, "rx", size.width, -1.0);
  double ry = SvgLengthOf(node, "ry", size.height, -1.0);
  if (rx < 0.0) rx = std::max(ry, 0.0);
  if (ry < 0.0) ry = rx;
  rx = std::min(rx, width / 2.0);
  ry = std::min(ry, height / 2.0);
  outline.Move({x + rx, y});
  outline.Line({x + width - rx, y});
  const bool round = rx > 0.0 && ry > 0.0;
  const auto corner = [&](double toX, double toY) {
    if (round) outline.Arc(rx, ry, 0.0, false, true, {toX, toY});
  };
  corner(x + width, y + ry);
  outline.Line({x + width, y + height - ry});
  corner(x + width - rx, y + height);
  outline.Line({x + rx, y + height});
  corner(x, y + height - ry);
  outline.Line({x, y + ry});
  corner(x + rx, y);
  outline.Close();
}

}  // namespace

bool IsSvgShape(std::string_view name) {
  constexpr std::string_view kShapes[] = {"path", "rect",     "circle", "ellipse",
                                          "line", "polyline", "polygon"};
  return std::find(std::begin(kShapes), std::end(kShapes), name) != std::end(kShapes);
}

void DrawSvgShape(SvgNode node, std::string_view name, const SvgSize& size, SvgOutline& outline) {
  if (name == "path") {
    DrawPath(SvgTree::Attribute(node, "d"), outline);
  } else if (name == "rect") {
    Rectangle(node, size, outline);
  } else if (name == "circle") {
    const double r = SvgLengthOf(node, "r", std::hypot(size.width, size.height) / std::sqrt(2.0));
    Ellipse(size.X(node, "cx"), size.Y(node, "cy"), r, r, outline);
  } else if (name == "ellipse") {
    Ellipse(size.X(node, "cx"), size.Y(node, "cy"), size.X(node, "rx"), size.Y(node, "ry"),
            outline);
  } else if (name == "line") {
    outline.Move({size.X(node, "x1"), size.Y(node, "y1")});
    outline.Line({size.X(node, "x2"), size.Y(node, "y2")});
  } else {
    Polygon(SvgTree::Attribute(node, "points"), name == "polygon", outline);
  }
}

}  // namespace k7host
