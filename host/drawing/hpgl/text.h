// The bytes of a plotter file: where the reader stands, its numbers, and the place of an error.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/drawing.h"

namespace k7host {

struct HpglNumber {
  double value = 0.0;
  std::size_t at = 0;  // its first byte
};

// A function that finds a fault notes it by Fail and answers false. [any]
class HpglText {
 public:
  explicit HpglText(std::string_view text) : text_(text) {}

  bool AtEnd() const { return pos_ >= text_.size(); }
  std::size_t At() const { return pos_; }
  // The byte here; 0 at the end.
  char Peek(std::size_t ahead = 0) const;
  char Next() { return text_[pos_++]; }
  std::string_view From(std::size_t at) const { return text_.substr(at, pos_ - at); }
  bool Skip(std::string_view wanted);

  void SkipBlanks();
  // Blanks and the ";" between commands.
  void SkipSeparators();
  // What may stand behind a command whose parameters do not matter: numbers, and texts in quotes.
  void SkipParameters();

  // The numbers of a command, separated by commas, blanks or their own sign. They stand in
  // Numbers() until the next call.
  bool ReadNumbers();
  const std::vector<HpglNumber>& Numbers() const { return numbers_; }

  bool Fail(std::size_t at, std::string message);
  std::optional<DrawingError>& Error() { return error_; }
  TextPlace Place(std::size_t at) const { return PlaceInText(text_, at); }

  static bool IsLetter(char c);
  static bool IsDigit(char c);
  static bool IsBlank(char c);
  static bool StartsNumber(char c);
  static char Upper(char c);
  // "character 'x'" or "byte 0x1B".
  static std::string Quoted(char c);

 private:
  bool ReadNumber();

  std::string_view text_;
  std::size_t pos_ = 0;
  std::vector<HpglNumber> numbers_;
  std::optional<DrawingError> error_;
};

}  // namespace k7host
