#include "settings/controller_backup.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <sstream>

#include "core/text.h"
#include "settings/replace_file.h"
#include "settings/settings_files.h"

namespace k7host {

namespace fs = std::filesystem;

namespace {

// In the backup: this list, the settings file by this name, and the folder's files by their own.
constexpr wchar_t kList[] = L"k7-backup.txt";
constexpr char kSettings[] = "settings.ini";
constexpr char kFirstLine[] = "k7 backup 1";

struct Listed {
  std::string path;  // within the backup, with slashes
  std::string sum;
  std::string bytes;
};

// 64 bits, FNV-1a: against copies cut short and disks gone bad.
std::string SumOf(std::string_view bytes) {
  std::uint64_t sum = 14695981039346656037u;
  for (const char c : bytes) sum = (sum ^ static_cast<std::uint8_t>(c)) * 1099511628211u;
  char text[17];
  const std::to_chars_result end = std::to_chars(text, text + sizeof text, sum, 16);
  return {text, end.ptr};
}

fs::path FolderOf(const std::string& id) {
  return fs::path(ControllersFolder()) / WideText(id);
}

// Where a file of the backup belongs.
fs::path PlaceOf(const std::string& id, const std::string& path) {
  return path == kSettings ? fs::path(SettingsPath(id)) : FolderOf(id) / WideText(path);
}

std::string Shown(const fs::path& path) {
  return NarrowText(path.wstring());
}

// Creates the folder of the file, and puts it there in one step.
std::string Put(const fs::path& path, const std::string& bytes) {
  std::error_code failed;
  fs::create_directories(path.parent_path(), failed);
  if (failed) return "cannot create " + Shown(path.parent_path()) + ": " + failed.message();
  return ReplaceFileInOneStep(path.wstring(), bytes);
}

// A list made by others must not lead out of the controller's folder.
bool StaysInside(const std::string& text) {
  const fs::path path = WideText(text);
  return !text.empty() && !path.has_root_path() && text.find(':') == std::string::npos &&
         std::none_of(path.begin(), path.end(), [](const fs::path& part) { return part == ".."; });
}

// The files of the backup, each as it was when it was made.
std::string ReadBackup(const fs::path& folder, std::string& id, std::vector<Listed>& files) {
  const FileBytes list = ReadWholeFile((folder / kList).wstring());
  if (!list.error.empty()) return list.error;
  std::istringstream lines(list.bytes);
  std::string line;
  if (!std::getline(lines, line) || line != kFirstLine || !std::getline(lines, id) || id.empty()) {
    return Shown(folder) + " is no backup of a controller: it has no whole k7-backup.txt";
  }
  bool ended = false;
  while (std::getline(lines, line)) {
    if (line == "end") ended = true;
    const std::size_t blank = line.find(' ');
    if (ended || blank == std::string::npos) break;
    Listed file{line.substr(blank + 1), line.substr(0, blank), ""};
    if (!StaysInside(file.path)) return Shown(folder) + ": " + file.path + " leads out of it";
    const fs::path path = folder / WideText(file.path);
    FileBytes read = ReadWholeFile(path.wstring());
    if (!read.error.empty()) return read.error;
    if (!read.exists) return Shown(path) + " is missing from the backup; nothing was restored";
    if (SumOf(read.bytes) != file.sum) {
      return Shown(path) + " is not what was backed up; nothing was restored";
    }
    file.bytes = std::move(read.bytes);
    files.push_back(std::move(file));
  }
  return ended ? "" : Shown(folder) + " was not finished: its k7-backup.txt ends too early";
}

}  // namespace

BackupResult BackUpController(const std::string& id, const std::wstring& target) {
  BackupResult result;
  const fs::path folder = target;
  std::error_code ignored;
  if (fs::exists(folder, ignored) && !fs::is_empty(folder, ignored)) {
    result.error = Shown(folder) + " is there already and not empty; name another folder";
    return result;
  }
  std::vector<std::string> paths;
  if (ReadWholeFile(SettingsPath(id)).exists) paths.emplace_back(kSettings);
  const fs::path source = FolderOf(id);
  std::error_code failed;
  if (fs::is_directory(source, ignored)) {
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source, failed)) {
      if (!entry.is_regular_file()) continue;
      paths.push_back(NarrowText(entry.path().lexically_relative(source).generic_wstring()));
    }
  }
  if (failed) result.error = "cannot read " + Shown(source) + ": " + failed.message();
  if (result.error.empty() && paths.empty()) {
    result.error = "there are no settings of " + id + " in " + NarrowText(ControllersFolder());
  }
  if (!result.error.empty()) return result;
  std::sort(paths.begin(), paths.end());
  std::string list = std::string(kFirstLine) + "\n" + id + "\n";
  for (const std::string& path : paths) {
    const FileBytes read = ReadWholeFile(PlaceOf(id, path).wstring());
    result.error = read.error;
    if (result.error.empty()) result.error = Put(folder / WideText(path), read.bytes);
    if (!result.error.empty()) return result;
    list += SumOf(read.bytes) + " " + path + "\n";
    result.files.push_back(path);
  }
  result.error = Put(folder / kList, list + "end\n");
  return result;
}

BackupResult RestoreController(const std::wstring& source, std::string& id) {
  BackupResult result;
  std::string made;
  std::vector<Listed> files;
  result.error = ReadBackup(source, made, files);
  if (!result.error.empty()) return result;
  if (id.empty()) id = made;
  for (const Listed& file : files) {
    const fs::path place = PlaceOf(id, file.path);
    const FileBytes old = ReadWholeFile(place.wstring());
    result.error = old.error;
    if (result.error.empty() && old.exists && old.bytes != file.bytes) {
      result.error = ReplaceFileInOneStep(place.wstring() + L".bak", old.bytes);
    }
    if (result.error.empty()) result.error = Put(place, file.bytes);
    if (!result.error.empty()) return result;
    result.files.push_back(file.path);
  }
  return result;
}

}  // namespace k7host
