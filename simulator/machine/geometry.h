// Points, axis letters, millimetres and inches. Motion is in millimetres; the plate and the sizes
// of the machine are in inches, as their names or comments say.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace k7sim {

inline constexpr double kMmPerInch = 25.4;

// The axis letters of a line. An axis number (0 to 2) counts them in this order.
inline constexpr std::array<char, 3> kAxisLetters = {'X', 'Y', 'Z'};

// X, Y, Z of a point, a distance or a size. Z grows downward, into the plate.
using Vec3 = std::array<double, 3>;

inline Vec3 operator-(const Vec3& a, const Vec3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline double Dot(const Vec3& a, const Vec3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline double Length(const Vec3& a) {
  return std::sqrt(Dot(a, a));
}

// The point `fraction` (0 to 1) of the way from `a` to `b`.
inline Vec3 Between(const Vec3& a, const Vec3& b, double fraction) {
  Vec3 point{};
  for (std::size_t i = 0; i < point.size(); ++i) point[i] = a[i] + (b[i] - a[i]) * fraction;
  return point;
}

inline double InchesFromMm(double mm) {
  return mm / kMmPerInch;
}
inline double MmFromInches(double inches) {
  return inches * kMmPerInch;
}

}  // namespace k7sim
