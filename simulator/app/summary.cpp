#include "app/summary.h"

#include <cstdarg>
#include <cstdio>

namespace k7sim {
namespace {

// By mistake: one of them, several of them.
constexpr const char* kMistakePhrases[kMistakeKinds][2] = {
    {"move before homing", "moves before homing"},
    {"cut beside the table", "cuts beside the table"},
    {"move beyond the end of an axis", "moves beyond the end of an axis"},
    {"plunge with the spindle off", "plunges with the spindle off"},
    {"homing that found no switch", "homings that found no switch"}};

[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...) {
  char text[256];
  va_list values;
  va_start(values, format);
  std::vsnprintf(text, sizeof text, format, values);
  va_end(values);
  return text;
}

std::string Count(std::uint64_t count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string WhatWasCut(const Recorder& record) {
  const std::string depth = Format(", %.3f in deep", record.DeepestInches());
  if (record.CutStrokes() > 0) {
    return Format("cut %.1f in, ", record.CutInches()) +
           Count(record.CutStrokes(), "stroke", "strokes") + depth;
  }
  if (record.Plunges() > 0) return "drilled " + Count(record.Plunges(), "hole", "holes") + depth;
  return "nothing was cut";
}

// Why, as far as the machine can tell; empty when something was cut.
std::string WhyNothing(const Recorder& record) {
  if (record.HasCut()) return {};
  if (!record.HasMoved()) return "nothing moved";
  if (record.Tool() == ToolKind::Air) return "the air head was never on while the machine moved";
  if (!record.NearestInches()) return "no plate is on the table";
  return Format("the tool came no nearer to the plate than %.3f in", *record.NearestInches());
}

std::string Mistakes(const Recorder& record) {
  std::string text;
  for (std::size_t i = 0; i < kMistakeKinds; ++i) {
    const auto kind = static_cast<Mistake>(i);
    const std::size_t count = record.MistakeCount(kind);
    if (count == 0) continue;
    const MistakeRecord& first = *record.FirstMistake(kind);
    text += text.empty() ? "" : "; ";
    text += Count(count, kMistakePhrases[i][0], kMistakePhrases[i][1]);
    text += count == 1 ? ", at line " : ", the first at line ";
    text += std::to_string(first.line) + ": " + first.command;
  }
  return text;
}

}  // namespace

std::string Summary(const Simulator& simulator) {
  const Controller& board = simulator.Board();
  const Recorder& record = board.Record();
  std::string text = WhatWasCut(record);
  const std::string why = WhyNothing(record), mistakes = Mistakes(record);
  if (record.MistakeTotal() > 0) {
    text += "; " + mistakes;
  } else {
    text += (why.empty() ? "" : ": " + why) + ", 0 errors";
  }
  text += "\n" + Format("%.1f s of machine time, ", SecondsFromUs(simulator.MachineNow())) +
          Count(board.Jobs().Records().size(), "job", "jobs") + ", " +
          Count(board.Counts().blocks, "move", "moves") +
          Format(", %.1f in of travel; ", record.TravelInches()) +
          Count(simulator.LinesReceived(), "line", "lines") + " in, " +
          Count(simulator.RepliesSent(), "reply", "replies") + " out";
  const ToolPlace at = board.Machine().PlaceAt(board.PositionMm(simulator.MachineNow()));
  text += "\n" + Format("head at X %.3f Y %.3f Z %.3f in, ", at.x, at.y, at.z) +
          (board.IsHomed() ? "homed" : "not homed") +
          (board.SpindleOn() ? ", spindle on" : ", spindle off");
  if (board.IsHalted()) text += ", halted";
  if (board.Counts().restarts > 0) {
    text += ", restarted " + Count(board.Counts().restarts, "time", "times");
  }
  if (!simulator.FaultsOf().AllFired()) text += "; a fault never fired";
  return text + "\n";
}

}  // namespace k7sim
