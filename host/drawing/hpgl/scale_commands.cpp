// Scaling and rotation.
#include <algorithm>

#include "drawing/hpgl/commands.h"

namespace k7host {
namespace {

bool InputPoints(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(4, "IP")) return false;
  switch (plotter.text.Numbers().size()) {
    case 0:
      plotter.axes.ForgetPoints();
      return true;
    case 2:
      if (plotter.axes.MoveFirstPoint({plotter.Value(0), plotter.Value(1)})) return true;
      return plotter.Fail("IP with P1 alone: P2 has not been named before");
    case 4:
      plotter.axes.SetPoints({plotter.Value(0), plotter.Value(1)},
                             {plotter.Value(2), plotter.Value(3)});
      return true;
    default:
      return plotter.Fail("IP takes the two coordinates of P1, or the four of P1 and P2");
  }
}

bool Scale(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(7, "SC")) return false;
  const std::size_t count = plotter.text.Numbers().size();
  if (count == 0) {
    plotter.axes.ClearWindow();
    return true;
  }
  if (count < 4) return plotter.Fail("SC takes xmin,xmax,ymin,ymax");
  const double kind = plotter.Value(4);
  if (kind != 0.0 && kind != 1.0 && kind != 2.0) {
    return plotter.text.Fail(plotter.text.Numbers()[4].at, "SC knows the kinds 0, 1 and 2");
  }
  const UserWindow window{plotter.Value(0),
                          plotter.Value(1),
                          plotter.Value(2),
                          plotter.Value(3),
                          kind == 1.0,
                          kind == 2.0,
                          std::clamp(plotter.Value(5, 50.0), 0.0, 100.0),
                          std::clamp(plotter.Value(6, 50.0), 0.0, 100.0)};
  if (plotter.axes.SetWindow(window)) return true;
  if (kind != 2.0 && !plotter.axes.HasPoints()) {
    return plotter.Fail(
        "SC without IP: the size of the page is not known; add IP with P1 and P2, "
        "or write the file without scaling");
  }
  return plotter.Fail("SC makes a window without a size");
}

bool Rotate(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(1, "RO")) return false;
  const double degrees = plotter.Value(0);
  if (degrees != 0.0 && degrees != 90.0 && degrees != 180.0 && degrees != 270.0) {
    return plotter.text.Fail(plotter.text.Numbers()[0].at, "RO takes 0, 90, 180 or 270 degrees");
  }
  plotter.axes.SetRotation(static_cast<int>(degrees));
  return true;
}

constexpr HpglCommand kCommands[] = {
    {"IP", &InputPoints},
    {"SC", &Scale},
    {"RO", &Rotate},
};

}  // namespace

std::span<const HpglCommand> HpglScaleCommands() {
  return kCommands;
}

}  // namespace k7host
