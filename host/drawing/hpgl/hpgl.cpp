// The plotter file reader: one pass over the bytes, one command at a time.
#include "drawing/hpgl/hpgl.h"

#include <string>
#include <utility>

#include "drawing/hpgl/commands.h"

namespace k7host {
namespace {

constexpr char kEscape = '\x1b';
constexpr char kEndOfText = '\x03';

bool CarryOut(HpglPlotter& plotter, std::string_view name) {
  for (const auto commands :
       {HpglMoveCommands(), HpglScaleCommands(), HpglFigureCommands(), HpglLabelCommands()}) {
    for (const HpglCommand& command : commands) {
      if (command.name == name) return command.carryOut(plotter);
    }
  }
  if (const auto why = WhyHpglPassesOver(name)) {
    plotter.text.SkipParameters();
    plotter.Notice(name, *why);
    return true;
  }
  return plotter.text.ReadNumbers() &&
         plotter.Fail("unknown command '" +
                      std::string(plotter.text.From(plotter.command).substr(0, 2)) + "'");
}

bool ReadPrologue(HpglPlotter& plotter) {
  if (plotter.text.Skip("\xef\xbb\xbf")) plotter.Notice("byte order mark", kHpglPlotter);
  if (plotter.text.Peek() == '\xff' && plotter.text.Peek(1) == '\xfe') {
    return plotter.Fail("the file is UTF-16 text: save it as plain text (ASCII or UTF-8)");
  }
  return true;
}

// Reads and carries out one command; false at the end of the text and after an error.
bool NextCommand(HpglPlotter& plotter) {
  plotter.text.SkipSeparators();
  if (plotter.text.AtEnd()) return false;
  plotter.command = plotter.text.At();
  const char first = plotter.text.Next();
  if (first == kEscape) return ReadHpglEscape(plotter);
  if (first == kEndOfText) {
    plotter.Notice("ETX", kHpglPlotter);
    return true;
  }
  if (!HpglText::IsLetter(first)) {
    if (HpglText::StartsNumber(first)) return plotter.Fail("number without a command");
    return plotter.Fail("unexpected " + HpglText::Quoted(first));
  }
  if (!HpglText::IsLetter(plotter.text.Peek())) {
    return plotter.Fail("unknown command '" + std::string(1, first) + "'");
  }
  const char name[2] = {HpglText::Upper(first), HpglText::Upper(plotter.text.Next())};
  if (!CarryOut(plotter, std::string_view(name, 2))) return false;
  if (plotter.pen.IsFull()) return plotter.Fail("the drawing has too many points");
  return true;
}

}  // namespace

Drawing ReadHpgl(std::string_view text, double toleranceInches) {
  HpglPlotter plotter(text, toleranceInches);
  if (ReadPrologue(plotter)) {
    while (!plotter.text.Error() && NextCommand(plotter)) {
    }
  }
  Drawing drawing;
  std::vector<Stroke> strokes = plotter.pen.Take();
  drawing.notices = std::move(plotter.notices);
  if (plotter.text.Error()) {
    drawing.error = std::move(plotter.text.Error());
  } else {
    drawing.strokes = std::move(strokes);
  }
  return drawing;
}

}  // namespace k7host
