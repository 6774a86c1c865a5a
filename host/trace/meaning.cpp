#include "trace/meaning.h"

#include <cstdint>

namespace k7host {
namespace {

// Order matters: the first that the line starts with.
constexpr TraceMeaning kSentMeanings[] = {
    {"SmoothieIsConnected", "asks for a sign of life"},
    {"config-get sd controller_id", "asks for the identity"},
    {"config-set sd controller_id", "gives the controller an identity"},
    {"M92 ", "steps per millimetre"},
    {"M800 ", "which motor drives which axis"},
    {"G92 ", "declares where the head stands"},
    {"M17", "motors on"},
    {"M18", "motors off"},
    {"G21", "millimetres"},
    {"G90", "absolute positions"},
    {"M400", "waits for the end of all motion"},
    {"M203 ", "maximum speeds"},
    {"TableIsHomed", "asks whether the table is homed"},
    {"SetTableHomed", "the table is homed from here on"},
    {"M119", "asks for the switches"},
    {"M106", "job output on"},
    {"M107", "job output off"},
    {"SendBlockMessagesOn", "switches the reports of moves on"},
    {"SendBlockMessagesOff", "switches the reports of moves off"},
    {"M42", "tool on"},
    {"M43", "tool off"},
    {"M44 S", "spindle level"},
    {"G28 X", "drives X to its switch"},
    {"G28 Y", "drives Y to its switch"},
    {"G28 Z", "drives Z to its switch"},
    {"G30 ", "probes the surface"},
    {"G0 F", "feed from here on"},
};

constexpr TraceQuestion kQuestions[] = {
    {"SmoothieIsConnected", "SmoothieIsConnected", false},
    {"config-get sd controller_id", "controller_id is set to", false},
    {"TableIsHomed", "TableIsHomed", false},
    {"M119", "min_x:", false},
    {"SendBlockMessagesOn", "SendBlockMessagesOn", false},
    {"SendBlockMessagesOff", "SendBlockMessagesOff", false},
    {"G28 X", "X_Limit", true},
    {"G28 Y", "Y_Limit", true},
    {"G28 Z", "Z_Limit", true},
    {"G30 ", "Probe", true},
};

constexpr TraceMeaning kReceivedMeanings[] = {
    {"SendBlockMessagesOn", "moves are reported from here on"},
    {"SendBlockMessagesOff", "moves are no longer reported"},
    {"SmoothieIsConnected", "a sign of life"},
    {"TableIsHomedFALSE", "the table is not homed"},
    {"TableIsHomedTRUE", "the table is homed"},
    {"X_Limit", "X has found its switch"},
    {"Y_Limit", "Y has found its switch"},
    {"Z_Limit", "Z has found its switch"},
    {"ZProbe not triggered", "the probe has touched nothing"},
    {"Z_Probe", "the probe has touched"},
    {"controller_id is set to", "its identity"},
    {"min_x:", "the switches"},
};

constexpr struct {
  std::uint32_t code;
  const char* text;
} kErrors[] = {
    {2, "there is no such port"},
    {5, "held by another program, or no right to it"},
    {6, "the handle is closed"},
    {22, "the device is gone"},
    {31, "the device does not work"},
    {121, "timed out"},
    {995, "broken off"},
    {1167, "the device is not connected"},
    {10054, "the other side has reset"},
    {10060, "no answer from that address"},
    {10061, "refused by that address"},
    {11001, "no such name"},
};

}  // namespace

const TraceMeaning* MeaningOfSent(std::string_view line) {
  for (const TraceMeaning& row : kSentMeanings) {
    if (line.starts_with(row.said)) return &row;
  }
  return nullptr;
}

const TraceQuestion* QuestionIn(std::string_view line) {
  for (const TraceQuestion& row : kQuestions) {
    if (line.starts_with(row.start)) return &row;
  }
  return nullptr;
}

const TraceMeaning* MeaningOfReceived(std::string_view line) {
  for (const TraceMeaning& row : kReceivedMeanings) {
    if (line.find(row.said) != std::string_view::npos) return &row;
  }
  return nullptr;
}

std::string TraceErrorText(const std::string& code) {
  for (const auto& row : kErrors) {
    if (code == std::to_string(row.code)) return "error " + code + ": " + row.text;
  }
  return "error " + code;
}

}  // namespace k7host
