// The pen of a plotter: what it draws, kept within bounds.
#pragma once

#include <cstddef>
#include <vector>

#include "drawing/drawing.h"

namespace k7host {

// Positions are plotter units on the table, and finite. [any]
class Pen {
 public:
  const PlotterPoint& Here() const { return here_; }
  bool IsDown() const { return down_; }
  int Number() const { return number_; }

  // Lowers the pen; with pen 0 (put away) it stays up.
  void Lower();
  void Lift();

  // Lifts, then takes another pen; 0 puts it away.
  void Select(int number);

  // Goes there, drawing while it is down. False, and nothing is done: the place is beyond
  // kMaxPlotterUnits, or the drawing has kMostPoints.
  bool Go(const PlotterPoint& to);

  // Lifts the pen, so that a figure can be drawn by Lower, Go and Lift; Resume lowers it again
  // where it then is, if it was down. A figure leaves no dot at the place of the resumption.
  void Suspend();
  void Resume();

  bool IsFull() const { return points_ >= kMostPoints; }
  bool HasDrawn() const { return !strokes_.empty(); }

  // The strokes so far; the pen is lifted before.
  std::vector<Stroke> Take();

 private:
  PlotterPoint here_;
  int number_ = 1;
  bool down_ = false;
  bool resumed_ = false;    // the stroke under way begins where a figure left the pen
  bool suspended_ = false;  // the pen was down before the figure
  std::size_t points_ = 0;
  Stroke stroke_;  // the one being drawn, while the pen is down
  std::vector<Stroke> strokes_;
};

}  // namespace k7host
