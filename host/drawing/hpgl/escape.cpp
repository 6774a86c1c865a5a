// The codes that switch a plotter on and off.
#include <string>
#include <string_view>

#include "drawing/hpgl/commands.h"

namespace k7host {
namespace {

constexpr char kEscape = '\x1b';

void SkipPrinterLines(HpglPlotter& plotter) {
  while (plotter.text.Skip("@PJL")) {
    while (!plotter.text.AtEnd() && plotter.text.Next() != '\n') {
    }
  }
}

bool DeviceControl(HpglPlotter& plotter) {
  const char letter = plotter.text.Peek();
  if (letter < '(' || letter > 'Z') {
    return plotter.Fail("unexpected " + HpglText::Quoted(kEscape));
  }
  plotter.text.Next();
  if (std::string_view("@HIMNPQST").find(letter) != std::string_view::npos) {
    while (HpglText::IsDigit(plotter.text.Peek()) || plotter.text.Peek() == ';' ||
           plotter.text.Peek() == ',') {
      plotter.text.Next();
    }
    plotter.text.Skip(":");
  }
  plotter.Notice(std::string("ESC.") + letter, kHpglPlotter);
  return true;
}

}  // namespace

bool ReadHpglEscape(HpglPlotter& plotter) {
  const char kind = plotter.text.Peek();
  if (kind == '.') {
    plotter.text.Next();
    return DeviceControl(plotter);
  }
  if (kind == 'E') {
    plotter.text.Next();
    plotter.Notice("ESC E", kHpglPlotter);
    return true;
  }
  if (kind == '\0' || std::string_view("%&*").find(kind) == std::string_view::npos) {
    return plotter.Fail("unexpected " + HpglText::Quoted(kEscape));
  }
  plotter.text.Next();
  const bool job = plotter.text.Skip("-12345X");
  if (!job) {
    while (HpglText::StartsNumber(plotter.text.Peek()) ||
           (plotter.text.Peek() >= 'a' && plotter.text.Peek() <= 'z')) {
      plotter.text.Next();
    }
    if (plotter.text.Peek() < '@' || plotter.text.Peek() > 'Z') {
      return plotter.Fail("unexpected " + HpglText::Quoted(kEscape));
    }
    plotter.text.Next();
  }
  plotter.Notice(std::string("ESC") + kind, kHpglPlotter);
  if (job) SkipPrinterLines(plotter);
  return true;
}

}  // namespace k7host
