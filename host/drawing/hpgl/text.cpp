// The lexical rules of plotter files.
#include "drawing/hpgl/text.h"

#include <utility>

namespace k7host {
namespace {

// Fractions are read to nine digits.
constexpr double kFinestFraction = 1e9;

}  // namespace

bool HpglText::IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool HpglText::IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool HpglText::IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool HpglText::StartsNumber(char c) {
  return IsDigit(c) || c == '+' || c == '-' || c == '.';
}

char HpglText::Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string HpglText::Quoted(char c) {
  if (c >= 0x20 && c < 0x7f) return "character '" + std::string(1, c) + "'";
  constexpr char kHex[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return std::string("byte 0x") + kHex[byte >> 4] + kHex[byte & 15];
}

char HpglText::Peek(std::size_t ahead) const {
  return pos_ + ahead < text_.size() ? text_[pos_ + ahead] : '\0';
}

bool HpglText::Skip(std::string_view wanted) {
  if (text_.substr(pos_, wanted.size()) != wanted) return false;
  pos_ += wanted.size();
  return true;
}

void HpglText::SkipBlanks() {
  while (!AtEnd() && IsBlank(text_[pos_])) ++pos_;
}

void HpglText::SkipSeparators() {
  while (!AtEnd() && (IsBlank(text_[pos_]) || text_[pos_] == ';')) ++pos_;
}

void HpglText::SkipParameters() {
  while (!AtEnd()) {
    const char c = text_[pos_];
    if (c == '"') {
      const std::size_t end = text_.find('"', pos_ + 1);
      pos_ = end == std::string_view::npos ? text_.size() : end + 1;
    } else if (StartsNumber(c) || IsBlank(c) || c == ',') {
      ++pos_;
    } else {
      return;
    }
  }
}

bool HpglText::ReadNumbers() {
  numbers_.clear();
  SkipBlanks();
  while (StartsNumber(Peek())) {
    if (!ReadNumber()) return false;
    SkipBlanks();
    if (Peek() != ',') continue;
    ++pos_;
    SkipBlanks();
    if (!StartsNumber(Peek())) return Fail(pos_, "number expected");
  }
  return true;
}

bool HpglText::ReadNumber() {
  const std::size_t at = pos_;
  bool negative = false;
  if (Peek() == '+' || Peek() == '-') negative = text_[pos_++] == '-';
  bool anyDigit = false;
  double value = 0.0;  // an absurdly long number grows to infinity, which is out of range
  for (; IsDigit(Peek()); ++pos_, anyDigit = true) value = value * 10.0 + (text_[pos_] - '0');
  if (Peek() == '.') {
    ++pos_;
    double fraction = 0.0;
    double scale = 1.0;
    for (; IsDigit(Peek()); ++pos_, anyDigit = true) {
      if (scale >= kFinestFraction) continue;  // the rest is far less than a step
      fraction = fraction * 10.0 + (text_[pos_] - '0');
      scale *= 10.0;
    }
    value += fraction / scale;
  }
  if (!anyDigit || Peek() == '.') return Fail(at, "malformed number");
  if (!(value <= kMaxPlotterUnits)) return Fail(at, "number out of range");
  numbers_.push_back({negative ? -value : value, at});
  return true;
}

bool HpglText::Fail(std::size_t at, std::string message) {
  const TextPlace place = Place(at);
  error_ = DrawingError{place.line, place.column, std::move(message)};
  return false;
}

}  // namespace k7host
