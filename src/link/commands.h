// Every line that the driver sends, with its text once. Pure: links send them (link/link.h).
#pragma once

#include <cstdint>

#include "base/number_text.h"
#include "device/per_axis.h"

namespace k7 {

// A whole line, its line feed included; empty when there is nothing to send.
struct LineText {
  char text[160] = "";
  const char* c_str() const noexcept { return text; }
  bool empty() const noexcept { return text[0] == '\0'; }
};

// Lines that are always the same.
namespace commands {

inline constexpr char kSignOfLife[] = "SmoothieIsConnected\n";  // answered with the same text
inline constexpr char kAskIdentity[] = "config-get sd controller_id\n";
inline constexpr char kAskTableHomed[] = "TableIsHomed\n";
inline constexpr char kTableHomed[] = "SetTableHomed\n";  // the table counts as homed from here on
inline constexpr char kAskSwitches[] = "M119\n";

inline constexpr char kMillimetres[] = "G21\n";
inline constexpr char kAbsolutePositions[] = "G90\n";
inline constexpr char kFinishMotion[] = "M400\n";
inline constexpr char kMotorsOn[] = "M17\n";
inline constexpr char kMotorsOff[] = "M18\n";

inline constexpr char kJobOutputOn[] = "M106\n";
inline constexpr char kJobOutputOff[] = "M107\n";
inline constexpr char kBlockMessagesOn[] = "SendBlockMessagesOn\n";    // answered with the same
inline constexpr char kBlockMessagesOff[] = "SendBlockMessagesOff\n";  // text

inline constexpr char kToolOn[] = "M42\n";  // the spindle, or the air head
inline constexpr char kToolOff[] = "M43\n";

// By axis, X first: drives it to its switch.
inline constexpr PerAxis<const char*> kHomeAxis = {"G28 X0\n", "G28 Y0\n", "G28 Z0\n"};

// By roundAxisMode: which motor output drives which axis.
inline constexpr const char* kAxisMappings[] = {"M800 X1 Y2\n", "M800 X5 Y2\n", "M800 X1 Y5\n"};

}  // namespace commands

// A line of axis words, as moves and declared positions are: "G0 X1.000000 Z-0.500000\n".
class AxisLine {
 public:
  explicit AxisLine(const char* command) noexcept;
  void Add(Axis axis, const NumberText& millimetres) noexcept;
  bool HasWords() const noexcept { return hasWords_; }
  // The line; empty without words.
  LineText Finished() const noexcept;

 private:
  LineText line_;
  bool hasWords_ = false;
};

// The commands of axis lines: a move, and the declaration of where the machine stands.
inline constexpr char kMoveCommand[] = "G0";
inline constexpr char kPositionCommand[] = "G92";

// "config-set sd controller_id " + identity, of which the low bytes go out: it is ASCII. [any]
LineText StoreIdentityLine(const wchar_t* identity) noexcept;

// Number part of a feed line, from inches per second: millimetres per minute, 3 decimals. [any]
NumberText FeedText(float inchesPerSecond) noexcept;

// "G0 F" + number. [any]
LineText FeedLine(const char* feedText) noexcept;

// "G30 F" + feed with 3 decimals: down to the first touch. [any]
LineText ProbeLine(float feed) noexcept;

// "M203 X.. Y.. Z.." in whole millimetres per minute, from inches per second. [any]
LineText MaxSpeedsLine(float x, float y, float z) noexcept;

// "M92 " + axis + number with 5 decimals. [any]
LineText StepsPerMmLine(const char* axis, float stepsPerMm) noexcept;

// "M44 S" + level. [any]
LineText SpindleLevelLine(std::int32_t level) noexcept;

}  // namespace k7
