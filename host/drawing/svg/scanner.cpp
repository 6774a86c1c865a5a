// Numbers, flags and units.
#include "drawing/svg/scanner.h"

#include <charconv>
#include <cmath>

namespace k7host {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

struct Unit {
  std::string_view name;
  double pixels;
};
constexpr Unit kUnits[] = {
    {"", 1.0},
    {"px", 1.0},
    {"in", kPixelsPerInch},
    {"cm", kPixelsPerInch / 2.54},
    {"mm", kPixelsPerInch / 25.4},
    {"q", kPixelsPerInch / 101.6},
    {"Q", kPixelsPerInch / 101.6},
    {"pt", kPixelsPerInch / 72.0},
    {"pc", kPixelsPerInch / 6.0},
};

}  // namespace

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

void SvgScanner::SkipBlanks() {
  while (at_ != end_ && IsBlank(*at_)) ++at_;
}

bool SvgScanner::AtEnd() {
  SkipBlanks();
  if (at_ != end_ && *at_ == ',') {
    ++at_;
    SkipBlanks();
  }
  return at_ == end_;
}

bool SvgScanner::Skip(char c) {
  if (Peek() != c || at_ == end_) return false;
  ++at_;
  return true;
}

bool SvgScanner::StartsNumber() const {
  return IsDigit(Peek()) || Peek() == '.' || Peek() == '-' || Peek() == '+';
}

double SvgScanner::Number() {
  AtEnd();
  const char* const start = at_;
  bool negative = false;
  if (Peek() == '+' || Peek() == '-') negative = Next() == '-';
  double value = 0.0;
  if (!IsDigit(Peek()) && Peek() != '.') throw SvgFault{start, "number expected"};
  const auto [end, error] = std::from_chars(at_, end_, value);
  if (error == std::errc::result_out_of_range) throw SvgFault{start, "number out of range"};
  if (error != std::errc()) throw SvgFault{start, "malformed number"};
  at_ = end;
  return negative ? -value : value;
}

bool SvgScanner::Flag() {
  AtEnd();
  if (Peek() != '0' && Peek() != '1') throw SvgFault{at_, "0 or 1 expected"};
  return Next() == '1';
}

std::string_view SvgScanner::Name() {
  const char* const start = at_;
  while (at_ != end_ && ((*at_ >= 'a' && *at_ <= 'z') || (*at_ >= 'A' && *at_ <= 'Z'))) ++at_;
  return {start, static_cast<std::size_t>(at_ - start)};
}

double SvgLength(std::string_view value, double whole) {
  SvgScanner scanner(value);
  const double number = scanner.Number();
  const std::string_view unit = Trimmed(scanner.Rest());
  if (unit == "%") return number * whole / 100.0;
  for (const Unit& row : kUnits) {
    if (row.name == unit) return number * row.pixels;
  }
  throw SvgFault{unit.data(), "unit '" + std::string(unit.substr(0, 8)) +
                                  "' is not supported: use px, in, mm, cm, pt or pc"};
}

}  // namespace k7host
