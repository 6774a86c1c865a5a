#include "board/config_store.h"

#include <fstream>
#include <utility>

#include "common/whole_file.h"

namespace k7sim {
namespace {

// The key and the value of a line; both empty for a comment or a line without two words.
std::pair<std::string_view, std::string_view> Split(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  line = line.substr(0, line.find('#'));
  const auto keyAt = line.find_first_not_of(kBlanks);
  if (keyAt == std::string_view::npos) return {};
  const auto keyEnd = line.find_first_of(kBlanks, keyAt);
  if (keyEnd == std::string_view::npos) return {};
  const auto valueAt = line.find_first_not_of(kBlanks, keyEnd);
  if (valueAt == std::string_view::npos) return {};
  const auto valueEnd = line.find_first_of(kBlanks, valueAt);
  const auto length = valueEnd == std::string_view::npos ? valueEnd : valueEnd - valueAt;
  return {line.substr(keyAt, keyEnd - keyAt), line.substr(valueAt, length)};
}

}  // namespace

ConfigStore::ConfigStore(std::string path) : path_(std::move(path)) {
  if (path_.empty()) return;
  std::ifstream file(path_);
  for (std::string line; std::getline(file, line);) lines_.push_back(line);
}

std::optional<std::string> ConfigStore::Get(std::string_view key) const {
  for (const std::string& line : lines_) {
    const auto [name, value] = Split(line);
    if (name == key) return std::string(value);
  }
  return std::nullopt;
}

bool ConfigStore::Set(std::string_view key, std::string_view value) {
  const std::string text = std::string(key) + " " + std::string(value);
  bool found = false;
  for (std::string& line : lines_) {
    if (Split(line).first == key) {
      line = text;
      found = true;
      break;
    }
  }
  if (!found) lines_.push_back(text);
  return Save();
}

bool ConfigStore::Save() const {
  if (path_.empty()) return true;
  std::string content;
  for (const std::string& line : lines_) content += line + "\n";
  return WriteWholeFile(path_, content);
}

}  // namespace k7sim
