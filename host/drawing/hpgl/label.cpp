// Places the letters of a label.
#include "drawing/hpgl/label.h"

#include <cmath>

#include "drawing/stroke_font.h"

namespace k7host {
namespace {

constexpr double kAdvance = 1.5;   // widths from letter to letter
constexpr double kLineFeed = 2.0;  // heights from line to line

}  // namespace

bool HpglLetters::SetSize(double widthCm, double heightCm) {
  if (widthCm == 0.0 || heightCm == 0.0) return false;
  width_ = widthCm * kPlotterUnitsPerCm;
  height_ = heightCm * kPlotterUnitsPerCm;
  return true;
}

bool HpglLetters::SetDirection(double run, double rise) {
  const double length = std::hypot(run, rise);
  if (length == 0.0) return false;
  cosine_ = run / length;
  sine_ = rise / length;
  return true;
}

bool HpglLetters::ReadTerminator(HpglText& text, std::size_t command) {
  terminator_ = '\x03';
  if (text.AtEnd() || text.Peek() == ';') return true;
  terminator_ = text.Next();
  // The terminator itself is never drawn, which mode 1 says in words.
  if (!text.Skip(",") || text.Skip("1")) return true;
  return text.Fail(command, "DT with another mode than 1");
}

PlotterPoint HpglLetters::Along(const HpglAxes& axes, double x, double y) const {
  return axes.Turn({x * cosine_ - y * sine_, x * sine_ + y * cosine_});
}

bool HpglLetters::DrawLetter(char c, const HpglAxes& axes, Pen& pen) const {
  const PlotterPoint start = pen.Here();
  const auto go = [&](double x, double y) {
    const PlotterPoint way = Along(axes, x, y);
    return pen.Go({start.x + way.x, start.y + way.y});
  };
  for (const GlyphStroke& stroke : GlyphStrokes(c)) {
    pen.Lift();
    for (const GlyphPoint& point : stroke) {
      if (!go(point.x * width_ / kGlyphWidth, point.y * height_ / kGlyphHeight)) return false;
      pen.Lower();
    }
  }
  pen.Lift();
  return go(kAdvance * width_, 0.0);
}

bool HpglLetters::Write(HpglText& text, std::size_t command, const HpglAxes& axes, Pen& pen) {
  const PlotterPoint here = pen.Here();
  if (!follows_ || here.x != end_.x || here.y != end_.y) lineStart_ = here;
  pen.Suspend();
  while (true) {
    if (text.AtEnd()) {
      return text.Fail(command, terminator_ == '\x03' ? "LB is not ended by ETX (byte 0x03)"
                                                      : "LB is not ended by the terminator of DT");
    }
    const std::size_t at = text.At();
    const char c = text.Next();
    if (c == terminator_) break;
    bool good = true;
    if (c == '\r') {
      good = pen.Go(lineStart_);
    } else if (c == '\n') {
      const PlotterPoint down = Along(axes, 0.0, -kLineFeed * height_);
      lineStart_ = {lineStart_.x + down.x, lineStart_.y + down.y};
      good = pen.Go({pen.Here().x + down.x, pen.Here().y + down.y});
    } else if (HasGlyph(c)) {
      good = DrawLetter(c, axes, pen);
    } else {
      return text.Fail(at, "no letter for " + HpglText::Quoted(c) +
                               ": convert the text to curves in the drawing program");
    }
    if (!good) {
      return text.Fail(at,
                       pen.IsFull() ? "the drawing has too many points" : "position out of range");
    }
  }
  pen.Resume();
  end_ = pen.Here();
  follows_ = true;
  return true;
}

}  // namespace k7host
