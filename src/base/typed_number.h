// Numbers as users type them. Independent of the process's locale: the point is always ".".
#pragma once

#include <cstdint>

namespace k7 {

// The number that `text` starts with: leading blanks skipped, stops at the first character that
// cannot continue a number ("1.5 in" is 1.5), decimal, exponent and hexadecimal forms, infinity and
// NaN by name. 0 when there is none or `text` is null. Narrowed to single precision; beyond its
// range infinite. [any]
float ParseDecimal(const wchar_t* text) noexcept;

// The same for a whole number in decimal ("12.9" is 12); saturates at the limits of 32 bits. [any]
std::int32_t ParseWhole(const wchar_t* text) noexcept;

}  // namespace k7
