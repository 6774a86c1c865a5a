// Nearest end first, found by a grid over the ends of all strokes that are left.
#include "drawing/stroke_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

namespace k7host {
namespace {

double Distance(const PlotterPoint& a, const PlotterPoint& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

double Travel(const std::vector<Stroke>& strokes) {
  double way = 0.0;
  PlotterPoint here;
  for (const Stroke& stroke : strokes) {
    way += Distance(here, stroke.points.front());
    here = stroke.points.back();
  }
  return (way + Distance(here, {})) / kPlotterUnitsPerInch;
}

// The ends of strokes in square cells, about two to a cell.
class EndGrid {
 public:
  explicit EndGrid(const std::vector<Stroke>& strokes) : strokes_(strokes) {
    low_ = high_ = strokes[0].points[0];
    for (const Stroke& stroke : strokes) {
      for (const PlotterPoint& end : {stroke.points.front(), stroke.points.back()}) {
        low_ = {std::min(low_.x, end.x), std::min(low_.y, end.y)};
        high_ = {std::max(high_.x, end.x), std::max(high_.y, end.y)};
      }
    }
    const double width = std::max(high_.x - low_.x, 1.0);
    const double height = std::max(high_.y - low_.y, 1.0);
    cell_ = std::max(std::sqrt(width * height / static_cast<double>(strokes.size())),
                     std::max(width, height) / kMostColumns);
    columns_ = static_cast<int>(width / cell_) + 1;
    rows_ = static_cast<int>(height / cell_) + 1;
    cells_.resize(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_));
    for (std::size_t i = 0; i < strokes.size(); ++i) {
      CellOf(strokes[i].points.front()).push_back({i, false});
      if (strokes[i].points.size() > 1) CellOf(strokes[i].points.back()).push_back({i, true});
    }
    taken_.resize(strokes.size());
  }

  struct End {
    std::size_t stroke = 0;
    bool last = false;
  };

  // Takes the stroke with the nearest end; the earlier one of those equally near.
  End TakeNearest(const PlotterPoint& here) {
    End best;
    double nearest = std::numeric_limits<double>::infinity();
    const int column = Column(here.x);
    const int row = Row(here.y);
    const int rings = std::max(columns_, rows_);
    // An end in ring n lies at least n - 1 cells away, for a place within the grid or beside it.
    for (int ring = 0; ring <= rings && (ring - 1) * cell_ <= nearest; ++ring) {
      for (int r = std::max(0, row - ring); r <= std::min(rows_ - 1, row + ring); ++r) {
        const bool whole = r == row - ring || r == row + ring;
        const int step = whole ? 1 : std::max(1, 2 * ring);
        for (int c = column - ring; c <= column + ring; c += step) {
          if (c >= 0 && c < columns_) Look(At(c, r), here, best, nearest);
        }
      }
    }
    taken_[best.stroke] = true;
    return best;
  }

 private:
  static constexpr double kMostColumns = 1000.0;

  int Column(double x) const { return Index(x - low_.x, columns_); }
  int Row(double y) const { return Index(y - low_.y, rows_); }
  int Index(double distance, int count) const {
    return static_cast<int>(std::clamp(distance / cell_, 0.0, count - 1.0));
  }
  std::vector<End>& At(int column, int row) {
    return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                  static_cast<std::size_t>(column)];
  }
  std::vector<End>& CellOf(const PlotterPoint& p) { return At(Column(p.x), Row(p.y)); }

  void Look(std::vector<End>& cell, const PlotterPoint& here, End& best, double& nearest) {
    std::erase_if(cell, [this](const End& end) { return taken_[end.stroke]; });
    for (const End& end : cell) {
      const std::vector<PlotterPoint>& points = strokes_[end.stroke].points;
      const double distance = Distance(here, end.last ? points.back() : points.front());
      if (distance > nearest || (distance == nearest && end.stroke >= best.stroke)) continue;
      nearest = distance;
      best = end;
    }
  }

  const std::vector<Stroke>& strokes_;
  PlotterPoint low_;
  PlotterPoint high_;
  double cell_ = 1.0;
  int columns_ = 1;
  int rows_ = 1;
  std::vector<std::vector<End>> cells_;
  std::vector<bool> taken_;
};

}  // namespace

TravelSaved OptimiseOrder(std::vector<Stroke>& strokes) {
  TravelSaved saved;
  saved.beforeInches = saved.afterInches = Travel(strokes);
  std::vector<int> pens;
  for (const Stroke& stroke : strokes) {
    if (std::find(pens.begin(), pens.end(), stroke.pen) == pens.end()) pens.push_back(stroke.pen);
  }
  std::vector<Stroke> ordered;
  ordered.reserve(strokes.size());
  PlotterPoint here;
  for (const int pen : pens) {
    std::vector<Stroke> group;
    std::copy_if(strokes.begin(), strokes.end(), std::back_inserter(group),
                 [pen](const Stroke& stroke) { return stroke.pen == pen; });
    EndGrid grid(group);
    for (std::size_t i = 0; i < group.size(); ++i) {
      const EndGrid::End end = grid.TakeNearest(here);
      ordered.push_back(group[end.stroke]);
      std::vector<PlotterPoint>& points = ordered.back().points;
      if (end.last) std::reverse(points.begin(), points.end());
      here = points.back();
    }
  }
  const double after = Travel(ordered);
  if (!(after < saved.beforeInches)) return saved;
  saved.afterInches = after;
  strokes = std::move(ordered);
  return saved;
}

}  // namespace k7host
