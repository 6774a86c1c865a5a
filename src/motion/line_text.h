// The texts of the lines that set feeds, maximum speeds and steps per millimetre.
#pragma once

#include "motion/number_text.h"

namespace k7 {

// A whole line, its line feed included; empty when there is nothing to send.
struct LineText {
  char text[160] = "";
  const char* c_str() const noexcept { return text; }
  bool empty() const noexcept { return text[0] == '\0'; }
};

// Number part of a feed line, from inches per second: millimetres per minute, 3 decimals. [any]
NumberText FeedText(float inchesPerSecond) noexcept;

// "G0 F" + number. [any]
LineText FeedLine(const char* feedText) noexcept;

// "M203 X.. Y.. Z.." in whole millimetres per minute, from inches per second. [any]
LineText MaxSpeedsLine(float x, float y, float z) noexcept;

// "M92 " + axis + number with 5 decimals. [any]
LineText StepsPerMmLine(const char* axis, float stepsPerMm) noexcept;

}  // namespace k7
