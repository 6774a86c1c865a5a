// Where the lines of a trace send the head.
#pragma once

#include <optional>
#include <string>

namespace k7host {

// Inches, from the zero that the driver has declared to the controller.
struct TracePlace {
  double x = 0.0, y = 0.0, z = 0.0;
};

// Inches from one to the other. [any]
double Distance(const TracePlace& a, const TracePlace& b);

// The millimetres behind `letter` in a line such as "G0 X1.000000 Y-2.000000", as inches. [any]
std::optional<double> InchesBehind(const std::string& line, char letter);

// Takes those of X, Y and Z that the line names. [any]
void SetPlace(TracePlace& place, const std::string& line);

}  // namespace k7host
