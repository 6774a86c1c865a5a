// The coordinates of a plotter file: from the numbers in it to plotter units on the table.
#pragma once

#include <optional>

#include "drawing/drawing.h"

namespace k7host {

// The window that SC lays over the points P1 and P2, in user units.
struct UserWindow {
  double xMin = 0.0;
  double xMax = 0.0;  // with `factors`: plotter units in a user unit
  double yMin = 0.0;
  double yMax = 0.0;
  bool isotropic = false;  // both axes by the smaller scale
  bool factors = false;
  double leftPercent = 50.0;  // isotropic: share of the room left over that comes before
  double bottomPercent = 50.0;
};

// IP, SC and RO. Without scaling and rotation every number stays as it is. [any]
class HpglAxes {
 public:
  // P1 and P2 as IP names them.
  void SetPoints(const PlotterPoint& p1, const PlotterPoint& p2);
  // P1 alone: P2 keeps its distance from it. False when there is no P2 yet.
  bool MoveFirstPoint(const PlotterPoint& p1);
  void ForgetPoints() { p2_.reset(), p1_ = {}; }

  // False: the window has no size, or needs P1 and P2 and they are not known or coincide.
  bool SetWindow(const UserWindow& window);
  void ClearWindow() { window_.reset(); }
  bool HasPoints() const { return p2_.has_value(); }

  // Degrees, a multiple of 90; turns about (0, 0).
  void SetRotation(int degrees);

  PlotterPoint ToTable(const PlotterPoint& user) const;
  PlotterPoint FromTable(const PlotterPoint& table) const;

  // Turns a vector in plotter units as RO does.
  PlotterPoint Turn(const PlotterPoint& vector) const;

  // Size in plotter units of the longer user unit.
  double UnitSize() const;

 private:
  struct Line {
    double from = 0.0;   // user
    double to = 0.0;     // plotter units
    double times = 1.0;  // plotter units for `per` user units
    double per = 1.0;
    double Map(double user) const { return (user - from) * times / per + to; }
    double Back(double plotter) const { return (plotter - to) * per / times + from; }
  };
  bool Measure(const UserWindow& window);

  PlotterPoint p1_;
  std::optional<PlotterPoint> p2_;
  std::optional<UserWindow> window_;
  Line x_;
  Line y_;
  int quarters_ = 0;
};

}  // namespace k7host
