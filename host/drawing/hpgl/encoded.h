// The encoded polyline of plotter files, PE: numbers as digits of base 64 or 32.
#pragma once

#include <cstddef>
#include <optional>

#include "drawing/hpgl/text.h"

namespace k7host {

// Reads on behind "PE" up to its ";". [any]
class HpglEncoded {
 public:
  struct Step {
    std::optional<int> pen;  // a change of pen; nothing else counts then
    bool penUp = false;
    bool absolute = false;
    double x = 0.0;
    double y = 0.0;
    std::size_t at = 0;
  };

  explicit HpglEncoded(HpglText& text) : text_(text), start_(text.At()) {}

  // The next pen change or move; false at the end and after an error.
  bool Next(Step& step);

 private:
  // A number as it is encoded: the lowest bit is its sign.
  bool ReadValue(double& value);
  bool ReadCount(std::size_t at, double most, const char* message, int& count);
  void SkipUnused();

  HpglText& text_;
  std::size_t start_;
  int fractionBits_ = 0;
  bool sevenBits_ = false;
};

}  // namespace k7host
