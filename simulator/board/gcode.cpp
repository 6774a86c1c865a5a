#include "board/gcode.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace k7sim {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Reads a decimal number at `at` and moves past it. The standard library's functions would also
// take exponents and hexadecimal digits, which a board does not know.
double TakeNumber(std::string_view line, std::size_t& at) {
  double sign = 1;
  if (at < line.size() && (line[at] == '-' || line[at] == '+')) {
    if (line[at] == '-') sign = -1;
    ++at;
  }
  double value = 0;
  for (; at < line.size() && IsDigit(line[at]); ++at) value = value * 10 + (line[at] - '0');
  if (at < line.size() && line[at] == '.') {
    double place = 0.1;
    for (++at; at < line.size() && IsDigit(line[at]); ++at, place /= 10) {
      value += place * (line[at] - '0');
    }
  }
  // A number too large for a double counts as one larger than any machine.
  return sign * (std::isfinite(value) && value < 1e9 ? value : 1e9);
}

}  // namespace

std::optional<double> Gcode::Word(char wanted) const {
  for (const GcodeWord& word : words) {
    if (word.letter == wanted) return word.value;
  }
  return std::nullopt;
}

bool LooksLikeGcode(std::string_view line) {
  return line.size() >= 2 && (Upper(line[0]) == 'G' || Upper(line[0]) == 'M') && IsDigit(line[1]);
}

std::vector<Gcode> ParseGcodeLine(std::string_view line) {
  std::vector<Gcode> codes;
  std::size_t at = 0;
  while (at < line.size()) {
    const char c = line[at];
    if (c == ';') break;
    if (c == '(') {
      const std::size_t close = line.find(')', at);
      if (close == std::string_view::npos) break;
      at = close + 1;
      continue;
    }
    ++at;
    if (!IsLetter(c)) continue;
    while (at < line.size() && line[at] == ' ') ++at;
    const char letter = Upper(c);
    const double value = TakeNumber(line, at);
    if (letter == 'G' || letter == 'M') {
      codes.push_back({letter, static_cast<int>(value), {}});
    } else if (!codes.empty()) {
      codes.back().words.push_back({letter, value});
    }
  }
  return codes;
}

}  // namespace k7sim
