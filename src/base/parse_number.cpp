#include "base/parse_number.h"

#include <charconv>
#include <cstring>

namespace k7 {
namespace {

// Steps over blanks and one sign; whether that was a minus.
bool SkipBlanksAndSign(const wchar_t*& text) noexcept {
  while (IsBlank(*text)) ++text;
  return (*text == L'+' || *text == L'-') && *text++ == L'-';
}

bool IsSign(wchar_t c) noexcept {
  return c == L'+' || c == L'-';
}

// Copies the characters in front of the first that `belongs` does not let pass, as bytes;
// from_chars takes no others. What is beyond kSize does not count.
template <std::size_t kSize, typename Belongs>
std::string_view CopyAscii(const wchar_t* text, char (&ascii)[kSize], Belongs belongs) noexcept {
  std::size_t count = 0;
  while (count < kSize && belongs(text[count])) {
    ascii[count] = static_cast<char>(text[count]);
    ++count;
  }
  return {ascii, count};
}

// A number that fits no double is out of its range at one end or at the other.
double OutOfRange(bool huge) noexcept {
  return huge ? std::numeric_limits<double>::infinity() : 0.0;
}

// Which end: the power of ten of the first significant digit tells.
bool IsHuge(std::string_view number) noexcept {
  constexpr long kFar = 1000000;  // far beyond what the digits before the exponent can make up for
  long power = 0;
  long exponent = 0;
  bool afterPoint = false;
  bool significant = false;
  for (std::size_t i = 0; i < number.size(); ++i) {
    const char c = number[i];
    if (c == '.') {
      afterPoint = true;
    } else if (c == 'e' || c == 'E') {
      const bool negative = i + 1 < number.size() && number[i + 1] == '-';
      for (const char digit : number.substr(i + 1)) {
        if (digit >= '0' && digit <= '9') exponent = std::min(kFar, exponent * 10 + (digit - '0'));
      }
      if (negative) exponent = -exponent;
      break;
    } else if (c >= '0' && c <= '9') {
      significant = significant || c != '0';
      if (significant && !afterPoint) ++power;
      if (!significant && afterPoint) --power;
    }
  }
  return power + exponent > 0;
}

// The coarser rule of plain decimals: the sign of the exponent alone, or without an exponent the
// first character. The two rules differ only for numbers of more than three hundred digits.
bool LooksHuge(std::string_view number) noexcept {
  const std::size_t exponent = number.find_first_of("eE");
  if (exponent == std::string_view::npos) return number[0] != '0' && number[0] != '.';
  return exponent + 1 == number.size() || number[exponent + 1] != '-';
}

bool IsHex(std::string_view ascii) noexcept {
  return ascii.size() > 2 && ascii[0] == '0' && (ascii[1] == 'x' || ascii[1] == 'X') &&
         ascii[2] != '-';
}

}  // namespace

float ParseTypedDecimal(const wchar_t* text) noexcept {
  if (text == nullptr) return 0.0f;
  const bool negative = SkipBlanksAndSign(text);
  // from_chars would take a sign of its own; there is one already.
  if (IsSign(*text)) return 0.0f;

  char buffer[1024];
  const std::string_view ascii =
      CopyAscii(text, buffer, [](wchar_t c) { return c > L' ' && c < 127; });
  const char* const first = ascii.data();
  const char* const end = first + ascii.size();
  double value = 0.0;
  if (IsHex(ascii)) {
    // Without a digit behind the "x" only the "0" is a number, which is what `value` keeps.
    std::from_chars(first + 2, end, value, std::chars_format::hex);
  } else {
    const std::from_chars_result read = std::from_chars(first, end, value);
    if (read.ec == std::errc::invalid_argument) return 0.0f;
    if (read.ec == std::errc::result_out_of_range) {
      value = OutOfRange(IsHuge({first, static_cast<std::size_t>(read.ptr - first)}));
    }
  }
  return static_cast<float>(negative ? -value : value);
}

double ParsePlainDecimal(const wchar_t* text) noexcept {
  if (text == nullptr) return 0.0;
  const bool negative = SkipBlanksAndSign(text);
  if (IsSign(*text)) return 0.0;

  char buffer[512];
  const std::string_view ascii = CopyAscii(text, buffer, [](wchar_t c) {
    return (c >= L'0' && c <= L'9') || c == L'.' || c == L'e' || c == L'E' || IsSign(c);
  });
  const char* const first = ascii.data();
  double value = 0.0;
  const std::from_chars_result read = std::from_chars(first, first + ascii.size(), value);
  if (read.ec == std::errc::result_out_of_range) {
    value = OutOfRange(LooksHuge({first, static_cast<std::size_t>(read.ptr - first)}));
  }
  return negative ? -value : value;
}

double ParseFixed(const char* text) noexcept {
  double value = 0.0;
  if (text != nullptr) {
    std::from_chars(text, text + std::strlen(text), value, std::chars_format::fixed);
  }
  return value;
}

}  // namespace k7
