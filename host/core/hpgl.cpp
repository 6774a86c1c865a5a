// The plotter file reader: one pass over the bytes, one command at a time.
#include "core/hpgl.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace k7host {
namespace {

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool StartsNumber(char c) {
  return IsDigit(c) || c == '+' || c == '-' || c == '.';
}
char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Fractions are read to nine digits.
constexpr double kFinestFraction = 1e9;

struct Number {
  double value = 0.0;
  std::size_t at = 0;  // its first byte
};

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  HpglDrawing Read() {
    while (!error_ && NextCommand()) {
    }
    LiftPen();
    HpglDrawing drawing;
    if (error_) {
      drawing.error = std::move(error_);
    } else {
      drawing.strokes = std::move(strokes_);
    }
    return drawing;
  }

 private:
  // Reads and carries out one command; false at the end of the text.
  bool NextCommand() {
    while (pos_ < text_.size() && (IsBlank(text_[pos_]) || text_[pos_] == ';')) ++pos_;
    if (pos_ >= text_.size()) return false;
    const std::size_t at = pos_;
    const char first = text_[pos_];
    if (!IsLetter(first)) {
      if (StartsNumber(first)) return Fail(at, "number without a command");
      return Fail(at, "unexpected " + Quoted(first));
    }
    ++pos_;
    if (pos_ >= text_.size() || !IsLetter(text_[pos_])) {
      return Fail(at, "unknown command '" + std::string(1, first) + "'");
    }
    const char name[2] = {Upper(first), Upper(text_[pos_])};
    ++pos_;
    numbers_.clear();
    if (!ReadNumbers()) return false;
    return CarryOut(std::string_view(name, 2), at);
  }

  bool CarryOut(std::string_view name, std::size_t at) {
    if (name == "IN") return Initialise();
    if (name == "SP") return SelectPen();
    if (name == "PA" || name == "PR") {
      relative_ = name == "PR";
      return Moves();
    }
    if (name == "PU") {
      LiftPen();
      return Moves();
    }
    if (name == "PD") {
      LowerPen();
      return Moves();
    }
    return Fail(at, "unknown command '" + std::string(text_.substr(at, 2)) + "'");
  }

  bool Initialise() {
    if (!numbers_.empty()) return Fail(numbers_[0].at, "IN takes no number");
    LiftPen();
    relative_ = false;
    here_ = {};
    pen_ = 1;
    return true;
  }

  bool SelectPen() {
    if (numbers_.size() > 1) return Fail(numbers_[1].at, "SP takes one pen number");
    const double pen = numbers_.empty() ? 0.0 : numbers_[0].value;
    if (pen < 0.0 || pen > kMaxPen || pen != std::floor(pen)) {
      return Fail(numbers_[0].at,
                  "pen number is not a whole number from 0 to " + std::to_string(kMaxPen));
    }
    LiftPen();
    pen_ = static_cast<int>(pen);
    return true;
  }

  // Moves through the pairs just read, drawing while the pen is down.
  bool Moves() {
    if (numbers_.size() % 2 != 0) return Fail(numbers_.back().at, "X coordinate without a Y");
    for (std::size_t i = 0; i < numbers_.size(); i += 2) {
      PlotterPoint to{numbers_[i].value, numbers_[i + 1].value};
      if (relative_) {
        to.x += here_.x;
        to.y += here_.y;
      }
      if (std::fabs(to.x) > kMaxPlotterUnits || std::fabs(to.y) > kMaxPlotterUnits) {
        return Fail(numbers_[i].at, "position out of range");
      }
      here_ = to;
      if (penDown_) stroke_.points.push_back(to);
    }
    return true;
  }

  void LowerPen() {
    if (penDown_ || pen_ == 0) return;
    penDown_ = true;
    stroke_ = {pen_, {here_}};
  }

  void LiftPen() {
    if (penDown_) strokes_.push_back(std::move(stroke_));
    penDown_ = false;
  }

  bool ReadNumbers() {
    SkipBlanks();
    while (pos_ < text_.size() && StartsNumber(text_[pos_])) {
      if (!ReadNumber()) return false;
      SkipBlanks();
      if (pos_ >= text_.size() || text_[pos_] != ',') continue;
      ++pos_;
      SkipBlanks();
      if (pos_ >= text_.size() || !StartsNumber(text_[pos_])) return Fail(pos_, "number expected");
    }
    return true;
  }

  bool ReadNumber() {
    const std::size_t at = pos_;
    bool negative = false;
    if (text_[pos_] == '+' || text_[pos_] == '-') negative = text_[pos_++] == '-';
    bool anyDigit = false;
    double value = 0.0;  // an absurdly long number grows to infinity, which is out of range
    for (; pos_ < text_.size() && IsDigit(text_[pos_]); ++pos_, anyDigit = true) {
      value = value * 10.0 + (text_[pos_] - '0');
    }
    if (pos_ < text_.size() && text_[pos_] == '.') {
      ++pos_;
      double fraction = 0.0;
      double scale = 1.0;
      for (; pos_ < text_.size() && IsDigit(text_[pos_]); ++pos_, anyDigit = true) {
        if (scale >= kFinestFraction) continue;  // the rest is far less than a step
        fraction = fraction * 10.0 + (text_[pos_] - '0');
        scale *= 10.0;
      }
      value += fraction / scale;
    }
    if (!anyDigit || (pos_ < text_.size() && text_[pos_] == '.')) {
      return Fail(at, "malformed number");
    }
    if (!(value <= kMaxPlotterUnits)) return Fail(at, "number out of range");
    numbers_.push_back({negative ? -value : value, at});
    return true;
  }

  void SkipBlanks() {
    while (pos_ < text_.size() && IsBlank(text_[pos_])) ++pos_;
  }

  static std::string Quoted(char c) {
    if (c >= 0x20 && c < 0x7f) return "character '" + std::string(1, c) + "'";
    constexpr char kHex[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("byte 0x") + kHex[byte >> 4] + kHex[byte & 15];
  }

  // Notes the error at byte `at`; always false, so that callers can return it.
  bool Fail(std::size_t at, std::string message) {
    HpglError error{1, 1, std::move(message)};
    for (const char c : text_.substr(0, at)) {
      if (c == '\n') {
        ++error.line;
        error.column = 1;
      } else {
        ++error.column;
      }
    }
    error_ = std::move(error);
    return false;
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  std::vector<Number> numbers_;  // of the command being read
  PlotterPoint here_;
  bool relative_ = false;
  bool penDown_ = false;
  int pen_ = 1;
  Stroke stroke_;  // the one being drawn, while the pen is down
  std::vector<Stroke> strokes_;
  std::optional<HpglError> error_;
};

}  // namespace

HpglDrawing ReadHpgl(std::string_view text) {
  return Reader(text).Read();
}

std::string HpglErrorText(std::string_view file, const HpglError& error) {
  return std::string(file) + ":" + std::to_string(error.line) + ":" + std::to_string(error.column) +
         ": " + error.message;
}

}  // namespace k7host
