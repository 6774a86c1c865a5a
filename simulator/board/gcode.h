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
  int subcode = 0;  // 1 in G92.1
  std::vector<GcodeWord> words;

  // Value of the first word with this letter.
  std::optional<double> Word(char wanted) const;
  bool Has(char wanted) const { return Word(wanted).has_value(); }
  bool Is(char wantedLetter, int wantedNumber) const {
    return letter == wantedLetter && number == wantedNumber && subcode == 0;
  }
  // True for G0 to G3.
  bool IsMotion() const { return letter == 'G' && number >= 0 && number <= 3 && subcode == 0; }
};

// A line without its number and its checksum.
struct NumberedLine {
  std::optional<long> number;  // of "N12 ..."
  bool intact = true;          // the checksum is right, or there is none
  std::string_view rest;
};

// True when the line starts as G-code does: a G, an M, a line number, or a word that goes on with
// the motion of the line before ("X10 Y5").
bool LooksLikeGcode(std::string_view line);

// True for a line that is a comment and nothing else, or the mark at the ends of a program (%).
bool IsRemark(std::string_view line);

// Takes number and checksum off a line ("N12 G1 X1*37"). The checksum is the exclusive or of all
// characters before the asterisk.
NumberedLine TakeLineNumber(std::string_view line);

// The commands of a line in order ("G21 G90" holds two), without its comments. Words before any
// command belong to the motion `modal`, and so do those after a command that takes none ("G90 X1").
// Never fails: a letter that no number follows has the value 0, and all other characters are passed
// over.
std::vector<Gcode> ParseGcodeLine(std::string_view line, int modal = 0);

}  // namespace k7sim
