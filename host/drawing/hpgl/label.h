// Lettering in plotter files: LB, with the size, direction and terminator that other commands set.
#pragma once

#include <cstddef>

#include "drawing/hpgl/axes.h"
#include "drawing/hpgl/text.h"
#include "drawing/pen.h"

namespace k7host {

// [any]
class HpglLetters {
 public:
  // Size of a capital until SI sets another.
  static constexpr double kWidthCm = 0.19;
  static constexpr double kHeightCm = 0.27;

  // False for a size of 0.
  bool SetSize(double widthCm, double heightCm);

  // False for (0, 0).
  bool SetDirection(double run, double rise);

  // The byte behind "DT"; none: ETX again.
  bool ReadTerminator(HpglText& text, std::size_t command);

  // Draws the text behind "LB" up to the terminator and leaves the pen where the next letter would
  // begin. A carriage return goes back to where the line began, a line feed to the next line.
  bool Write(HpglText& text, std::size_t command, const HpglAxes& axes, Pen& pen);

 private:
  PlotterPoint Along(const HpglAxes& axes, double x, double y) const;
  bool DrawLetter(char c, const HpglAxes& axes, Pen& pen) const;

  double width_ = kWidthCm * kPlotterUnitsPerCm;  // plotter units
  double height_ = kHeightCm * kPlotterUnitsPerCm;
  double cosine_ = 1.0;
  double sine_ = 0.0;
  char terminator_ = '\x03';
  PlotterPoint lineStart_;
  PlotterPoint end_;      // of the text before
  bool follows_ = false;  // there is a text before
};

}  // namespace k7host
