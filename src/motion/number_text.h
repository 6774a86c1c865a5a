// FormatFixed: the number text of every G-code line.
#pragma once

namespace k7 {

// Text of a number, terminated.
struct NumberText {
  char text[48];
  const char* c_str() const noexcept { return text; }
};

// `value` with `decimals` (1 to 9) places, in the form that the controllers have always been sent.
// A number that is not finite is written as 0. [any]
NumberText FormatFixed(double value, int decimals) noexcept;

// Reads such a text back. [any]
double ParseFixed(const char* text) noexcept;

}  // namespace k7
