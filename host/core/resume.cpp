// Writing and reading of the lines.
#include "core/resume.h"

#include <charconv>

namespace k7host {
namespace {

constexpr std::string_view kFirstLine = "k7host resume file 1";

std::string Line(std::string_view name, std::string_view value) {
  return std::string(name) + ": " + std::string(value) + "\n";
}

bool TakeNumber(std::string_view text, std::uint32_t& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

bool TakeLine(std::string_view name, std::string_view value, ResumePoint& point) {
  if (name == "word") {
    point.words.emplace_back(value);
  } else if (name == "folder") {
    point.folder = value;
  } else if (name == "controller") {
    point.controller = value;
  } else if (name == "strokes done") {
    return TakeNumber(value, point.strokesDone);
  } else if (name == "strokes of all passes") {
    return TakeNumber(value, point.strokesTotal);
  } else if (name == "plan") {
    point.plan = value;
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::string ResumeText(const ResumePoint& point) {
  std::string text = std::string(kFirstLine) + "\n" + Line("controller", point.controller) +
                     Line("strokes done", std::to_string(point.strokesDone)) +
                     Line("strokes of all passes", std::to_string(point.strokesTotal)) +
                     Line("plan", point.plan) + Line("folder", point.folder);
  for (const std::string& word : point.words) text += Line("word", word);
  return text;
}

std::optional<ResumePoint> ReadResume(std::string_view text) {
  ResumePoint point;
  bool first = true;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (first && line != kFirstLine) return std::nullopt;
    if (!first && !line.empty()) {
      const std::size_t colon = line.find(": ");
      if (colon == line.npos || !TakeLine(line.substr(0, colon), line.substr(colon + 2), point)) {
        return std::nullopt;
      }
    }
    first = false;
  }
  if (point.words.empty() || point.strokesDone > point.strokesTotal) return std::nullopt;
  return point;
}

std::string PlanMark(const JobPlan& plan) {
  std::uint64_t mark = 0xcbf29ce484222325u;
  const auto add = [&mark](std::uint32_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
      mark = (mark ^ ((value >> shift) & 0xFF)) * 0x100000001b3u;
    }
  };
  for (const Move& move : plan.moves) {
    add(static_cast<std::uint32_t>(move.kind));
    add(move.xSteps);
    add(move.ySteps);
  }
  std::string text;
  for (int shift = 60; shift >= 0; shift -= 4) text += "0123456789abcdef"[(mark >> shift) & 15];
  return text;
}

}  // namespace k7host
