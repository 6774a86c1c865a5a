// Drawings as short texts, for the tests of what reads them.
#pragma once

#include <cstdio>
#include <string>

#include "drawing/drawing.h"

namespace k7host {

// The strokes as "pen:x,y x,y; ...", or the error. Numbers count in `unit` plotter units and have
// `digits` digits that matter.
inline std::string DrawingText(const Drawing& drawing, double unit = 1.0, int digits = 6) {
  if (drawing.error) return DrawingErrorText("f", *drawing.error);
  std::string text;
  for (const Stroke& stroke : drawing.strokes) {
    text += (text.empty() ? "" : "; ") + std::to_string(stroke.pen) + ":";
    for (const PlotterPoint& point : stroke.points) {
      char buffer[64];
      std::snprintf(buffer, sizeof buffer, "%.*g,%.*g", digits, point.x / unit + 0.0, digits,
                    point.y / unit + 0.0);
      text += (text.back() == ':' ? "" : " ") + std::string(buffer);
    }
  }
  return text;
}

}  // namespace k7host
