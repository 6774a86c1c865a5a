// Where things are, and the settings files of the controllers in the Wine prefix.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace k7test {

// Taken from the environment that ./k7 sets.
struct Places {
  std::filesystem::path windowsPrograms, nativePrograms, source, prefix;
  static const Places& Get();
};

// The path as Windows programs understand it.
std::string WindowsPath(const std::filesystem::path& path);

// The whole file; empty when there is none.
std::string ReadFile(const std::filesystem::path& path);

// Settings of one controller: "Section/Key" to value, as they stand in the file.
using Settings = std::map<std::string, std::string>;

std::filesystem::path SettingsFile(const std::string& id);
void WriteSettings(const std::string& id, const Settings& settings);  // replaces the file
Settings ReadSettings(const std::string& id);
void RemoveAllSettings();

}  // namespace k7test
