#include "faults/fault_script.h"

#include <cstddef>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "common/nearest_word.h"

namespace k7sim {
namespace {

using nlohmann::json;

constexpr std::uint64_t kMostNoiseBytes = 4096;

// Never throws: bytes that are not UTF-8 are replaced.
std::string Dump(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

bool SetWhole(const json& value, std::uint64_t& out) {
  if (!value.is_number_integer() || value.get<std::int64_t>() < 0) return false;
  out = value.get<std::uint64_t>();
  return true;
}

bool SetMs(const json& value, TimeUs& out) {
  if (!value.is_number() || !(value.get<double>() >= 0) || value.get<double>() > 1e12) return false;
  out = UsFromSeconds(value.get<double>() / 1000);
  return true;
}

bool SetText(const json& value, std::string& out) {
  if (!value.is_string() || value.get_ref<const std::string&>().empty()) return false;
  out = value.get<std::string>();
  return true;
}

bool SetAction(const json& value, FaultAction& out) {
  if (!value.is_string()) return false;
  for (std::size_t i = 0; i < std::size(kFaultActionNames); ++i) {
    if (value.get_ref<const std::string&>() == kFaultActionNames[i]) {
      out = static_cast<FaultAction>(i);
      return true;
    }
  }
  return false;
}

const std::vector<std::string> kKeys = {"line", "match", "reply", "atMs", "nth",   "count",
                                        "do",   "ms",    "text",  "rate", "bytes", "seed"};

// The nearest action, or all of them when none is near.
std::string ActionHint(std::string_view word) {
  const std::vector<std::string> known(std::begin(kFaultActionNames), std::end(kFaultActionNames));
  std::string hint = DidYouMean(word, known);
  if (!hint.empty()) return hint;
  std::string all = "; it is one of";
  for (const std::string& name : known) all += (&name == &known.front() ? " " : ", ") + name;
  return all;
}

std::optional<Fault> FaultFromJson(const json& object, std::string& error) {
  if (!object.is_object()) {
    error = "fault: not an object: " + Dump(object);
    return std::nullopt;
  }
  Fault fault;
  fault.source = Dump(object);
  int triggers = 0;
  bool acts = false;
  for (const auto& [key, value] : object.items()) {
    bool good = true;
    if (key == "line") {
      ++triggers;
      fault.trigger = FaultTrigger::Line;
      good = SetWhole(value, fault.line) && fault.line > 0;
    } else if (key == "match" || key == "reply") {
      ++triggers;
      fault.trigger = key == "match" ? FaultTrigger::Match : FaultTrigger::Reply;
      good = SetText(value, fault.match);
    } else if (key == "atMs") {
      ++triggers;
      fault.trigger = FaultTrigger::Time;
      good = SetMs(value, fault.atUs);
    } else if (key == "nth") {
      good = SetWhole(value, fault.nth) && fault.nth > 0;
    } else if (key == "count") {
      good = SetWhole(value, fault.count);
    } else if (key == "ms") {
      good = SetMs(value, fault.durationUs);
    } else if (key == "rate") {
      good = value.is_number() && value.get<double>() > 0 && value.get<double>() <= 1e9;
      if (good) fault.bytesPerSecond = value.get<double>();
    } else if (key == "bytes") {
      good = SetWhole(value, fault.bytes) && fault.bytes > 0 && fault.bytes <= kMostNoiseBytes;
    } else if (key == "seed") {
      good = SetWhole(value, fault.seed);
    } else if (key == "text") {
      good = SetText(value, fault.text);
    } else if (key == "do") {
      acts = good = SetAction(value, fault.action);
    } else {
      error = "fault: unknown key '" + key + "' in " + fault.source + DidYouMean(key, kKeys);
      return std::nullopt;
    }
    if (!good) {
      error = "fault: bad value for '" + key + "' in " + fault.source;
      if (key == "do" && value.is_string()) error += ActionHint(value.get<std::string>());
      return std::nullopt;
    }
  }
  if (triggers != 1) {
    error = "fault: needs exactly one of line, match, reply, atMs: " + fault.source;
  } else if (!acts) {
    error = "fault: needs a 'do': " + fault.source;
  } else if (fault.action == FaultAction::Inject && fault.text.empty()) {
    error = "fault: inject needs a text: " + fault.source;
  } else if (fault.action == FaultAction::SlowDrain && fault.bytesPerSecond <= 0) {
    error = "fault: slow-drain needs a rate, in bytes a second: " + fault.source;
  } else if (fault.trigger == FaultTrigger::Reply && fault.action == FaultAction::Ignore) {
    error = "fault: a reply cannot be ignored, drop it: " + fault.source;
  } else if (fault.trigger == FaultTrigger::Reply && fault.action == FaultAction::Garble) {
    error = "fault: a reply cannot be garbled, corrupt it: " + fault.source;
  } else {
    return fault;
  }
  return std::nullopt;
}

std::string Unescape(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'n' || text[i + 1] == 'r')) {
      out += text[++i] == 'n' ? '\n' : '\r';
    } else {
      out += text[i];
    }
  }
  return out;
}

// A list key=value,... as the JSON object that it stands for; a discarded value when the text is
// none.
json ListToJson(std::string_view list) {
  json object = json::object();
  std::istringstream items{std::string(list)};
  for (std::string item; std::getline(items, item, ',');) {
    const std::size_t equals = item.find('=');
    if (equals == std::string::npos) return json(json::value_t::discarded);
    const std::string key = item.substr(0, equals);
    const std::string value = Unescape(std::string_view(item).substr(equals + 1));
    const bool number = key != "match" && key != "reply" && key != "do" && key != "text";
    json parsed = number ? json::parse(value, nullptr, false) : json(value);
    object[key] = parsed.is_discarded() ? json(value) : parsed;
  }
  return object;
}

json Load(std::string_view argument, std::string& error) {
  const std::size_t start = argument.find_first_not_of(" \t\r\n");
  if (start != std::string_view::npos && (argument[start] == '{' || argument[start] == '[')) {
    json parsed = json::parse(argument, nullptr, false);
    if (parsed.is_discarded()) error = "fault: not valid JSON: " + std::string(argument);
    return parsed;
  }
  if (argument.find('=') != std::string_view::npos) {
    json parsed = ListToJson(argument);
    if (parsed.is_discarded()) error = "fault: not key=value,...: " + std::string(argument);
    return parsed;
  }
  std::ifstream file{std::string(argument)};
  if (!file) {
    error = "fault: cannot read " + std::string(argument);
    return json(json::value_t::discarded);
  }
  json parsed = json::parse(file, nullptr, false);
  if (parsed.is_discarded()) error = "fault: not valid JSON: " + std::string(argument);
  return parsed;
}

}  // namespace

std::optional<std::vector<Fault>> ParseFaults(std::string_view argument, std::string& error) {
  json script = Load(argument, error);
  if (script.is_discarded()) return std::nullopt;
  if (script.is_object() && script.contains("faults")) script = json(script["faults"]);
  if (!script.is_array()) script = json::array({script});
  std::vector<Fault> faults;
  for (const json& object : script) {
    const auto fault = FaultFromJson(object, error);
    if (!fault) return std::nullopt;
    faults.push_back(*fault);
  }
  return faults;
}

}  // namespace k7sim
