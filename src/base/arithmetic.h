// Whole numbers of steps: the conversion from floating point, and arithmetic that wraps at 32 bits.
#pragma once

#include <cstdint>

namespace k7 {

inline constexpr float kMmPerInch = 25.4f;

// `value` without its fraction; beyond the range the nearest end of it, NaN gives 0. Every
// conversion from floating point to steps goes through this one. [any]
std::int32_t TruncateToInt32(double value) noexcept;

// trunc(value + 0.5) in single precision, saturating. KEEP: a half is added to negative numbers,
// too, so that they are rounded toward zero. [any]
std::int32_t RoundToSteps(float value) noexcept;

// The whole number that is shown or saved for a typed one: rounded half up, towards the larger
// number also below zero, in single precision; saturating, 0 for what is no number. [any]
std::int32_t RoundHalfUp(float value) noexcept;

// 32-bit arithmetic that wraps as the controllers' own does. [any]
constexpr std::int32_t WrapAdd(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrapSubtract(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrapMultiply(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
// a / b toward zero; 0 when b is 0; saturates INT32_MIN / -1.
constexpr std::int32_t DivideSteps(std::int32_t a, std::int32_t b) noexcept {
  if (b == 0) return 0;
  if (b == -1) return a == INT32_MIN ? INT32_MAX : -a;
  return a / b;
}

// Inches per second to millimetres per minute, the unit of the controller's feeds. [any]
float SpeedToFeed(float inchesPerSecond) noexcept;

}  // namespace k7
