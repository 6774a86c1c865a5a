// The plotter file reader: one pass over the bytes, one command at a time.
#include "drawing/hpgl.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

#include "drawing/curve.h"
#include "drawing/hpgl_axes.h"
#include "drawing/hpgl_encoded.h"
#include "drawing/hpgl_label.h"
#include "drawing/hpgl_text.h"
#include "drawing/pen.h"

namespace k7host {
namespace {

constexpr char kEscape = '\x1b';
constexpr char kEndOfText = '\x03';

// Chord angles that plotters take, degrees.
constexpr double kFinestChord = 0.36;
constexpr double kCoarsestChord = 180.0;

constexpr std::string_view kSpeed = "speeds and forces come from the engrave settings";
constexpr std::string_view kLine = "every line is cut as one whole line of the cutter's width";
constexpr std::string_view kFill = "areas are not filled, only their outlines are cut";
constexpr std::string_view kPage = "the table is the page";
constexpr std::string_view kOutput = "the file gets no answer";
constexpr std::string_view kPlotter = "meant for the plotter itself";
constexpr std::string_view kLetters = "letters are those built in";

// Commands that do not move the pen. In alphabetical order.
constexpr struct {
  std::string_view name;
  std::string_view why;
} kPassedOver[] = {
    {"AC", kFill},    {"AS", kSpeed},   {"BP", kPage},    {"CA", kLetters}, {"CC", kPlotter},
    {"CR", kLine},    {"CS", kLetters}, {"FS", kSpeed},   {"FT", kFill},    {"LA", kLine},
    {"LT", kLine},    {"MC", kLine},    {"MT", kPlotter}, {"NP", kLine},    {"OA", kOutput},
    {"OC", kOutput},  {"OD", kOutput},  {"OE", kOutput},  {"OF", kOutput},  {"OH", kOutput},
    {"OI", kOutput},  {"OO", kOutput},  {"OP", kOutput},  {"OS", kOutput},  {"OW", kOutput},
    {"PC", kLine},    {"PP", kPlotter}, {"PS", kPage},    {"PT", kFill},    {"PW", kLine},
    {"QL", kPlotter}, {"SA", kLetters}, {"SS", kLetters}, {"ST", kPlotter}, {"TR", kLine},
    {"UL", kLine},    {"VS", kSpeed},   {"WU", kLine},
};

class Reader {
 public:
  Reader(std::string_view text, double toleranceInches)
      : text_(text), toleranceUnits_(toleranceInches * kPlotterUnitsPerInch) {}

  Drawing Read() {
    Drawing drawing;
    if (ReadPrologue()) {
      while (!text_.Error() && NextCommand()) {
      }
    }
    std::vector<Stroke> strokes = pen_.Take();
    drawing.notices = std::move(notices_);
    if (text_.Error()) {
      drawing.error = std::move(text_.Error());
    } else {
      drawing.strokes = std::move(strokes);
    }
    return drawing;
  }

 private:
  struct Command {
    std::string_view name;
    bool (Reader::*carryOut)();
  };
  static const Command kCommands[];

  bool ReadPrologue() {
    if (text_.Skip("\xef\xbb\xbf")) Notice("byte order mark", kPlotter, 0);
    if (text_.Peek() == '\xff' && text_.Peek(1) == '\xfe') {
      return text_.Fail(0, "the file is UTF-16 text: save it as plain text (ASCII or UTF-8)");
    }
    return true;
  }

  // Reads and carries out one command; false at the end of the text and after an error.
  bool NextCommand() {
    text_.SkipSeparators();
    if (text_.AtEnd()) return false;
    at_ = text_.At();
    const char first = text_.Next();
    if (first == kEscape) return Escape();
    if (first == kEndOfText) {
      Notice("ETX", kPlotter, at_);
      return true;
    }
    if (!HpglText::IsLetter(first)) {
      if (HpglText::StartsNumber(first)) return text_.Fail(at_, "number without a command");
      return text_.Fail(at_, "unexpected " + HpglText::Quoted(first));
    }
    if (!HpglText::IsLetter(text_.Peek())) {
      return text_.Fail(at_, "unknown command '" + std::string(1, first) + "'");
    }
    const char name[2] = {HpglText::Upper(first), HpglText::Upper(text_.Next())};
    if (!CarryOut(std::string_view(name, 2))) return false;
    if (pen_.IsFull()) return text_.Fail(at_, "the drawing has too many points");
    return true;
  }

  bool CarryOut(std::string_view name);

  void Notice(std::string_view what, std::string_view why, std::size_t at) {
    if (CountAgain(notices_, what)) return;
    const TextPlace place = text_.Place(at);
    notices_.push_back({std::string(what), std::string(why), 1, place.line, place.column});
  }

  // ----------------------------------------------------------- switching a plotter on and off

  // "ESC." and a letter, some of which take numbers up to a colon; "ESC%" and other printer
  // commands up to a capital letter; "ESC E"; PJL lines behind "ESC%-12345X".
  bool Escape() {
    const char kind = text_.Peek();
    if (kind == '.') {
      text_.Next();
      return DeviceControl();
    }
    if (kind == 'E') {
      text_.Next();
      Notice("ESC E", kPlotter, at_);
      return true;
    }
    if (kind == '\0' || std::string_view("%&*").find(kind) == std::string_view::npos) {
      return text_.Fail(at_, "unexpected " + HpglText::Quoted(kEscape));
    }
    text_.Next();
    const bool job = text_.Skip("-12345X");
    if (!job) {
      while (HpglText::StartsNumber(text_.Peek()) || (text_.Peek() >= 'a' && text_.Peek() <= 'z')) {
        text_.Next();
      }
      if (text_.Peek() < '@' || text_.Peek() > 'Z') {
        return text_.Fail(at_, "unexpected " + HpglText::Quoted(kEscape));
      }
      text_.Next();
    }
    Notice(std::string("ESC") + kind, kPlotter, at_);
    if (job) SkipPrinterLines();
    return true;
  }

  void SkipPrinterLines() {
    while (text_.Skip("@PJL")) {
      while (!text_.AtEnd() && text_.Next() != '\n') {
      }
    }
  }

  bool DeviceControl() {
    const char letter = text_.Peek();
    if (letter < '(' || letter > 'Z') {
      return text_.Fail(at_, "unexpected " + HpglText::Quoted(kEscape));
    }
    text_.Next();
    if (std::string_view("@HIMNPQST").find(letter) != std::string_view::npos) {
      while (HpglText::IsDigit(text_.Peek()) || text_.Peek() == ';' || text_.Peek() == ',') {
        text_.Next();
      }
      text_.Skip(":");
    }
    Notice(std::string("ESC.") + letter, kPlotter, at_);
    return true;
  }

  // ------------------------------------------------------------------------- state and moves

  bool Initialise() {
    if (!text_.ReadNumbers()) return false;
    if (!text_.Numbers().empty()) return text_.Fail(text_.Numbers()[0].at, "IN takes no number");
    pen_.Select(1);
    axes_ = {};
    relative_ = false;
    letters_ = {};
    return pen_.Go({});
  }

  // DF: as IN, but pen, place and P1 and P2 stay.
  bool Default() {
    if (!NumbersUpTo(0, "DF")) return false;
    axes_.ClearWindow();
    relative_ = false;
    letters_ = {};
    return true;
  }

  bool SelectPen() {
    if (!text_.ReadNumbers()) return false;
    const auto& numbers = text_.Numbers();
    if (numbers.size() > 1) return text_.Fail(numbers[1].at, "SP takes one pen number");
    const double pen = numbers.empty() ? 0.0 : numbers[0].value;
    if (pen < 0.0 || pen > kMaxPen || pen != std::floor(pen)) {
      return text_.Fail(numbers[0].at,
                        "pen number is not a whole number from 0 to " + std::to_string(kMaxPen));
    }
    pen_.Select(static_cast<int>(pen));
    return true;
  }

  bool Absolute() {
    relative_ = false;
    return Moves();
  }
  bool Relative() {
    relative_ = true;
    return Moves();
  }
  bool PenUp() {
    pen_.Lift();
    return Moves();
  }
  bool PenDown() {
    if (!MayDraw()) return false;
    pen_.Lower();
    return Moves();
  }

  // Moves through the pairs that follow, drawing while the pen is down.
  bool Moves() {
    if (!text_.ReadNumbers()) return false;
    const auto& numbers = text_.Numbers();
    if (numbers.size() % 2 != 0) return text_.Fail(numbers.back().at, "X coordinate without a Y");
    for (std::size_t i = 0; i < numbers.size(); i += 2) {
      if (!Go(User(numbers[i].value, numbers[i + 1].value, relative_), numbers[i].at)) return false;
    }
    return true;
  }

  PlotterPoint User(double x, double y, bool relative) const {
    if (!relative) return {x, y};
    const PlotterPoint here = axes_.FromTable(pen_.Here());
    return {here.x + x, here.y + y};
  }

  bool Go(const PlotterPoint& user, std::size_t at) { return GoTable(axes_.ToTable(user), at); }

  bool GoTable(const PlotterPoint& table, std::size_t at) {
    if (pen_.Go(table)) return true;
    return text_.Fail(at,
                      pen_.IsFull() ? "the drawing has too many points" : "position out of range");
  }

  // The next page would be drawn over this one.
  bool EndPage() {
    text_.SkipParameters();
    Notice(text_.From(at_).substr(0, 2), kPage, at_);
    pen_.Lift();
    pageEnded_ = pageEnded_ || pen_.HasDrawn();
    return true;
  }

  bool MayDraw() {
    if (!pageEnded_) return true;
    return text_.Fail(at_, "a second page begins here: engrave one page at a time");
  }

  bool Encoded() {
    const std::size_t start = text_.At();
    HpglEncoded encoded(text_);
    HpglEncoded::Step step;
    while (encoded.Next(step)) {
      if (step.pen) {
        pen_.Select(*step.pen);
        continue;
      }
      if (step.penUp) {
        pen_.Lift();
      } else {
        if (!MayDraw()) return false;
        pen_.Lower();
      }
      if (!Go(User(step.x, step.y, !step.absolute), step.at)) return false;
      if (pen_.IsFull()) return text_.Fail(start, "the drawing has too many points");
    }
    return !text_.Error();
  }

  // ---------------------------------------------------------------------- scaling and rotation

  bool NumbersUpTo(std::size_t most, std::string_view name) {
    if (!text_.ReadNumbers()) return false;
    if (text_.Numbers().size() <= most) return true;
    return text_.Fail(text_.Numbers()[most].at,
                      std::string(name) + " takes " + std::to_string(most) + " numbers at most");
  }

  double Value(std::size_t index, double otherwise = 0.0) const {
    return index < text_.Numbers().size() ? text_.Numbers()[index].value : otherwise;
  }

  bool InputPoints() {
    if (!NumbersUpTo(4, "IP")) return false;
    switch (text_.Numbers().size()) {
      case 0:
        axes_.ForgetPoints();
        return true;
      case 2:
        if (axes_.MoveFirstPoint({Value(0), Value(1)})) return true;
        return text_.Fail(at_, "IP with P1 alone: P2 has not been named before");
      case 4:
        axes_.SetPoints({Value(0), Value(1)}, {Value(2), Value(3)});
        return true;
      default:
        return text_.Fail(at_, "IP takes the two coordinates of P1, or the four of P1 and P2");
    }
  }

  bool Scale() {
    if (!NumbersUpTo(7, "SC")) return false;
    const std::size_t count = text_.Numbers().size();
    if (count == 0) {
      axes_.ClearWindow();
      return true;
    }
    if (count < 4) return text_.Fail(at_, "SC takes xmin,xmax,ymin,ymax");
    const double kind = Value(4);
    if (kind != 0.0 && kind != 1.0 && kind != 2.0) {
      return text_.Fail(text_.Numbers()[4].at, "SC knows the kinds 0, 1 and 2");
    }
    const UserWindow window{Value(0),
                            Value(1),
                            Value(2),
                            Value(3),
                            kind == 1.0,
                            kind == 2.0,
                            std::clamp(Value(5, 50.0), 0.0, 100.0),
                            std::clamp(Value(6, 50.0), 0.0, 100.0)};
    if (axes_.SetWindow(window)) return true;
    if (kind != 2.0 && !axes_.HasPoints()) {
      return text_.Fail(at_,
                        "SC without IP: the size of the page is not known; add IP with P1 and P2, "
                        "or write the file without scaling");
    }
    return text_.Fail(at_, "SC makes a window without a size");
  }

  bool Rotate() {
    if (!NumbersUpTo(1, "RO")) return false;
    const double degrees = Value(0);
    if (degrees != 0.0 && degrees != 90.0 && degrees != 180.0 && degrees != 270.0) {
      return text_.Fail(text_.Numbers()[0].at, "RO takes 0, 90, 180 or 270 degrees");
    }
    axes_.SetRotation(static_cast<int>(degrees));
    return true;
  }

  // --------------------------------------------------------------------------- arcs and figures

  // Pieces of an arc: by the chord angle of the file, which may want a polygon, or by tolerance.
  int PiecesOf(double radius, double sweepDegrees, const HpglNumber* chord) const {
    if (chord == nullptr)
      return ArcPieces(radius * axes_.UnitSize(), sweepDegrees, toleranceUnits_);
    const double angle = std::clamp(std::fabs(chord->value), kFinestChord, kCoarsestChord);
    return std::max(1, static_cast<int>(std::ceil(std::fabs(sweepDegrees) / angle - 1e-9)));
  }

  // From the point at `startDegrees` on; all in user units.
  bool Arc(const PlotterPoint& center, double radius, double startDegrees, double sweepDegrees,
           const HpglNumber* chord) {
    const int pieces = PiecesOf(radius, sweepDegrees, chord);
    for (int i = 1; i <= pieces; ++i) {
      if (!Go(OnCircle(center, radius, startDegrees + sweepDegrees * i / pieces), at_))
        return false;
    }
    return true;
  }

  static PlotterPoint OnCircle(const PlotterPoint& center, double radius, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
  }

  bool ArcAbsolute() { return ArcAround(false); }
  bool ArcRelative() { return ArcAround(true); }

  // AA, AR: center, angle, chord angle.
  bool ArcAround(bool relative) {
    if (!NumbersUpTo(4, relative ? "AR" : "AA")) return false;
    if (text_.Numbers().size() < 3) return text_.Fail(at_, "an arc takes its center and its angle");
    const double sweep = Value(2);
    if (std::fabs(sweep) > 360.0) {
      return text_.Fail(text_.Numbers()[2].at, "the angle of an arc is at most 360 degrees");
    }
    const PlotterPoint center = User(Value(0), Value(1), relative);
    const PlotterPoint here = axes_.FromTable(pen_.Here());
    const double radius = std::hypot(here.x - center.x, here.y - center.y);
    const double start =
        std::atan2(here.y - center.y, here.x - center.x) * 180.0 / std::numbers::pi;
    return Arc(center, radius, start, sweep, Chord(3));
  }

  const HpglNumber* Chord(std::size_t index) const {
    return index < text_.Numbers().size() ? &text_.Numbers()[index] : nullptr;
  }

  // CI: the pen comes back to the center, down if it was down. Plotters leave a dot at the
  // center then, and files that do not want it lift the pen before.
  bool Circle() {
    if (!NumbersUpTo(2, "CI") || !MayDraw()) return false;
    if (text_.Numbers().empty()) return text_.Fail(at_, "CI takes a radius");
    const double radius = Value(0);
    return Figure([&](const PlotterPoint& center) {
      if (!Go(OnCircle(center, radius, 0.0), at_)) return false;
      pen_.Lower();
      return Arc(center, radius, 0.0, 360.0, Chord(1));
    });
  }

  // EW: the outline of a wedge: radius, start, sweep, chord angle.
  bool Wedge() {
    if (!NumbersUpTo(4, "EW") || !MayDraw()) return false;
    if (text_.Numbers().size() < 3) return text_.Fail(at_, "EW takes a radius and two angles");
    if (std::fabs(Value(1)) > 360.0 || std::fabs(Value(2)) > 360.0) {
      return text_.Fail(at_, "the angles of a wedge are at most 360 degrees");
    }
    return Figure([&](const PlotterPoint& center) {
      pen_.Lower();
      return Go(OnCircle(center, Value(0), Value(1)), at_) &&
             Arc(center, Value(0), Value(1), Value(2), Chord(3)) && Go(center, at_);
    });
  }

  bool EdgeRectangle() { return Rectangle(false, "EA"); }
  bool EdgeRectangleRelative() { return Rectangle(true, "ER"); }
  bool FillRectangle() {
    Notice("RA", kFill, at_);
    return Rectangle(false, "RA");
  }
  bool FillRectangleRelative() {
    Notice("RR", kFill, at_);
    return Rectangle(true, "RR");
  }

  bool Rectangle(bool relative, std::string_view name) {
    if (!NumbersUpTo(2, name) || !MayDraw()) return false;
    if (text_.Numbers().size() != 2) {
      return text_.Fail(at_, std::string(name) + " takes the opposite corner");
    }
    const PlotterPoint corner = User(Value(0), Value(1), relative);
    return Figure([&](const PlotterPoint& start) {
      pen_.Lower();
      return Go({corner.x, start.y}, at_) && Go(corner, at_) && Go({start.x, corner.y}, at_) &&
             Go(start, at_);
    });
  }

  // A figure that lowers the pen by itself and then leaves it where and as it was.
  template <class Draw>
  bool Figure(const Draw& draw) {
    const PlotterPoint start = pen_.Here();
    pen_.Suspend();
    if (!draw(axes_.FromTable(start))) return false;
    pen_.Lift();
    if (!GoTable(start, at_)) return false;
    pen_.Resume();
    return true;
  }

  // -------------------------------------------------------------------------------- lettering

  bool Terminator() { return letters_.ReadTerminator(text_, at_); }

  bool LetterSize() {
    if (!NumbersUpTo(2, "SI")) return false;
    if (text_.Numbers().size() == 1) return text_.Fail(at_, "SI takes a width and a height");
    return letters_.SetSize(Value(0, HpglLetters::kWidthCm), Value(1, HpglLetters::kHeightCm)) ||
           text_.Fail(at_, "letters without a size");
  }

  bool Direction() {
    if (!NumbersUpTo(2, "DI")) return false;
    if (text_.Numbers().size() == 1) return text_.Fail(at_, "DI takes a run and a rise");
    return letters_.SetDirection(Value(0, 1.0), Value(1, 0.0)) ||
           text_.Fail(at_, "a direction of 0,0");
  }

  bool Label() {
    if (!MayDraw()) return false;
    return letters_.Write(text_, at_, axes_, pen_);
  }

  HpglText text_;
  double toleranceUnits_;
  Pen pen_;
  HpglAxes axes_;
  HpglLetters letters_;
  bool relative_ = false;
  bool pageEnded_ = false;  // something was drawn before it
  std::size_t at_ = 0;      // the command being read
  std::vector<DrawingNotice> notices_;
};

const Reader::Command Reader::kCommands[] = {
    {"PU", &Reader::PenUp},
    {"PD", &Reader::PenDown},
    {"PA", &Reader::Absolute},
    {"PR", &Reader::Relative},
    {"PE", &Reader::Encoded},
    {"SP", &Reader::SelectPen},
    {"IN", &Reader::Initialise},
    {"DF", &Reader::Default},
    {"IP", &Reader::InputPoints},
    {"SC", &Reader::Scale},
    {"RO", &Reader::Rotate},
    {"AA", &Reader::ArcAbsolute},
    {"AR", &Reader::ArcRelative},
    {"CI", &Reader::Circle},
    {"EW", &Reader::Wedge},
    {"EA", &Reader::EdgeRectangle},
    {"ER", &Reader::EdgeRectangleRelative},
    {"RA", &Reader::FillRectangle},
    {"RR", &Reader::FillRectangleRelative},
    {"LB", &Reader::Label},
    {"DT", &Reader::Terminator},
    {"SI", &Reader::LetterSize},
    {"DI", &Reader::Direction},
    {"PG", &Reader::EndPage},
    {"EC", &Reader::EndPage},
    {"AF", &Reader::EndPage},
    {"AH", &Reader::EndPage},
};

bool Reader::CarryOut(std::string_view name) {
  for (const Command& command : kCommands) {
    if (command.name == name) return (this->*command.carryOut)();
  }
  for (const auto& row : kPassedOver) {
    if (row.name != name) continue;
    text_.SkipParameters();
    Notice(name, row.why, at_);
    return true;
  }
  return text_.ReadNumbers() &&
         text_.Fail(at_, "unknown command '" + std::string(text_.From(at_).substr(0, 2)) + "'");
}

}  // namespace

Drawing ReadHpgl(std::string_view text, double toleranceInches) {
  return Reader(text, toleranceInches).Read();
}

}  // namespace k7host
