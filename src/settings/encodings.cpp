#include "settings/encodings.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace k7 {

namespace {

constexpr int kLongestNumber = 512;  // characters of a number that count

bool IsBlank(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}

bool IsNumberCharacter(wchar_t c) {
  return (c >= L'0' && c <= L'9') || c == L'.' || c == L'e' || c == L'E' || c == L'+' || c == L'-';
}

// Whether a number too large for a double is meant, rather than one too small for it: its exponent,
// or without one its digits before the point, decide.
bool IsHuge(const char* first, const char* last) {
  for (const char* c = first; c != last; ++c) {
    if (*c == 'e' || *c == 'E') return c + 1 == last || c[1] != '-';
  }
  return *first != '0' && *first != '.';
}

// The number that the text begins with; 0 when it begins with none.
double LeadingNumber(const wchar_t* text) {
  while (IsBlank(*text)) ++text;
  bool negative = false;
  if (*text == L'+' || *text == L'-') negative = *text++ == L'-';
  // A second sign is no number, and from_chars would take it for one.
  if (*text == L'+' || *text == L'-') return 0.0;

  char digits[kLongestNumber]{};
  int length = 0;
  while (length < kLongestNumber && IsNumberCharacter(text[length])) {
    digits[length] = static_cast<char>(text[length]);
    ++length;
  }
  double value = 0.0;
  const std::from_chars_result read = std::from_chars(digits, digits + length, value);
  if (read.ec == std::errc::result_out_of_range) {
    value = IsHuge(digits, read.ptr) ? std::numeric_limits<double>::infinity() : 0.0;
  } else if (read.ec != std::errc{}) {
    value = 0.0;
  }
  return negative ? -value : value;
}

}  // namespace

IntText TextOfInt(std::int32_t value) noexcept {
  char digits[12]{};
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
  IntText result{};
  int length = 0;
  for (const char* c = digits; c != end.ptr; ++c) result.text[length++] = static_cast<wchar_t>(*c);
  return result;
}

float ParseCircumference(const wchar_t* text) noexcept {
  if (text == nullptr) return 0.0f;
  float inches = static_cast<float>(LeadingNumber(text));
  for (; *text != L'\0'; ++text) {
    if (*text == L'D' || *text == L'd') {
      inches *= 3.14159f;  // KEEP: the diameter's factor has always had five decimals
      break;
    }
  }
  return inches;
}

}  // namespace k7
