// The host's units of length and their texts: plotter units in files, host steps at the driver,
// inches and thousandths of an inch for people.
#pragma once

#include <cstdint>
#include <string>

namespace k7host {

// Steps per inch and size of a machine's table, as the driver reports them.
struct Table {
  double xStepsPerInch = 0.0;
  double yStepsPerInch = 0.0;
  std::uint32_t widthSteps = 0;
  std::uint32_t heightSteps = 0;
};

// Whole host steps, rounded half up. Signed and wide, because a drawing that has not been checked
// may reach far off the table. NaN gives 0, lengths beyond 2^53 steps give 2^53 steps. [any]
std::int64_t StepsFromPlotterUnits(double plotterUnits, double stepsPerInch);
std::int64_t StepsFromInches(double inches, double stepsPerInch);

// Inches with three decimals and "." whatever the locale, rounded half away from zero: "12.500",
// "-0.063", never "-0.000". 0 steps per inch gives "0.000". [any]
std::string InchesText(double inches);
std::string InchesFromSteps(std::int64_t steps, double stepsPerInch);
std::string InchesFromThousandths(std::int64_t thousandths);

// Seconds as "h:mm:ss". [any]
std::string DurationText(std::uint64_t seconds);

}  // namespace k7host
