#include "board/gcode.h"

#include <algorithm>
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
  constexpr std::string_view kCommands = "GM";
  constexpr std::string_view kWords = "NXYZIJKRFST";
  if (line.size() < 2) return false;
  if (kCommands.find(Upper(line[0])) != kCommands.npos) return IsDigit(line[1]);
  const bool number = IsDigit(line[1]) || line[1] == '-' || line[1] == '.';
  return number && kWords.find(Upper(line[0])) != kWords.npos;
}

bool IsRemark(std::string_view line) {
  return !line.empty() && (line[0] == ';' || line[0] == '(' || line[0] == '%');
}

NumberedLine TakeLineNumber(std::string_view line) {
  NumberedLine taken;
  taken.rest = line;
  if (line.empty() || Upper(line[0]) != 'N') return taken;
  std::size_t at = 1;
  taken.number = static_cast<long>(TakeNumber(line, at));
  const std::size_t star = line.find('*');
  if (star != std::string_view::npos) {
    unsigned sum = 0;
    for (const char c : line.substr(0, star)) sum ^= static_cast<unsigned char>(c);
    std::size_t digits = star + 1;
    taken.intact = TakeNumber(line, digits) == static_cast<double>(sum);
  }
  taken.rest = line.substr(at, star == std::string_view::npos ? star : star - std::min(at, star));
  return taken;
}

namespace {

// True for commands that set a state and take no words of a motion.
bool TakesNoMotionWords(const Gcode& code) {
  if (code.letter != 'G') return false;
  const int n = code.number;
  return (n >= 17 && n <= 21) || n == 40 || n == 49 || (n >= 53 && n <= 59) || n == 61 || n == 64 ||
         n == 80 || n == 90 || n == 91 || n == 93 || n == 94;
}

bool IsMotionWord(char letter) {
  constexpr std::string_view kLetters = "XYZIJKRF";
  return kLetters.find(letter) != kLetters.npos;
}

// The motion that a word belongs to when the command before it takes none: one that stands in the
// line already and has no words yet, else the modal one. It comes last, since what is set in its
// line holds for it.
void PutMotionLast(std::vector<Gcode>& codes, int modal) {
  Gcode motion{'G', modal, 0, {}};
  for (auto code = codes.begin(); code != codes.end(); ++code) {
    if (!code->IsMotion() || !code->words.empty()) continue;
    motion = *code;
    codes.erase(code);
    break;
  }
  codes.push_back(motion);
}

}  // namespace

std::vector<Gcode> ParseGcodeLine(std::string_view line, int modal) {
  std::vector<Gcode> codes;
  std::size_t at = 0;
  while (at < line.size()) {
    const char c = line[at];
    if (c == ';' || c == '*') break;
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
      const int number = static_cast<int>(value);
      const int subcode = letter == 'G' ? static_cast<int>(std::lround((value - number) * 10)) : 0;
      codes.push_back({letter, number, subcode, {}});
      continue;
    }
    const bool homeless = codes.empty() || TakesNoMotionWords(codes.back());
    if (homeless && IsMotionWord(letter)) PutMotionLast(codes, modal);
    if (!codes.empty()) codes.back().words.push_back({letter, value});
  }
  return codes;
}

}  // namespace k7sim
