// The colours of a drawing's pens: which are cut, and in which order.
#pragma once

#include <cstdint>
#include <vector>

#include "drawing/drawing.h"

namespace k7host {

// One colour with what is drawn in it.
struct ColourRow {
  int pen = 1;
  std::uint32_t rgb = 0;      // 0xRRGGBB
  std::uint32_t strokes = 0;  // how many
  bool cut = true;
};

// The colours that are drawn with, at most 16, in the order of the drawing. Pens of a file that
// knows no colours are those of a plotter: 1 black, 2 red, 3 green, 4 yellow, 5 blue, 6 magenta, 7
// cyan, and so on. [any]
std::vector<ColourRow> ColoursOf(const Drawing& drawing);

// Keeps the strokes of the colours that are cut, one colour after the other. Strokes of a pen that
// stands in no row come last. [any]
void CutByColour(std::vector<Stroke>& strokes, const std::vector<ColourRow>& rows);

}  // namespace k7host
