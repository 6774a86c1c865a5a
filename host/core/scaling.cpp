// The conversions and texts of scaling.h.
#include "core/scaling.h"

#include <cmath>

#include "drawing/drawing.h"

namespace k7host {
namespace {

// 2^53: every whole number up to here is a double of its own.
constexpr double kLargestWhole = 9007199254740992.0;

std::int64_t Whole(double value) {
  if (std::isnan(value)) return 0;
  if (value >= kLargestWhole) return static_cast<std::int64_t>(kLargestWhole);
  if (value <= -kLargestWhole) return static_cast<std::int64_t>(-kLargestWhole);
  return static_cast<std::int64_t>(value);
}

std::string TwoDigits(std::uint64_t value) {
  return (value < 10 ? "0" : "") + std::to_string(value);
}

}  // namespace

std::int64_t StepsFromPlotterUnits(double plotterUnits, double stepsPerInch) {
  // Multiplied first: the product of whole numbers is exact, and so is a quotient that is whole.
  return Whole(std::floor(plotterUnits * stepsPerInch / kPlotterUnitsPerInch + 0.5));
}

std::int64_t StepsFromInches(double inches, double stepsPerInch) {
  return Whole(std::floor(inches * stepsPerInch + 0.5));
}

std::string InchesText(double inches) {
  return InchesFromThousandths(Whole(std::round(inches * 1000.0)));
}

std::string InchesFromSteps(std::int64_t steps, double stepsPerInch) {
  if (stepsPerInch == 0.0) return InchesFromThousandths(0);
  return InchesText(static_cast<double>(steps) / stepsPerInch);
}

std::string InchesFromThousandths(std::int64_t thousandths) {
  const bool negative = thousandths < 0;
  const std::uint64_t size = negative ? 0 - static_cast<std::uint64_t>(thousandths)
                                      : static_cast<std::uint64_t>(thousandths);
  std::string decimals = std::to_string(size % 1000);
  decimals.insert(0, 3 - decimals.size(), '0');
  return (negative ? "-" : "") + std::to_string(size / 1000) + "." + decimals;
}

std::string DurationText(std::uint64_t seconds) {
  return std::to_string(seconds / 3600) + ":" + TwoDigits(seconds / 60 % 60) + ":" +
         TwoDigits(seconds % 60);
}

}  // namespace k7host
