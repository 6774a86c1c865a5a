// G-code lines taken apart into commands: a letter, a number, and the words that follow.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

struct GcodeWord {
  char letter = 0;   // upper case
  double value = 0;  // 0 when no number follows
};

struct Gcode {
  char letter = 0;  // 'G' or 'M'
  int number = 0;
  std::vector<GcodeWord> words;

  // Value of the first word with this letter.
  std::optional<double> Word(char wanted) const;
  bool Has(char wanted) const { return Word(wanted).has_value(); }
  bool Is(char wantedLetter, int wantedNumber) const {
    return letter == wantedLetter && number == wantedNumber;
  }
};

// True when the line starts as G-code does: a G or an M, and a digit.
bool LooksLikeGcode(std::string_view line);

// The commands of a line in order ("G21 G90" holds two), without its comments. Never fails: a
// letter that no number follows has the value 0, and all other characters are passed over.
std::vector<Gcode> ParseGcodeLine(std::string_view line);

}  // namespace k7sim
