#include "trace/record.h"

#include <charconv>

namespace k7host {
namespace {

constexpr std::size_t kLongestLine = 65536;

// Takes the next word off `text`, and the blanks before it.
std::string_view TakeWord(std::string_view& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return text = {};
  text.remove_prefix(first);
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  return word;
}

template <typename Number>
bool ReadWhole(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Reads one escape of a wire text behind its backslash.
bool TakeEscape(std::string_view& text, std::string& bytes) {
  if (text.empty()) return false;
  const char c = text.front();
  text.remove_prefix(1);
  switch (c) {
    case 'n':
      bytes.push_back('\n');
      return true;
    case 'r':
      bytes.push_back('\r');
      return true;
    case 't':
      bytes.push_back('\t');
      return true;
    case '\\':
    case '"':
      bytes.push_back(c);
      return true;
    case 'x': {
      const int high = text.size() < 2 ? -1 : HexDigit(text[0]);
      const int low = text.size() < 2 ? -1 : HexDigit(text[1]);
      if (high < 0 || low < 0) return false;
      bytes.push_back(static_cast<char>(high * 16 + low));
      text.remove_prefix(2);
      return true;
    }
    default:
      return false;
  }
}

// Takes a text in quotation marks off `text`, which stands behind the first.
bool TakeQuoted(std::string_view& text, bool escaped, std::string& found) {
  while (!text.empty()) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == '"') return true;
    if (c == '\\' && escaped) {
      if (!TakeEscape(text, found)) return false;
    } else {
      found.push_back(c);
    }
  }
  return false;
}

// Splits the rest of a record. A text that has been cut is followed by "...".
bool ReadRest(TraceRecord& record) {
  const bool escaped = record.kind == "send" || record.kind == "recv";
  std::string_view text = record.rest;
  while (true) {
    const std::size_t mark = text.find('"');
    std::string_view before = text.substr(0, mark);
    for (std::string_view word = TakeWord(before); !word.empty(); word = TakeWord(before)) {
      if (record.texts.empty()) record.words.emplace_back(word);
    }
    if (mark == std::string_view::npos) return true;
    text.remove_prefix(mark + 1);
    std::string found;
    if (record.texts.size() == 2 || !TakeQuoted(text, escaped, found)) return false;
    record.texts.push_back(std::move(found));
  }
}

bool IsComplete(const TraceRecord& record) {
  if (record.kind == "send") return record.words.size() == 1 && record.texts.size() == 1;
  if (record.kind == "recv") return record.texts.size() == 1;
  return true;
}

}  // namespace

std::optional<std::int64_t> ReadSeconds(std::string_view text) {
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos || text.size() != point + 7 || text[0] == '-') return {};
  std::int64_t seconds = 0;
  std::uint32_t millionths = 0;
  constexpr std::int64_t kMostSeconds = 1000000000;  // 31 years
  if (!ReadWhole(text.substr(0, point), seconds) || seconds > kMostSeconds ||
      !ReadWhole(text.substr(point + 1), millionths)) {
    return {};
  }
  return seconds * 1000000 + millionths;
}

std::string SecondsText(std::int64_t us) {
  const bool negative = us < 0;
  const auto all = negative ? 0 - static_cast<std::uint64_t>(us) : static_cast<std::uint64_t>(us);
  std::string fraction = std::to_string(all % 1000000);
  fraction.insert(0, 6 - fraction.size(), '0');
  return (negative ? "-" : "") + std::to_string(all / 1000000) + "." + fraction;
}

std::optional<TraceRecord> ReadTraceRecord(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.size() > kLongestLine) return {};
  TraceRecord record;
  const auto us = ReadSeconds(TakeWord(line));
  if (!us || !ReadWhole(TakeWord(line), record.process)) return {};
  record.us = *us;
  const std::string_view thread = TakeWord(line);
  const std::size_t colon = thread.find(':');
  if (colon == 0 || colon == std::string_view::npos ||
      !ReadWhole(thread.substr(colon + 1), record.thread)) {
    return {};
  }
  record.role = thread.substr(0, colon);
  record.link = TakeWord(line);
  record.kind = TakeWord(line);
  if (record.link.empty() || record.kind.empty()) return {};
  if (record.link == "-") record.link.clear();
  const std::size_t rest = line.find_first_not_of(' ');
  if (rest != std::string_view::npos) record.rest = line.substr(rest);
  if (!ReadRest(record) || !IsComplete(record)) return {};
  return record;
}

}  // namespace k7host
