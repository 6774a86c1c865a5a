// The basic shapes of SVG, and its paths.
#pragma once

#include <string_view>

#include "drawing/svg/outline.h"
#include "drawing/svg/tree.h"
#include "drawing/svg/viewport.h"

namespace k7host {

// Whether an element of this name is a path, rect, circle, ellipse, line, polyline or polygon.
// [any]
bool IsSvgShape(std::string_view name);

// Draws such an element, without the end of its last line. `size` is that of the viewport around
// it. Throws SvgFault. [any]
void DrawSvgShape(SvgNode node, std::string_view name, const SvgSize& size, SvgOutline& outline);

}  // namespace k7host
