#include "motion/line_text.h"

#include <charconv>
#include <cmath>

#include "device/bounded_copy.h"
#include "motion/units.h"

namespace k7 {

namespace {

void AppendMaxSpeed(LineText& line, const char* letter, float inchesPerSecond) noexcept {
  const float feed = SpeedToFeed(inchesPerSecond);
  char digits[16] = "";
  std::to_chars(digits, digits + sizeof digits - 1, RoundToSteps(std::fabs(feed)));
  AppendText(line.text, letter);
  if (feed < 0.0f) AppendText(line.text, "-");
  AppendText(line.text, digits);
}

}  // namespace

NumberText FeedText(float inchesPerSecond) noexcept {
  return FormatFixed(static_cast<double>(SpeedToFeed(inchesPerSecond)), 3);
}

LineText FeedLine(const char* feedText) noexcept {
  LineText line;
  AppendText(line.text, "G0 F");
  AppendText(line.text, feedText);
  AppendText(line.text, "\n");
  return line;
}

LineText MaxSpeedsLine(float x, float y, float z) noexcept {
  LineText line;
  AppendText(line.text, "M203");
  AppendMaxSpeed(line, " X", x);
  AppendMaxSpeed(line, " Y", y);
  AppendMaxSpeed(line, " Z", z);
  AppendText(line.text, "\n");
  return line;
}

LineText StepsPerMmLine(const char* axis, float stepsPerMm) noexcept {
  LineText line;
  AppendText(line.text, "M92 ");
  AppendText(line.text, axis);
  AppendText(line.text, FormatFixed(static_cast<double>(stepsPerMm), 5).c_str());
  AppendText(line.text, "\n");
  return line;
}

}  // namespace k7
