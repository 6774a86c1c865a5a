// The transformations of SVG.
#pragma once

#include <string_view>

#include "drawing/drawing.h"

namespace k7host {

// Maps (x, y) to (a x + c y + e, b x + d y + f).
struct SvgMatrix {
  double a = 1.0;
  double b = 0.0;
  double c = 0.0;
  double d = 1.0;
  double e = 0.0;
  double f = 0.0;

  PlotterPoint Map(const PlotterPoint& p) const {
    return {a * p.x + c * p.y + e, b * p.x + d * p.y + f};
  }
  // First `inner`, then this.
  SvgMatrix After(const SvgMatrix& inner) const;
};

// The value of a transform attribute. Throws SvgFault. [any]
SvgMatrix ParseTransform(std::string_view value);

}  // namespace k7host
