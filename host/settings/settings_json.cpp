#include "settings/settings_json.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "settings/key_text.h"
#include "settings/listing.h"
#include "settings/row_text.h"
#include "settings/schema.h"
#include "settings/settings_check.h"

namespace k7host {

using namespace k7::settings;  // the rows, all over this file
using Json = nlohmann::ordered_json;

namespace {

constexpr char kFormat[] = "k7 settings 1";

std::string Printed(const Json& json) {
  // A text of the file may hold what is no UTF-8 after all.
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

// The number as people write it: of a float the shortest text that is it, not all the digits that
// the same number has in double precision.
Json NumberJson(const Row& row, double value) {
  if (!std::isfinite(value)) return nullptr;
  if (row.encoding == Encoding::Flag) return value != 0;
  if (row.encoding == Encoding::Int) return static_cast<std::int64_t>(value);
  return Json::parse(NumberText(static_cast<float>(value)));
}

// The text that ImportSettings makes of a value; empty: none that it could be.
std::string TextOf(const Row& row, const Json& value) {
  if (row.encoding == Encoding::Text) return value.get<std::string>();
  if (value.is_boolean()) return value.get<bool>() ? "1" : "0";
  return value.is_number() ? EncodeNumber(row, value.get<double>()) : "";
}

Json ExportedKey(const Row& row, const std::string& text) {
  Json key;
  if (row.encoding == Encoding::Text) {
    key["value"] = text;
    return key;
  }
  key["value"] = NumberJson(row, ValueOf(row, NumberInText(text)));
  if (*row.unit != '\0') key["unit"] = row.unit;
  // Also of an empty key, which is not the same as one that holds 0.
  if (TextOf(row, key["value"]) != text) key["text"] = text;
  return key;
}

bool IsNumberOf(const Row& row, const Json& value) {
  if (row.encoding == Encoding::Flag) return value.is_boolean();
  if (row.encoding == Encoding::Int) return value.is_number_integer();
  return value.is_number();
}

// A name or a value as an error shows it: in one line, and no longer than people read.
std::string Plain(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, '?');
  std::size_t end = 80;
  if (text.size() <= end) return text;
  while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;  // within a character
  return text.substr(0, end) + "...";
}

std::string Plain(const Json& value) {
  if (value.is_structured()) return value.is_array() ? "[...]" : "{...}";
  return Plain(value.dump());
}

// What to say of a key of the JSON, or its text of the file.
Encoded Imported(const Row& row, const Json& key) {
  if (!key.is_object()) return {"", "expected {\"value\": ...}"};
  if (const auto unit = key.find("unit"); unit != key.end() && *unit != row.unit) {
    return {"", "is in " + Plain(*unit) + "; expected \"" + row.unit + "\""};
  }
  if (const auto text = key.find("text"); text != key.end() && text->is_string()) {
    return {text->get<std::string>(), ""};
  }
  const auto value = key.find("value");
  if (value == key.end()) return {"", "has no \"value\""};
  if (row.encoding == Encoding::Text) {
    if (!value->is_string()) return {"", Plain(*value) + " is no text"};
    return Encode(row, value->get<std::string>());
  }
  if (!IsNumberOf(row, *value)) {
    return {"", Plain(*value) + " makes no sense; expected " +
                    (row.encoding == Encoding::Flag ? "true or false" : RangeText(row))};
  }
  const double number = value->is_boolean() ? (value->get<bool>() ? 1 : 0) : value->get<double>();
  if (!InRange(row, number)) {
    return {"", Plain(*value) + " makes no sense; expected " + RangeText(row)};
  }
  return {TextOf(row, *value), ""};
}

// Whether a section or key of another program can be written by that name.
bool IsName(const std::string& name) {
  return !name.empty() && name.front() != ' ' && name.back() != ' ' && name.front() != ';' &&
         std::all_of(name.begin(), name.end(), [](char c) {
           return c >= ' ' && c < 0x7F && c != '[' && c != ']' && c != '=' && c != '?';
         });
}

// One key into the file; an error text, or nothing.
std::string ImportKey(const std::string& section, const std::string& name, const Json& key,
                      IniText& file) {
  const std::string place = section + "/" + name;
  const KeyFound found = FindKey(place);
  std::string text;
  if (found.row != nullptr) {
    const Encoded encoded = Imported(*found.row, key);
    if (!encoded.error.empty()) return place + ": " + encoded.error;
    text = encoded.text;
  } else {
    const auto raw = key.is_object() ? key.find("text") : key.end();
    if (!key.is_object() || raw == key.end() || !raw->is_string()) {
      return FindKey(Plain(place)).error;
    }
    if (!IsName(section) || !IsName(name))
      return Plain(place) + ": no name for a section and a key";
    text = raw->get<std::string>();
  }
  if (!file.Set(section, name, text)) {
    return Plain(place) + ": the text has a character that the file cannot hold";
  }
  return "";
}

}  // namespace

std::string ExportSettings(const IniText& file) {
  Json settings = Json::object();
  for (const Row* row : kRows) {
    const std::string section = Narrow(row->section);
    const std::string key = Narrow(row->key);
    if (const auto text = file.Find(section, key)) {
      settings[section][key] = ExportedKey(*row, *text);
    }
  }
  for (const IniEntry& entry : file.Entries()) {
    if (RowOf(entry.section, entry.key) != nullptr) continue;
    if (!IsName(entry.section) || !IsName(entry.key)) continue;
    // What is there a second time nobody reads; in the JSON it would be read.
    const auto text = file.Find(entry.section, entry.key);
    if (text) settings[entry.section][entry.key] = {{"text", *text}};
  }
  return Printed({{"format", kFormat}, {"settings", settings}});
}

std::string ShowJson(const IniText& file, const std::string& path, bool all) {
  Json settings = Json::object();
  for (const Row* row : kRows) {
    const std::string section = Narrow(row->section);
    const std::string name = Narrow(row->key);
    const auto text = file.Find(section, name);
    Json key = ExportedKey(*row, text.value_or(""));
    if (!text) {
      key.erase("text");
      key["value"] = nullptr;
    }
    key["shown"] = ReadKey(file, *row).value;
    key["held"] = text.has_value();
    key["default"] = DefaultText(*row);
    if (row->encoding == Encoding::Text) {
      key["longest"] = row->range.most;
    } else {
      key["least"] = NumberJson(*row, row->range.least);
      key["most"] = NumberJson(*row, row->range.most);
    }
    if (all) {
      key["meaning"] = row->meaning;
      if (text) key["text"] = *text;
    }
    settings[section][name] = std::move(key);
  }
  Json faults = Json::array();
  for (const SettingsFault& fault : CheckSettings(file)) {
    faults.push_back({{"level", fault.severity == Severity::Wrong ? "wrong" : "odd"},
                      {"key", fault.key},
                      {"problem", fault.problem},
                      {"todo", fault.todo}});
  }
  Json shown = {{"file", path}, {"settings", settings}, {"faults", faults}};
  if (all) {
    for (const IniEntry& entry : file.Entries()) {
      if (RowOf(entry.section, entry.key) != nullptr) continue;
      shown["others"][entry.section][entry.key] = entry.text;
    }
  }
  return Printed(shown);
}

std::string ImportSettings(std::string_view json, IniText& file) {
  Json whole;
  try {
    whole = Json::parse(json);
  } catch (const Json::exception& error) {
    // "[json.exception...] parse error at line 3, column 7: ..."
    const std::string words = error.what();
    const std::size_t bracket = words.find("] ");
    return "is no JSON: " + words.substr(bracket == std::string::npos ? 0 : bracket + 2);
  }
  if (!whole.is_object() || whole.value("format", Json()) != kFormat) {
    return std::string("is no export of settings: it has no \"format\": \"") + kFormat + "\"";
  }
  const auto settings = whole.find("settings");
  if (settings == whole.end() || !settings->is_object()) return "has no \"settings\"";
  IniText changed = file;
  for (const auto& [section, keys] : settings->items()) {
    if (!keys.is_object()) return Plain(section) + ": expected keys in braces";
    for (const auto& [name, key] : keys.items()) {
      std::string error = ImportKey(section, name, key, changed);
      if (!error.empty()) return error;
    }
  }
  file = std::move(changed);
  return "";
}

}  // namespace k7host
