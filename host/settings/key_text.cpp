#include "settings/key_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/text.h"
#include "settings/ini_text.h"
#include "settings/row_text.h"
#include "settings/schema.h"

namespace k7host {

using k7::settings::Encoding;
using k7::settings::kRows;
using k7::settings::Reader;

namespace {

constexpr double kLeastFixed = 1e-6;  // in between a number is written without an exponent
constexpr double kMostFixed = 1e9;

template <typename Number>
std::string Shortest(Number value) {
  char text[64];
  const auto size = std::fabs(static_cast<double>(value));
  const bool plain = size == 0 || (size >= kLeastFixed && size < kMostFixed);
  const std::to_chars_result end =
      std::to_chars(text, text + sizeof text, value,
                    plain ? std::chars_format::fixed : std::chars_format::general);
  return {text, end.ptr};
}

std::string Lowered(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return lower;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// How many letters have to be added, left out or changed to make one text the other.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t change = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({change, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row.back();
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "\"" : ", \"") + name + "\"";
  return text;
}

std::string WithUnit(const Row& row, const std::string& number) {
  return *row.unit == '\0' ? number : number + " " + row.unit;
}

std::string PlainNumber(const Row& row, double value) {
  if (row.encoding == Encoding::Flag) return value != 0 ? "on" : "off";
  return row.encoding == Encoding::Float ? NumberText(static_cast<float>(value))
                                         : NumberText(value);
}

// The number at the front of what was typed, and nothing but the unit of the row behind it.
template <typename Number>
std::optional<Number> Typed(const Row& row, std::string_view typed) {
  if (!typed.empty() && typed.front() == '+') typed.remove_prefix(1);
  Number value = 0;
  const std::from_chars_result end =
      std::from_chars(typed.data(), typed.data() + typed.size(), value);
  if (end.ec != std::errc()) return std::nullopt;
  const std::string_view rest =
      Trimmed(typed.substr(static_cast<std::size_t>(end.ptr - typed.data())));
  const std::string_view unit = row.unit;  // or its first word: "thousandths", "steps"
  if (!rest.empty() && rest != unit && rest != unit.substr(0, unit.find(' '))) return std::nullopt;
  return value;
}

Encoded EncodeText(const Row& row, std::string_view typed) {
  const std::size_t length = WideText(typed).size();
  if (static_cast<double>(length) > row.range.most) {
    return {"", "the text has " + std::to_string(length) + " characters; " + RangeText(row)};
  }
  if (typed.find_first_of("\r\n") != std::string_view::npos) {
    return {"", "a text of the file cannot hold a line end"};
  }
  return {std::string(typed), ""};
}

Encoded EncodeFlag(std::string_view typed) {
  const std::string word = Lowered(typed);
  for (const char* yes : {"1", "on", "yes", "true"}) {
    if (word == yes) return {"1", ""};
  }
  for (const char* no : {"0", "off", "no", "false"}) {
    if (word == no) return {"0", ""};
  }
  return {"", "'" + std::string(typed) + "' is neither on nor off"};
}

}  // namespace

std::string KeyName(const Row& row) {
  return Narrow(row.section) + "/" + Narrow(row.key);
}

KeyFound FindKey(std::string_view name) {
  std::vector<const Row*> found;
  for (const Row* row : kRows) {
    if (SameName(KeyName(*row), name)) return {row, ""};
    if (SameName(Narrow(row->key), name)) found.push_back(row);
  }
  if (found.size() == 1) return {found.front(), ""};
  std::vector<std::string> names;
  names.reserve(found.size());
  for (const Row* row : found) names.push_back(KeyName(*row));
  if (!names.empty()) {
    return {nullptr, "'" + std::string(name) + "' stands in several sections: " + Joined(names)};
  }
  names = NearestKeys(name);
  return {nullptr, "there is no key '" + std::string(name) + "'" +
                       (names.empty() ? "; k7host settings show lists them all"
                                      : "; the nearest: " + Joined(names))};
}

const Row* RowOf(std::string_view section, std::string_view key) {
  for (const Row* row : kRows) {
    if (SameName(Narrow(row->section), section) && SameName(Narrow(row->key), key)) return row;
  }
  return nullptr;
}

std::vector<std::string> NearestKeys(std::string_view name, std::size_t most) {
  struct Near {
    std::size_t distance;
    std::string name;
  };
  std::vector<Near> all;
  const std::string wanted = Lowered(name);
  for (const Row* row : kRows) {
    const std::string whole = KeyName(*row);
    const std::string key = Narrow(row->key);
    const std::size_t distance =
        std::min(Distance(wanted, Lowered(whole)), Distance(wanted, Lowered(key)));
    // Three letters wrong, or a third of them, is still alike; part of a name is, too.
    const bool part = wanted.size() >= 3 && Lowered(whole).find(wanted) != std::string::npos;
    if (part || distance <= std::max<std::size_t>(3, wanted.size() / 3)) {
      all.push_back({part ? 0 : distance, whole});
    }
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const Near& a, const Near& b) { return a.distance < b.distance; });
  std::vector<std::string> names;
  for (std::size_t i = 0; i < all.size() && i < most; ++i) names.push_back(all[i].name);
  return names;
}

std::string NumberText(float value) {
  return Shortest(value);
}

std::string NumberText(double value) {
  return Shortest(value);
}

std::int32_t NumberInText(std::string_view text) {
  while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  std::uint32_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = number * 10 + static_cast<std::uint32_t>(c - '0');
  }
  return static_cast<std::int32_t>(negative ? 0 - number : number);
}

bool IsWholeNumber(std::string_view text) {
  text = Trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  std::int64_t number = 0;
  const std::from_chars_result end =
      std::from_chars(text.data(), text.data() + text.size(), number);
  return end.ec == std::errc() && end.ptr == text.data() + text.size() && number >= INT32_MIN &&
         number <= std::int64_t{UINT32_MAX};
}

double ValueOf(const Row& row, std::int32_t number) {
  if (row.encoding == Encoding::Float) return static_cast<double>(k7::FloatOfBits(number));
  if (row.encoding == Encoding::Flag) return number != 0 ? 1 : 0;
  return number;
}

std::string ValueText(const Row& row, std::int32_t number) {
  return WithUnit(row, PlainNumber(row, ValueOf(row, number)));
}

std::string ValueText(const Row& row, std::string_view inFile) {
  if (row.encoding == Encoding::Text) return std::string(inFile);
  return ValueText(row, NumberInText(inFile));
}

std::string DefaultText(const Row& row) {
  if (k7::settings::IsWrittenOnly(row)) return "none: written only";
  if (row.encoding == Encoding::Text) return Narrow(row.text);
  std::string text = row.otherwise ? PlainNumber(row, *row.otherwise) : "";
  for (const k7::settings::Override& other : row.overrides) {
    if (other.reader == Reader::Any) continue;
    if (!text.empty()) text += "; ";
    text += std::string(NameOf(other.reader)) + " takes ";
    text += other.standIn != nullptr ? other.standIn : PlainNumber(row, other.number);
  }
  return text;
}

std::string RangeText(const Row& row) {
  if (row.encoding == Encoding::Flag) return "on or off";
  if (row.encoding == Encoding::Text) return "up to " + NumberText(row.range.most) + " characters";
  const std::string least = NumberText(row.range.least);
  if (row.range.least == row.range.most) return WithUnit(row, least);
  return WithUnit(row, least + " to " + NumberText(row.range.most));
}

bool InRange(const Row& row, double value) {
  // A float of the file may be the nearest to a bound that is none itself, as 0.1 is.
  if (row.encoding == Encoding::Float) {
    const auto single = static_cast<float>(value);
    return single >= static_cast<float>(row.range.least) &&
           single <= static_cast<float>(row.range.most);
  }
  return value >= row.range.least && value <= row.range.most;
}

std::string EncodeNumber(const Row& row, double value) {
  return std::to_string(k7::settings::InFile(row.encoding, value));
}

Encoded Encode(const Row& row, std::string_view typed) {
  if (row.encoding == Encoding::Text) return EncodeText(row, typed);
  typed = Trimmed(typed);
  if (row.encoding == Encoding::Flag) return EncodeFlag(typed);
  const std::string quoted = "'" + std::string(typed) + "'";
  double value = 0;
  if (row.encoding == Encoding::Int) {
    const std::optional<std::int64_t> whole = Typed<std::int64_t>(row, typed);
    if (!whole) return {"", quoted + " is no whole number; expected " + RangeText(row)};
    value = static_cast<double>(*whole);
  } else {
    const std::optional<float> number = Typed<float>(row, typed);
    if (!number || !std::isfinite(*number)) {
      return {"", quoted + " is no number; expected " + RangeText(row)};
    }
    value = static_cast<double>(*number);
  }
  if (!InRange(row, value)) return {"", quoted + " makes no sense; expected " + RangeText(row)};
  return {EncodeNumber(row, value), ""};
}

}  // namespace k7host
