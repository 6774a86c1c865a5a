// One value for each axis of the machine.
#pragma once

#include <cstdint>

namespace k7 {

enum class Axis : std::uint8_t { X, Y, Z };

// By name or by axis.
template <typename T>
struct PerAxis {
  T x{}, y{}, z{};

  constexpr T& operator[](Axis axis) noexcept {
    return axis == Axis::X ? x : axis == Axis::Y ? y : z;
  }
  constexpr const T& operator[](Axis axis) const noexcept {
    return axis == Axis::X ? x : axis == Axis::Y ? y : z;
  }
};

// The same for the two axes of the table, which a round fixture can replace. Z counts as Y: ask
// for X or Y alone.
template <typename T>
struct PerTableAxis {
  T x{}, y{};

  constexpr T& operator[](Axis axis) noexcept { return axis == Axis::X ? x : y; }
  constexpr const T& operator[](Axis axis) const noexcept { return axis == Axis::X ? x : y; }
};

}  // namespace k7
