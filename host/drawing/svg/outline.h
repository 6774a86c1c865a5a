// Shapes of SVG as strokes of a pen: lines, curves and arcs, transformed and made straight.
#pragma once

#include <array>
#include <string_view>

#include "drawing/pen.h"
#include "drawing/svg/matrix.h"

namespace k7host {

// From pixels on the page, Y downwards, to plotter units on the table, Y upwards.
struct SvgPage {
  double heightPixels = 0.0;
  double tolerancePixels = 0.0;
};

// Draws in the coordinates of one element. Everything throws SvgFault with the place `at` when a
// point is out of range. [any]
class SvgOutline {
 public:
  SvgOutline(Pen& pen, const SvgPage& page, const SvgMatrix& matrix, const char* at)
      : pen_(pen), page_(page), matrix_(matrix), at_(at) {}

  void SetPlace(const char* at) { at_ = at; }
  const PlotterPoint& Here() const { return here_; }

  // Lifts the pen there.
  void Move(const PlotterPoint& to);
  void Line(const PlotterPoint& to);
  void Cubic(const PlotterPoint& b, const PlotterPoint& c, const PlotterPoint& to);
  void Quadratic(const PlotterPoint& b, const PlotterPoint& to);
  // An elliptic arc as path data names it.
  void Arc(double rx, double ry, double rotationDegrees, bool large, bool sweep,
           const PlotterPoint& to);
  // Back to where the last Move led; draws a dot if nothing was drawn since.
  void Close();
  void End() { pen_.Lift(); }

 private:
  void Lower();
  bool Go(const PlotterPoint& pixels);

  Pen& pen_;
  const SvgPage& page_;
  const SvgMatrix& matrix_;
  const char* at_;
  PlotterPoint start_;
  PlotterPoint here_;
};

// Draws the data of a path. Throws SvgFault. [any]
void DrawPath(std::string_view data, SvgOutline& outline);

}  // namespace k7host
