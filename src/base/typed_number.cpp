#include "base/typed_number.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace k7 {
namespace {

constexpr bool IsBlank(wchar_t c) noexcept {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}

constexpr bool IsDigit(wchar_t c) noexcept {
  return c >= L'0' && c <= L'9';
}

// Whether a decimal number that fits no double is too large rather than too small: the power of ten
// of its first significant digit tells.
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

}  // namespace

float ParseDecimal(const wchar_t* text) noexcept {
  if (text == nullptr) return 0.0f;
  while (IsBlank(*text)) ++text;
  bool negative = false;
  if (*text == L'+' || *text == L'-') negative = *text++ == L'-';

  // What can belong to a number is ASCII; anything else ends it.
  char ascii[1024];
  std::size_t count = 0;
  while (count < sizeof ascii && text[count] > L' ' && text[count] < 127) {
    ascii[count] = static_cast<char>(text[count]);
    ++count;
  }
  if (count == 0 || ascii[0] == '-' || ascii[0] == '+') return 0.0f;

  double value = 0.0;
  const char* const end = ascii + count;
  std::from_chars_result result{};
  if (count > 2 && ascii[0] == '0' && (ascii[1] == 'x' || ascii[1] == 'X') && ascii[2] != '-') {
    result = std::from_chars(ascii + 2, end, value, std::chars_format::hex);
    if (result.ec == std::errc::invalid_argument) value = 0.0;  // only the "0" is a number
  } else {
    result = std::from_chars(ascii, end, value, std::chars_format::general);
    if (result.ec == std::errc::invalid_argument) return 0.0f;
    if (result.ec == std::errc::result_out_of_range) {
      const std::string_view number{ascii, static_cast<std::size_t>(result.ptr - ascii)};
      value = IsHuge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    }
  }
  return static_cast<float>(negative ? -value : value);
}

std::int32_t ParseWhole(const wchar_t* text) noexcept {
  constexpr std::int64_t kBeyond = std::int64_t{1} << 40;
  if (text == nullptr) return 0;
  while (IsBlank(*text)) ++text;
  bool negative = false;
  if (*text == L'+' || *text == L'-') negative = *text++ == L'-';
  std::int64_t value = 0;
  for (; IsDigit(*text); ++text) value = std::min(kBeyond, value * 10 + (*text - L'0'));
  if (negative) value = -value;
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp(value, std::int64_t{Limits::min()}, std::int64_t{Limits::max()}));
}

}  // namespace k7
