// The data of a path: a letter for each kind of piece and its numbers.
#include <string>

#include "drawing/svg/outline.h"
#include "drawing/svg/scanner.h"

namespace k7host {
namespace {

class PathReader {
 public:
  PathReader(std::string_view data, SvgOutline& outline) : scanner_(data), outline_(outline) {}

  void Read() {
    bool begun = false;
    while (!scanner_.AtEnd()) {
      const char* const at = scanner_.At();
      outline_.SetPlace(at);
      if (scanner_.StartsNumber()) {
        // Another piece of the same kind; behind a move it is a line.
        if (command_ == 'M') command_ = 'L';
        if (!begun || command_ == 'Z') throw SvgFault{at, "number without a command"};
      } else {
        const char letter = scanner_.Next();
        relative_ = letter >= 'a' && letter <= 'z';
        command_ = relative_ ? static_cast<char>(letter - 'a' + 'A') : letter;
        if (!begun && command_ != 'M') throw SvgFault{at, "a path begins with M"};
        begun = true;
      }
      Piece(at);
    }
    outline_.End();
  }

 private:
  PlotterPoint Point() {
    const PlotterPoint here = relative_ ? outline_.Here() : PlotterPoint{};
    const double x = scanner_.Number();
    const double y = scanner_.Number();
    return {here.x + x, here.y + y};
  }

  // What a smooth curve goes on with: the last handle mirrored, if the last piece was of its kind.
  PlotterPoint Mirrored(char kind) const {
    const PlotterPoint here = outline_.Here();
    if (handleOf_ != kind) return here;
    return {2 * here.x - handle_.x, 2 * here.y - handle_.y};
  }

  void Cubic(const PlotterPoint& first) {
    const PlotterPoint second = Point();
    outline_.Cubic(first, second, Point());
    handle_ = second;
    handleOf_ = 'C';
  }

  void Quadratic(const PlotterPoint& handle) {
    outline_.Quadratic(handle, Point());
    handle_ = handle;
    handleOf_ = 'Q';
  }

  void Piece(const char* at) {
    const PlotterPoint here = outline_.Here();
    const char before = handleOf_;
    switch (command_) {
      case 'M':
        outline_.Move(Point());
        break;
      case 'Z':
        outline_.Close();
        break;
      case 'L':
        outline_.Line(Point());
        break;
      case 'H':
        outline_.Line({scanner_.Number() + (relative_ ? here.x : 0.0), here.y});
        break;
      case 'V':
        outline_.Line({here.x, scanner_.Number() + (relative_ ? here.y : 0.0)});
        break;
      case 'C':
        return Cubic(Point());
      case 'S':
        return Cubic(Mirrored('C'));
      case 'Q':
        return Quadratic(Point());
      case 'T':
        return Quadratic(Mirrored('Q'));
      case 'A': {
        const double rx = scanner_.Number();
        const double ry = scanner_.Number();
        const double rotation = scanner_.Number();
        const bool large = scanner_.Flag();
        const bool sweep = scanner_.Flag();
        outline_.Arc(rx, ry, rotation, large, sweep, Point());
        break;
      }
      default:
        throw SvgFault{at, "unknown path command '" + std::string(1, *at) + "'"};
    }
    if (handleOf_ == before) handleOf_ = '\0';
  }

  SvgScanner scanner_;
  SvgOutline& outline_;
  char command_ = '\0';
  bool relative_ = false;
  PlotterPoint handle_;
  char handleOf_ = '\0';  // the kind of curve that has set it
};

}  // namespace

void DrawPath(std::string_view data, SvgOutline& outline) {
  PathReader(data, outline).Read();
}

}  // namespace k7host
