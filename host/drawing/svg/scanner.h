// The numbers in the attributes of an SVG file.
#pragma once

#include <string>
#include <string_view>

namespace k7host {

// A fault in the file, thrown by whoever finds it. `at` points into the text of the file.
struct SvgFault {
  const char* at = nullptr;
  std::string message;
};

// CSS pixels in an inch.
inline constexpr double kPixelsPerInch = 96.0;

// Walks along the value of an attribute. [any]
class SvgScanner {
 public:
  explicit SvgScanner(std::string_view value)
      : at_(value.data()), end_(value.data() + value.size()) {}

  const char* At() const { return at_; }
  std::string_view Rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }
  // Passes over blanks, and over one comma; true at the end of the value.
  bool AtEnd();
  void SkipBlanks();
  char Peek() const { return at_ != end_ ? *at_ : '\0'; }
  char Next() { return *at_++; }
  bool Skip(char c);
  bool StartsNumber() const;

  // Throws SvgFault when there is none, or one that is not finite.
  double Number();
  // The 0 or 1 of an arc, which may stand right before the next number.
  bool Flag();
  // Letters of a name.
  std::string_view Name();

 private:
  const char* at_;
  const char* end_;
};

// A length in pixels; a percentage is one of `whole`. Throws SvgFault for a unit that depends on a
// font, and for one that is none. [any]
double SvgLength(std::string_view value, double whole);

std::string_view Trimmed(std::string_view text);

}  // namespace k7host
