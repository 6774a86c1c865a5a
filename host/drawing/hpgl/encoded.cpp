// Decoding of PE. A digit that ends its number stands in another range of bytes than the others;
// the lowest digit comes first.
#include "drawing/hpgl/encoded.h"

#include <cmath>

namespace k7host {
namespace {

constexpr unsigned kFirstDigit = 63;                  // '?'
constexpr unsigned kFirstEndOfSeven = 95;             // '_': base 32
constexpr unsigned kFirstEndOfEight = 191;            // base 64
constexpr double kLargestValue = 9007199254740992.0;  // 2^53
constexpr double kMostFractionBits = 26;

}  // namespace

// Blanks and control characters may stand anywhere.
void HpglEncoded::SkipUnused() {
  while (!text_.AtEnd() && static_cast<unsigned char>(text_.Peek()) <= 0x20) text_.Next();
}

bool HpglEncoded::Next(Step& step) {
  step = {};
  while (true) {
    SkipUnused();
    if (text_.AtEnd()) return text_.Fail(start_, "PE is not ended by ';'");
    step.at = text_.At();
    switch (text_.Peek()) {
      case ';':
        return false;
      case '7':
        sevenBits_ = true;
        break;
      case '<':
        step.penUp = true;
        break;
      case '=':
        step.absolute = true;
        break;
      case ':':
        text_.Next();
        if (!ReadCount(step.at, kMostFractionBits, "PE: fraction bits out of range",
                       fractionBits_)) {
          return false;
        }
        continue;
      case '>': {
        text_.Next();
        int pen = 0;
        if (!ReadCount(step.at, kMaxPen, "PE: pen number out of range", pen)) return false;
        step.pen = pen;
        return true;
      }
      default:
        if (!ReadValue(step.x) || !ReadValue(step.y)) return false;
        step.x = std::ldexp(step.x, -fractionBits_);
        step.y = std::ldexp(step.y, -fractionBits_);
        return true;
    }
    text_.Next();
  }
}

bool HpglEncoded::ReadValue(double& value) {
  const unsigned base = sevenBits_ ? 32 : 64;
  const unsigned firstEnd = sevenBits_ ? kFirstEndOfSeven : kFirstEndOfEight;
  double sum = 0.0;
  double weight = 1.0;
  SkipUnused();
  const std::size_t at = text_.At();
  while (true) {
    SkipUnused();
    if (text_.AtEnd()) return text_.Fail(start_, "PE is not ended by ';'");
    const auto byte = static_cast<unsigned char>(text_.Peek());
    const bool ends = byte >= firstEnd && byte < firstEnd + base;
    const bool goesOn = byte >= kFirstDigit && byte < kFirstDigit + base;
    if (!ends && !goesOn) {
      return text_.Fail(text_.At(), "PE: unexpected " + HpglText::Quoted(text_.Peek()));
    }
    sum += weight * (byte - (ends ? firstEnd : kFirstDigit));
    if (!(sum < kLargestValue)) return text_.Fail(at, "PE: number out of range");
    weight *= base;
    text_.Next();
    if (ends) break;
  }
  value = std::floor(sum / 2.0);
  if (std::fmod(sum, 2.0) != 0.0) value = -value;
  return true;
}

bool HpglEncoded::ReadCount(std::size_t at, double most, const char* message, int& count) {
  double value = 0.0;
  if (!ReadValue(value)) return false;
  if (value < 0.0 || value > most) return text_.Fail(at, message);
  count = static_cast<int>(value);
  return true;
}

}  // namespace k7host
