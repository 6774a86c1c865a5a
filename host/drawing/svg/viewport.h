// How an SVG file measures: view boxes, their place on the page, and lengths in them.
#pragma once

#include <optional>
#include <string_view>

#include "drawing/svg/matrix.h"
#include "drawing/svg/tree.h"

namespace k7host {

struct SvgBox {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
};

// The viewBox of an element; none without one. Throws SvgFault for one without a size. [any]
std::optional<SvgBox> SvgViewBox(SvgNode node);

// Lays the view box over a place on the page as preserveAspectRatio wants it. [any]
SvgMatrix SvgViewport(const SvgBox& view, const SvgBox& place, std::string_view aspect);

// The length that an attribute names, in pixels; a percentage is one of `whole`. Throws SvgFault as
// SvgLength does. [any]
double SvgLengthOf(SvgNode node, std::string_view name, double whole, double otherwise = 0.0);

// The size that percentages count from.
struct SvgSize {
  double width = 0.0;
  double height = 0.0;

  double X(SvgNode node, std::string_view name) const { return SvgLengthOf(node, name, width); }
  double Y(SvgNode node, std::string_view name) const { return SvgLengthOf(node, name, height); }
};

}  // namespace k7host
