#include "trace/place.h"

#include <cmath>

namespace k7host {
namespace {

constexpr double kMmPerInch = 25.4;

// The number behind `letter`, in a line of words such as "G0 X1.000000 Y-2.000000".
std::optional<double> WordOf(const std::string& line, char letter) {
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    if (line[i - 1] != ' ' || line[i] != letter) continue;
    // Written out: strtod would look for the comma of the locale.
    double number = 0.0, scale = 1.0;
    std::size_t at = i + 1;
    const bool negative = line[at] == '-';
    if (negative) ++at;
    bool digits = false, fraction = false;
    for (; at < line.size() && at < i + 40; ++at) {
      if (line[at] == '.' && !fraction) {
        fraction = true;
      } else if (line[at] >= '0' && line[at] <= '9') {
        digits = true;
        number = number * 10 + (line[at] - '0');
        if (fraction) scale *= 10;
      } else {
        break;
      }
    }
    if (!digits) return {};
    return (negative ? -number : number) / scale;
  }
  return {};
}

}  // namespace

double Distance(const TracePlace& a, const TracePlace& b) {
  return std::hypot(std::hypot(a.x - b.x, a.y - b.y), a.z - b.z);
}

std::optional<double> InchesBehind(const std::string& line, char letter) {
  const std::optional<double> mm = WordOf(line, letter);
  if (!mm) return {};
  return *mm / kMmPerInch;
}

void SetPlace(TracePlace& place, const std::string& line) {
  place.x = InchesBehind(line, 'X').value_or(place.x);
  place.y = InchesBehind(line, 'Y').value_or(place.y);
  place.z = InchesBehind(line, 'Z').value_or(place.z);
}

}  // namespace k7host
