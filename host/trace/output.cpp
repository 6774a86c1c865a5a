#include "trace/output.h"

#include <algorithm>
#include <charconv>

#include "core/scaling.h"

namespace k7host {
namespace {

std::string Left(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

std::string Right(std::string text, std::size_t width) {
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

// Three decimals, with a point whatever the locale.
std::string Number(double number) {
  char digits[400];
  const auto [end, error] =
      std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, 3);
  return error == std::errc() ? std::string(digits, end) : "0";
}

std::string QuotedJson(const std::string& text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) >= 0x7F) {
      constexpr char kDigits[] = "0123456789abcdef";
      json += "\\u00";
      json += kDigits[static_cast<unsigned char>(c) >> 4];
      json += kDigits[static_cast<unsigned char>(c) & 15];
    } else {
      json += c;
    }
  }
  return json + "\"";
}

// As it is: a name is UTF-8 already.
std::string QuotedName(const std::string& text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    if (static_cast<unsigned char>(c) >= 0x20) json += c;
  }
  return json + "\"";
}

bool IsLine(const TraceRecord& record) {
  return record.kind == "send" || record.kind == "recv";
}

std::string PlaceText(const TracePlace& place) {
  return InchesText(place.x) + " " + InchesText(place.y) + " " + InchesText(place.z);
}

// The line as it stands in the file, without its quotation marks and its end.
std::string ShownLine(const TraceRecord& record) {
  const std::size_t first = record.rest.find('"');
  const std::size_t last = record.rest.rfind('"');
  if (first == std::string::npos || last <= first) return record.rest;
  std::string text = record.rest.substr(first + 1, last - first - 1);
  for (const char* end : {"\\n", "\\r"}) {
    if (text.ends_with(end)) text.resize(text.size() - 2);
  }
  return text;
}

std::string AtText(const char* name, std::int64_t us, std::int64_t atUs, const std::string& what) {
  return std::string(name) + ": " + SecondsText(us) + " s from " + SecondsText(atUs) + ": " + what +
         "\n";
}

}  // namespace

std::string TraceTitles() {
  return Right("time s", 14) + " " + Right("delta s", 12) + " process thread   " +
         Left("line", 34) + " out " + Left("x y z inches", 22) + " meaning";
}

std::string TraceEntryText(const TraceEntry& entry) {
  const TraceRecord& record = entry.record;
  std::string text = Right(SecondsText(record.us), 14) + " " +
                     Right("+" + SecondsText(entry.deltaUs), 12) + " " +
                     Right(std::to_string(record.process), 7) + " " + Left(record.role, 6);
  if (!IsLine(record)) {
    text += " . " + record.kind + (record.rest.empty() ? "" : " " + record.rest);
    if (!entry.meaning.empty()) text += "  -- " + entry.meaning;
    return text;
  }
  text += record.kind == "send" ? " > " : " < ";
  text += Left(ShownLine(record), 34) + " " + Right(std::to_string(entry.outstanding), 3) + " " +
          Left(PlaceText(entry.place), 22) + " ";
  if (!entry.tag.empty()) text += "[" + entry.tag + "] ";
  text += entry.meaning;
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

std::string TraceEntryJson(const TraceEntry& entry) {
  const TraceRecord& record = entry.record;
  std::string json =
      "{\"seconds\":" + SecondsText(record.us) + ",\"delta\":" + SecondsText(entry.deltaUs) +
      ",\"process\":" + std::to_string(record.process) +
      ",\"thread\":" + std::to_string(record.thread) + ",\"role\":" + QuotedName(record.role) +
      ",\"link\":" + QuotedName(record.link) + ",\"kind\":" + QuotedName(record.kind);
  if (IsLine(record)) {
    json += ",\"line\":" + QuotedJson(record.texts[0]) + ",\"tag\":" + QuotedName(entry.tag) +
            ",\"outstanding\":" + std::to_string(entry.outstanding) + ",\"inches\":[" +
            Number(entry.place.x) + "," + Number(entry.place.y) + "," + Number(entry.place.z) + "]";
  } else {
    json += ",\"rest\":" + QuotedName(record.rest);
  }
  return json + ",\"meaning\":" + QuotedName(entry.meaning) + "}";
}

std::string TraceSummaryText(const TraceSummary& s) {
  const double seconds = static_cast<double>(s.spanUs) / 1e6;
  const double rate = seconds > 0 ? static_cast<double>(s.sent) / seconds : 0.0;
  std::string text = "records: " + std::to_string(s.lines) + ", unreadable " +
                     std::to_string(s.unreadable) + ", lost " + std::to_string(s.lost) + "\n";
  text += "lines: sent " + std::to_string(s.sent) + ", received " + std::to_string(s.received) +
          " in " + SecondsText(s.spanUs) + " s\n";
  text += "rate: " + Number(rate) + " lines sent a second, " + std::to_string(s.busiestSent) +
          " in the busiest second\n";
  text += "jobs: " + std::to_string(s.jobs) + ", cuts " + std::to_string(s.cuts) + ", plunges " +
          std::to_string(s.plunges) + "\n";
  text += "distance: cut " + InchesText(s.cutInches) + " inches, travelled " +
          InchesText(s.travelInches) + " inches\n";
  for (const auto& [feed, inches] : s.feeds) {
    text += "feed: " + (feed > 0 ? InchesText(feed) + " in/min" : std::string("not known")) + ", " +
            InchesText(inches) + " inches\n";
  }
  for (const TraceWait& wait : s.waits) {
    text += AtText(wait.ended ? "wait" : "wait without end", wait.us, wait.atUs, wait.what);
  }
  for (const TraceWait& message : s.kept) {
    text += AtText(message.ended ? "kept by the host" : "kept by the host without end", message.us,
                   message.atUs, message.what);
  }
  for (const TraceAnswer& answer : s.answers) {
    text += AtText(answer.never ? "no answer" : "late answer", answer.us, answer.atUs, answer.line);
  }
  for (const std::string& failure : s.failures) text += "failure: " + failure + "\n";
  const auto more = s.failureCount - static_cast<std::int64_t>(s.failures.size());
  if (more > 0) text += "failures: " + std::to_string(more) + " more\n";
  return text;
}

std::string TraceSummaryJson(const TraceSummary& s) {
  const auto list = [](const auto& items, auto one) {
    std::string json = "[";
    for (const auto& item : items) json += (json.size() > 1 ? "," : "") + one(item);
    return json + "]";
  };
  const auto wait = [](const TraceWait& w) {
    return "{\"at\":" + SecondsText(w.atUs) + ",\"seconds\":" + SecondsText(w.us) +
           ",\"what\":" + QuotedName(w.what) + ",\"ended\":" + (w.ended ? "true" : "false") + "}";
  };
  const auto answer = [](const TraceAnswer& a) {
    return "{\"at\":" + SecondsText(a.atUs) + ",\"seconds\":" + SecondsText(a.us) +
           ",\"line\":" + QuotedJson(a.line) + ",\"never\":" + (a.never ? "true" : "false") + "}";
  };
  const auto feed = [](const std::pair<const double, double>& f) {
    return "{\"inchesPerMinute\":" + Number(f.first) + ",\"inches\":" + Number(f.second) + "}";
  };
  return "{\"records\":" + std::to_string(s.lines) +
         ",\"unreadable\":" + std::to_string(s.unreadable) + ",\"lost\":" + std::to_string(s.lost) +
         ",\"sent\":" + std::to_string(s.sent) + ",\"received\":" + std::to_string(s.received) +
         ",\"seconds\":" + SecondsText(s.spanUs) +
         ",\"busiestSecond\":" + std::to_string(s.busiestSent) +
         ",\"jobs\":" + std::to_string(s.jobs) + ",\"cuts\":" + std::to_string(s.cuts) +
         ",\"plunges\":" + std::to_string(s.plunges) + ",\"cutInches\":" + Number(s.cutInches) +
         ",\"travelInches\":" + Number(s.travelInches) + ",\"feeds\":" + list(s.feeds, feed) +
         ",\"waits\":" + list(s.waits, wait) + ",\"kept\":" + list(s.kept, wait) +
         ",\"answers\":" + list(s.answers, answer) +
         ",\"failures\":" + list(s.failures, QuotedName) +
         ",\"failureCount\":" + std::to_string(s.failureCount) + "}";
}

std::string TracePicture(const std::vector<TraceMove>& moves) {
  double left = 0, right = 1, bottom = 0, top = 1;
  bool first = true;
  for (const TraceMove& move : moves) {
    for (const TracePlace* place : {&move.from, &move.to}) {
      left = first ? place->x : std::min(left, place->x);
      right = first ? place->x : std::max(right, place->x);
      bottom = first ? place->y : std::min(bottom, place->y);
      top = first ? place->y : std::max(top, place->y);
      first = false;
    }
  }
  constexpr double kMargin = 0.25;
  const double width = right - left + 2 * kMargin, height = top - bottom + 2 * kMargin;
  const auto point = [&](const TracePlace& place) {
    return Number(place.x - left + kMargin) + " " + Number(top - place.y + kMargin);
  };
  std::string paths[2];  // travels, cuts
  std::string dots;
  for (std::size_t i = 0; i < moves.size(); ++i) {
    const TraceMove& move = moves[i];
    const bool along = move.from.x != move.to.x || move.from.y != move.to.y;
    if (along) {
      const bool goesOn =
          i > 0 && moves[i - 1].cut == move.cut &&
          (moves[i - 1].from.x != moves[i - 1].to.x || moves[i - 1].from.y != moves[i - 1].to.y);
      std::string& path = paths[move.cut ? 1 : 0];
      if (!goesOn) path += "M" + point(move.from);
      path += "L" + point(move.to);
    } else if (move.to.z > move.from.z && (i + 1 == moves.size() || !moves[i + 1].cut)) {
      const std::string at = point(move.to);
      const std::size_t blank = at.find(' ');
      dots += "<circle cx=\"" + at.substr(0, blank) + "\" cy=\"" + at.substr(blank + 1) +
              "\" r=\"0.02\"/>\n";
    }
  }
  const auto path = [](const char* style, const std::string& d) {
    return d.empty() ? std::string() : "<path " + std::string(style) + " d=\"" + d + "\"/>\n";
  };
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(width) + "in\" height=\"" +
         Number(height) + "in\" viewBox=\"0 0 " + Number(width) + " " + Number(height) +
         "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
         "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n" +
         path("stroke=\"#bbb\" stroke-width=\"0.005\"", paths[0]) +
         path("stroke=\"black\" stroke-width=\"0.02\"", paths[1]) + "<g fill=\"black\">\n" + dots +
         "</g>\n</svg>\n";
}

}  // namespace k7host
