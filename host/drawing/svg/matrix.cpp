// Parsing and joining of transformations.
#include "drawing/svg/matrix.h"

#include <cmath>
#include <cstddef>
#include <numbers>
#include <string>

#include "drawing/svg/scanner.h"

namespace k7host {
namespace {

constexpr int kMostNumbers = 6;

SvgMatrix One(std::string_view name, const double* n, int count) {
  if (name == "matrix" && count == 6) return {n[0], n[1], n[2], n[3], n[4], n[5]};
  if (name == "translate" && (count == 1 || count == 2)) {
    return {1, 0, 0, 1, n[0], count == 2 ? n[1] : 0.0};
  }
  if (name == "scale" && (count == 1 || count == 2)) {
    return {n[0], 0, 0, count == 2 ? n[1] : n[0], 0, 0};
  }
  const double angle = n[0] * std::numbers::pi / 180.0;
  if (name == "rotate" && (count == 1 || count == 3)) {
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    const SvgMatrix turn{cosine, sine, -sine, cosine, 0, 0};
    if (count == 1) return turn;
    return SvgMatrix{1, 0, 0, 1, n[1], n[2]}.After(turn).After({1, 0, 0, 1, -n[1], -n[2]});
  }
  if (name == "skewX" && count == 1) return {1, 0, std::tan(angle), 1, 0, 0};
  if (name == "skewY" && count == 1) return {1, std::tan(angle), 0, 1, 0, 0};
  throw SvgFault{name.data(), "transformation '" + std::string(name) + "' with " +
                                  std::to_string(count) + " numbers"};
}

}  // namespace

SvgMatrix SvgMatrix::After(const SvgMatrix& m) const {
  return {a * m.a + c * m.b, b * m.a + d * m.b,     a * m.c + c * m.d,
          b * m.c + d * m.d, a * m.e + c * m.f + e, b * m.e + d * m.f + f};
}

SvgMatrix ParseTransform(std::string_view value) {
  SvgMatrix result;
  SvgScanner scanner(value);
  if (Trimmed(value) == "none") return result;
  while (!scanner.AtEnd()) {
    const char* const at = scanner.At();
    const std::string_view name = scanner.Name();
    scanner.SkipBlanks();
    if (name.empty() || !scanner.Skip('(')) throw SvgFault{at, "malformed transformation"};
    double numbers[kMostNumbers] = {};
    int count = 0;
    while (!scanner.AtEnd() && scanner.Peek() != ')') {
      if (count == kMostNumbers) throw SvgFault{scanner.At(), "malformed transformation"};
      numbers[count++] = scanner.Number();
    }
    if (!scanner.Skip(')')) throw SvgFault{at, "malformed transformation"};
    result = result.After(One(name, numbers, count));
  }
  return result;
}

}  // namespace k7host
