// Colours of pens.
#include "drawing/colours.h"

#include <algorithm>
#include <cstddef>

namespace k7host {
namespace {

constexpr std::size_t kMostRows = 16;  // of the driver's table

// Of the pens 1 to 16, then again from the first. None is white, which is never engraved.
constexpr std::uint32_t kPlotterColours[] = {
    0x000000, 0xff0000, 0x008000, 0xffff00, 0x0000ff, 0xff00ff, 0x00ffff, 0x808080,
    0x800000, 0x00ff00, 0x808000, 0x000080, 0x800080, 0x008080, 0xff8000, 0xc0c0c0};

std::uint32_t ColourOfPen(const Drawing& drawing, int pen) {
  for (const PenColour& colour : drawing.colours) {
    if (colour.pen == pen) return colour.rgb;
  }
  return kPlotterColours[static_cast<std::size_t>(std::max(pen - 1, 0)) % kMostRows];
}

std::size_t RowOf(const std::vector<ColourRow>& rows, int pen) {
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [pen](const ColourRow& row) { return row.pen == pen; });
  return static_cast<std::size_t>(found - rows.begin());
}

}  // namespace

std::vector<ColourRow> ColoursOf(const Drawing& drawing) {
  std::vector<ColourRow> rows;
  for (const Stroke& stroke : drawing.strokes) {
    const std::size_t row = RowOf(rows, stroke.pen);
    if (row < rows.size()) {
      ++rows[row].strokes;
    } else if (rows.size() < kMostRows) {
      rows.push_back({stroke.pen, ColourOfPen(drawing, stroke.pen), 1, true});
    }
  }
  return rows;
}

void CutByColour(std::vector<Stroke>& strokes, const std::vector<ColourRow>& rows) {
  std::erase_if(strokes, [&](const Stroke& stroke) {
    const std::size_t row = RowOf(rows, stroke.pen);
    return row < rows.size() && !rows[row].cut;
  });
  std::stable_sort(strokes.begin(), strokes.end(), [&](const Stroke& a, const Stroke& b) {
    return RowOf(rows, a.pen) < RowOf(rows, b.pen);
  });
}

}  // namespace k7host
