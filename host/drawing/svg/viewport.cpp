#include "drawing/svg/viewport.h"

#include <algorithm>

#include "drawing/svg/scanner.h"

namespace k7host {

std::optional<SvgBox> SvgViewBox(SvgNode node) {
  const std::string_view value = SvgTree::Attribute(node, "viewBox");
  if (value.empty()) return std::nullopt;
  SvgScanner scanner(value);
  SvgBox box;
  box.x = scanner.Number();
  box.y = scanner.Number();
  box.width = scanner.Number();
  box.height = scanner.Number();
  if (!(box.width > 0.0 && box.height > 0.0))
    throw SvgFault{value.data(), "viewBox without a size"};
  return box;
}

SvgMatrix SvgViewport(const SvgBox& view, const SvgBox& place, std::string_view aspect) {
  double sx = place.width / view.width;
  double sy = place.height / view.height;
  double x = place.x;
  double y = place.y;
  if (!aspect.starts_with("none")) {
    const double scale =
        aspect.find("slice") != std::string_view::npos ? std::max(sx, sy) : std::min(sx, sy);
    const auto share = [&](std::string_view low, std::string_view high) {
      return aspect.find(low) != std::string_view::npos    ? 0.0
             : aspect.find(high) != std::string_view::npos ? 1.0
                                                           : 0.5;
    };
    x += (place.width - view.width * scale) * share("xMin", "xMax");
    y += (place.height - view.height * scale) * share("YMin", "YMax");
    sx = sy = scale;
  }
  return {sx, 0, 0, sy, x - view.x * sx, y - view.y * sy};
}

double SvgLengthOf(SvgNode node, std::string_view name, double whole, double otherwise) {
  const std::string_view value = SvgTree::Attribute(node, name);
  if (value.empty() || value == "auto") return otherwise;
  return SvgLength(value, whole);
}

}  // namespace k7host
