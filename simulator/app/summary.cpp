#include "app/summary.h"

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

std::string Decimal(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string Count(std::uint64_t count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string WhatWasCut(const Recorder& record) {
  const std::string depth = ", " + Decimal(record.DeepestInches(), 3) + " in deep";
  if (record.CutStrokes() > 0) {
    return "cut " + Decimal(record.CutInches(), 1) + " in, " +
           Count(record.CutStrokes(), "stroke", "strokes") + depth;
  }
  if (record.Plunges() > 0) return "drilled " + Count(record.Plunges(), "hole", "holes") + depth;
  return "nothing was cut";
}

// Why, as far as the machine can tell; empty when something was cut.
std::string WhyNothing(const Recorder& record) {
  if (record.HasCut()) return {};
  if (!record.HasMoved()) return "no moves were sent";
  if (record.Tool() == ToolKind::Air) return "the air head was never on while the machine moved";
  if (!record.NearestInches()) return "no plate is on the table";
  return "the tool came no nearer to the plate than " + Decimal(*record.NearestInches(), 3) + " in";
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
  text += "\n" + Decimal(SecondsFromUs(simulator.MachineNow()), 1) + " s of machine time, " +
          Count(board.Jobs().Records().size(), "job", "jobs") + ", " +
          Count(board.Counts().blocks, "move", "moves") + ", " + Decimal(record.TravelInches(), 1) +
          " in of travel; " + Count(simulator.LinesReceived(), "line", "lines") + " in, " +
          Count(simulator.RepliesSent(), "reply", "replies") + " out";
  const ToolPlace at = board.Machine().PlaceAt(board.PositionMm(simulator.MachineNow()));
  text += "\nhead at X " + Decimal(at.x, 3) + " Y " + Decimal(at.y, 3) + " Z " + Decimal(at.z, 3) +
          " in, " + (board.IsHomed() ? "homed" : "not homed") +
          (board.SpindleOn() ? ", spindle on" : ", spindle off");
  if (board.IsHalted()) text += ", halted";
  if (board.Counts().restarts > 0) {
    text += ", restarted " + Count(board.Counts().restarts, "time", "times");
  }
  if (!simulator.FaultsOf().AllFired()) text += "; a fault never fired";
  return text + "\n";
}

}  // namespace k7sim
