#include "settings_files.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace k7test {

namespace fs = std::filesystem;

namespace {

std::string Required(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) {
    std::fprintf(stderr, "%s is not set: run these tests through ./k7 test\n", name);
    std::abort();
  }
  return value;
}

fs::path ControllersFolder() {
  return Places::Get().prefix / "drive_c/ProgramData/Penfold Hatch/Veltrana/Controllers";
}

}  // namespace

const Places& Places::Get() {
  static const Places places{Required("K7_BIN_WINDOWS"), Required("K7_BIN_NATIVE"),
                             Required("K7_SOURCE"), Required("WINEPREFIX")};
  return places;
}

std::string WindowsPath(const fs::path& path) {
  return "Z:" + path.string();
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

fs::path SettingsFile(const std::string& id) {
  return ControllersFolder() / (id + ".ini");
}

void WriteSettings(const std::string& id, const Settings& settings) {
  std::map<std::string, std::string> sections;
  for (const auto& [path, value] : settings) {
    const std::size_t slash = path.find('/');
    sections[path.substr(0, slash)] += path.substr(slash + 1) + "=" + value + "\r\n";
  }
  fs::create_directories(ControllersFolder());
  std::ofstream file(SettingsFile(id), std::ios::binary | std::ios::trunc);
  for (const auto& [section, keys] : sections) file << "[" << section << "]\r\n" << keys;
}

Settings ReadSettings(const std::string& id) {
  Settings settings;
  std::istringstream file(ReadFile(SettingsFile(id)));
  std::string section;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line.front() == '[') {
      section = line.substr(1, line.find(']') - 1);
    } else if (const std::size_t equals = line.find('='); equals != std::string::npos) {
      settings[section + "/" + line.substr(0, equals)] = line.substr(equals + 1);
    }
  }
  return settings;
}

void RemoveAllSettings() {
  fs::remove_all(ControllersFolder());
}

}  // namespace k7test
