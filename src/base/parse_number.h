// Reading numbers: every text that becomes a number in this driver goes through one of these. Each
// reads the number that the text starts with and stops at the first character that cannot continue
// it; without a number it gives 0. None heeds the process's locale: the point is always ".".
// Writing numbers: base/number_text.h (lines) and base/format_decimal.h (dialogs).
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace k7 {

// What may stand before a number that a user or the controller has written.
template <typename Char>
constexpr bool IsBlank(Char c) noexcept {
  return c == Char{' '} || (c >= Char{'\t'} && c <= Char{'\r'});
}

// A decimal number as a user types it into a field: blanks, sign, then decimal, exponent or
// hexadecimal form ("0x10"), infinity and NaN by name. Narrowed to single precision, infinite
// beyond its range. Null gives 0. [any]
float ParseTypedDecimal(const wchar_t* text) noexcept;

// A decimal number of a settings file: blanks, sign, digits, point and exponent, nothing else, so
// that letters around it can have a meaning of their own. Infinite beyond the range of a double.
// Null gives 0. [any]
double ParsePlainDecimal(const wchar_t* text) noexcept;

// A number that FormatFixed has written (base/number_text.h), to the nearest double: no blanks, no
// exponent, no plus sign. Null gives 0. [any]
double ParseFixed(const char* text) noexcept;

// A whole number in decimal, as the controller writes it behind a reply: blanks, sign, digits;
// saturates at the limits of 32 bits. [any]
template <typename Char>
constexpr std::int32_t ParseWholeIn(std::basic_string_view<Char> text) noexcept {
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == Char{'-'} || text[i] == Char{'+'})) {
    negative = text[i++] == Char{'-'};
  }
  using Limits = std::numeric_limits<std::int32_t>;
  constexpr std::int64_t kFarthest = -std::int64_t{Limits::min()};
  std::int64_t magnitude = 0;
  for (; i < text.size() && text[i] >= Char{'0'} && text[i] <= Char{'9'}; ++i) {
    magnitude = std::min(kFarthest, magnitude * 10 + (text[i] - Char{'0'}));
  }
  if (negative) return static_cast<std::int32_t>(-magnitude);
  return static_cast<std::int32_t>(std::min(magnitude, std::int64_t{Limits::max()}));
}

constexpr std::int32_t ParseWhole(std::string_view text) noexcept {
  return ParseWholeIn(text);
}

// The same as a user types it ("12.9" is 12). Null gives 0. [any]
constexpr std::int32_t ParseWhole(const wchar_t* text) noexcept {
  return text == nullptr ? 0 : ParseWholeIn(std::wstring_view{text});
}

static_assert(ParseWhole(" -2147483648") == std::numeric_limits<std::int32_t>::min());
static_assert(ParseWhole(L"2147483648") == std::numeric_limits<std::int32_t>::max());

}  // namespace k7
