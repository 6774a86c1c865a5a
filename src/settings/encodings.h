// The encodings of a settings file: how its texts stand for numbers.
#pragma once

#include <bit>
#include <cstdint>

namespace k7 {

// Single-precision numbers stand in the file as the decimal text of their bit pattern, taken as a
// signed whole number: 0.125 is 1040187392. KEEP: shared with the files of installed machines.
// [any]
constexpr std::int32_t BitsOfFloat(float value) noexcept {
  return std::bit_cast<std::int32_t>(value);
}
constexpr float FloatOfBits(std::int32_t bits) noexcept {
  return std::bit_cast<float>(bits);
}

// Decimal text of a whole number, terminated.
struct IntText {
  wchar_t text[12];
  const wchar_t* c_str() const noexcept { return text; }
};
IntText TextOfInt(std::int32_t value) noexcept;

// Circumference in inches of a text: a number, or a diameter when the text holds a letter "D" or
// "d" anywhere, which is multiplied by 3.14159 in single precision. Null or no number gives 0.
// [any]
float ParseCircumference(const wchar_t* text) noexcept;

}  // namespace k7
