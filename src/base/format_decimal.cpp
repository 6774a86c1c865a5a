#include "base/format_decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace k7 {
namespace {

constexpr int kMaxWholeDigits = 31;
// Every single is written exactly with this many places.
constexpr int kExactPlaces = 149;

// Appends to a text of fixed capacity; what does not fit is dropped.
class BoundedText {
 public:
  BoundedText(wchar_t* buffer, int capacity) noexcept : at_(buffer), end_(buffer + capacity - 1) {
    *at_ = L'\0';
  }
  void Append(char c) noexcept {
    if (at_ == end_) return;
    *at_++ = static_cast<wchar_t>(c);
    *at_ = L'\0';
  }
  void Append(std::string_view text) noexcept {
    for (const char c : text) Append(c);
  }

 private:
  wchar_t* at_;
  wchar_t* end_;
};

// The significant digits of a rounded number, without point or sign. The point stands after `point`
// digits; with a negative `point`, that many zeros stand between the point and the first digit.
struct Digits {
  char text[kMaxWholeDigits + 10 + kExactPlaces];
  int count;
  int point;
};

// Adds one to the last digit; a carry out of the first one grows the number.
void RoundUp(Digits& digits) noexcept {
  int i = digits.count - 1;
  while (i >= 0 && digits.text[i] == '9') digits.text[i--] = '0';
  if (i >= 0) {
    ++digits.text[i];
    return;
  }
  std::copy_backward(digits.text, digits.text + digits.count, digits.text + digits.count + 1);
  digits.text[0] = '1';
  ++digits.count;
  ++digits.point;
}

// The magnitude rounded to `decimals`: its exact text, cut, and rounded up when the first digit cut
// off is 5 or more. The text is exact, so that one digit decides also a tie.
Digits RoundedDigits(float magnitude, int decimals) noexcept {
  char exact[kMaxWholeDigits + 10 + 1 + kExactPlaces];
  const auto result =
      std::to_chars(exact, std::end(exact), magnitude, std::chars_format::fixed, kExactPlaces);
  const std::string_view text{exact, static_cast<std::size_t>(result.ptr - exact)};
  const std::size_t whole = text.find('.');

  Digits digits{};
  const std::size_t kept = whole + static_cast<std::size_t>(decimals);
  for (std::size_t i = 0; i < kept; ++i) {
    digits.text[digits.count++] = text[i < whole ? i : i + 1];
  }
  digits.point = static_cast<int>(whole);
  if (decimals < kExactPlaces && text[kept + 1] >= '5') RoundUp(digits);

  // Leading zeros are no digits of the number; at zero only the places remain.
  int zeros = 0;
  while (zeros < digits.count && digits.text[zeros] == '0') ++zeros;
  std::copy(digits.text + zeros, digits.text + digits.count, digits.text);
  digits.count -= zeros;
  digits.point -= zeros;
  return digits;
}

}  // namespace

void FormatDecimal(float value, wchar_t* buffer, int capacity, int decimals) noexcept {
  if (buffer == nullptr || capacity < 1) return;
  if (!std::isfinite(value)) value = 0.0f;
  BoundedText out{buffer, capacity};
  const float magnitude = std::fabs(value);
  const Digits digits = RoundedDigits(magnitude, std::clamp(decimals, 0, kExactPlaces));
  const std::string_view text{digits.text, static_cast<std::size_t>(digits.count)};

  if (std::signbit(value)) out.Append('-');
  // KEEP: the value before rounding decides on the "0.".
  if (magnitude < 1.0f) out.Append("0.");
  if (digits.point > 0) {
    // KEEP: installed drivers have a digit buffer of 32 characters and end the process here, too.
    if (digits.point > kMaxWholeDigits) std::abort();
    const auto whole = static_cast<std::size_t>(digits.point);
    out.Append(text.substr(0, whole));
    if (text.size() > whole) {
      out.Append('.');
      out.Append(text.substr(whole));
    }
  } else {
    for (int i = digits.point; i < 0; ++i) out.Append('0');
    out.Append(text);
  }
}

}  // namespace k7
