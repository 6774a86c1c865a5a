#include "link/commands.h"

#include <charconv>
#include <cmath>

#include "base/arithmetic.h"
#include "base/bounded_copy.h"

namespace k7 {

namespace {

void AppendWhole(LineText& line, std::int32_t number) noexcept {
  char digits[16] = "";
  *std::to_chars(digits, digits + sizeof digits - 1, number).ptr = '\0';
  AppendText(line.text, digits);
}

void AppendMaxSpeed(LineText& line, const char* letter, float inchesPerSecond) noexcept {
  const float feed = SpeedToFeed(inchesPerSecond);
  AppendText(line.text, letter);
  if (feed < 0.0f) AppendText(line.text, "-");
  AppendWhole(line, RoundToSteps(std::fabs(feed)));
}

LineText Begun(const char* text) noexcept {
  LineText line;
  AppendText(line.text, text);
  return line;
}

LineText Ended(LineText line) noexcept {
  AppendText(line.text, "\n");
  return line;
}

}  // namespace

AxisLine::AxisLine(const char* command) noexcept : line_(Begun(command)) {}

void AxisLine::Add(Axis axis, const NumberText& millimetres) noexcept {
  constexpr PerAxis<const char*> kWords = {" X", " Y", " Z"};
  AppendText(line_.text, kWords[axis]);
  AppendText(line_.text, millimetres.c_str());
  hasWords_ = true;
}

LineText AxisLine::Finished() const noexcept {
  return hasWords_ ? Ended(line_) : LineText{};
}

LineText StoreIdentityLine(const wchar_t* identity) noexcept {
  char text[17] = "";
  for (int i = 0; i < 16 && identity[i] != L'\0'; ++i) text[i] = static_cast<char>(identity[i]);
  LineText line = Begun("config-set sd controller_id ");
  AppendText(line.text, text);
  return Ended(line);
}

NumberText FeedText(float inchesPerSecond) noexcept {
  return FormatFixed(static_cast<double>(SpeedToFeed(inchesPerSecond)), 3);
}

LineText FeedLine(const char* feedText) noexcept {
  LineText line = Begun("G0 F");
  AppendText(line.text, feedText);
  return Ended(line);
}

LineText ProbeLine(float feed) noexcept {
  LineText line = Begun("G30 F");
  AppendText(line.text, FormatFixed(static_cast<double>(feed), 3).c_str());
  return Ended(line);
}

LineText MaxSpeedsLine(float x, float y, float z) noexcept {
  LineText line = Begun("M203");
  AppendMaxSpeed(line, " X", x);
  AppendMaxSpeed(line, " Y", y);
  AppendMaxSpeed(line, " Z", z);
  return Ended(line);
}

LineText StepsPerMmLine(const char* axis, float stepsPerMm) noexcept {
  LineText line = Begun("M92 ");
  AppendText(line.text, axis);
  AppendText(line.text, FormatFixed(static_cast<double>(stepsPerMm), 5).c_str());
  return Ended(line);
}

LineText SpindleLevelLine(std::int32_t level) noexcept {
  LineText line = Begun("M44 S");
  AppendWhole(line, level);
  return Ended(line);
}

}  // namespace k7
