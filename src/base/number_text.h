// FormatFixed: the number text of every G-code line. ParseFixed reads it back
// (base/parse_number.h).
#pragma once

namespace k7 {

// Text of a number, terminated. The longest is a sign, 19 digits, the point and 18 digits.
struct NumberText {
  char text[48];
  const char* c_str() const noexcept { return text; }
};

// The largest magnitude that FormatFixed writes exactly; beyond it the whole part is held at the
// largest 64-bit number and the fraction is zero.
inline constexpr double kLargestFixed = 9223372036854774784.0;

// `value` with `decimals` (1 to 9; taken to the nearest of these) places, in the form that the
// controllers have always been sent. A number that is not finite is written as 0. [any]
NumberText FormatFixed(double value, int decimals) noexcept;

}  // namespace k7
