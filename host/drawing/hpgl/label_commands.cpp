// Lettering.
#include "drawing/hpgl/commands.h"

namespace k7host {
namespace {

bool Terminator(HpglPlotter& plotter) {
  return plotter.letters.ReadTerminator(plotter.text, plotter.command);
}

bool LetterSize(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(2, "SI")) return false;
  if (plotter.text.Numbers().size() == 1) return plotter.Fail("SI takes a width and a height");
  return plotter.letters.SetSize(plotter.Value(0, HpglLetters::kWidthCm),
                                 plotter.Value(1, HpglLetters::kHeightCm)) ||
         plotter.Fail("letters without a size");
}

bool Direction(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(2, "DI")) return false;
  if (plotter.text.Numbers().size() == 1) return plotter.Fail("DI takes a run and a rise");
  return plotter.letters.SetDirection(plotter.Value(0, 1.0), plotter.Value(1, 0.0)) ||
         plotter.Fail("a direction of 0,0");
}

bool Label(HpglPlotter& plotter) {
  if (!plotter.MayDraw()) return false;
  return plotter.letters.Write(plotter.text, plotter.command, plotter.axes, plotter.pen);
}

constexpr HpglCommand kCommands[] = {
    {"LB", &Label},
    {"DT", &Terminator},
    {"SI", &LetterSize},
    {"DI", &Direction},
};

}  // namespace

std::span<const HpglCommand> HpglLabelCommands() {
  return kCommands;
}

}  // namespace k7host
