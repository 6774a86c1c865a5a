#include "app/settings_file_command.h"

#include <optional>

#include "app/console.h"
#include "core/text.h"
#include "settings/controller_backup.h"
#include "settings/key_text.h"
#include "settings/listing.h"
#include "settings/replace_file.h"
#include "settings/row_text.h"
#include "settings/settings_files.h"
#include "settings/settings_json.h"

namespace k7host {
namespace {

// A settings file that was chosen and read; `error` has been explained when it is not kExitOk.
struct Opened {
  std::wstring path;
  std::string bytes;
  int error = kExitOk;
  bool exists = false;
  IniText Text() const { return IniText(bytes, SystemCodePage()); }
};

Opened Open(const std::string& which, const std::string& id, const std::string& file,
            bool mayBeMissing) {
  Opened opened;
  const ChosenFile chosen = ChooseSettingsFile(which, id, file);
  if (!chosen.error.empty()) {
    opened.error = Fail(kExitUsage, chosen.error);
    return opened;
  }
  opened.path = chosen.path;
  FileBytes read = ReadWholeFile(chosen.path);
  opened.exists = read.exists;
  opened.bytes = std::move(read.bytes);
  if (!read.error.empty()) {
    opened.error = Fail(kExitUsage, read.error);
  } else if (!read.exists && !mayBeMissing) {
    opened.error = Fail(kExitUsage, "there is no settings file " + NarrowText(chosen.path));
  }
  return opened;
}

// The new file in the place of the old one, which is kept as its .bak.
int Save(const Opened& opened, const std::string& bytes) {
  const FileBytes now = ReadWholeFile(opened.path);
  if (now.exists != opened.exists || now.bytes != opened.bytes) {
    return Fail(kExitMachine,
                NarrowText(opened.path) + " was changed by another program meanwhile; try again");
  }
  const std::wstring backup = opened.path + L".bak";
  std::string error;
  if (opened.exists) error = ReplaceFileInOneStep(backup, opened.bytes);
  if (error.empty()) error = ReplaceFileInOneStep(opened.path, bytes);
  if (!error.empty()) return Fail(kExitMachine, error);
  if (opened.exists) Print("backup", NarrowText(backup));
  return kExitOk;
}

int Show(const SettingsArguments& arguments) {
  const Opened opened = Open(arguments.which, arguments.id, arguments.file, false);
  if (opened.error != kExitOk) return opened.error;
  const IniText text = opened.Text();
  if (arguments.json) {
    std::string json = ShowJson(text, NarrowText(opened.path), arguments.all);
    json.pop_back();  // its line end, which PrintLine adds
    PrintLine(json);
    return kExitOk;
  }
  Print("file", NarrowText(opened.path));
  for (const std::string& line : ShowLines(text, arguments.all)) PrintLine(line);
  return kExitOk;
}

int Get(const SettingsArguments& arguments) {
  const KeyFound key = FindKey(arguments.key);
  if (key.row == nullptr) return Fail(kExitUsage, key.error);
  const Opened opened = Open("", arguments.id, arguments.file, false);
  if (opened.error != kExitOk) return opened.error;
  PrintLine(GetLine(opened.Text(), *key.row));
  return kExitOk;
}

int Set(const SettingsArguments& arguments) {
  const KeyFound key = FindKey(arguments.key);
  if (key.row == nullptr) return Fail(kExitUsage, key.error);
  const Encoded encoded = Encode(*key.row, arguments.value);
  if (!encoded.error.empty()) return Fail(kExitUsage, KeyName(*key.row) + ": " + encoded.error);
  const Opened opened = Open("", arguments.id, arguments.file, true);
  if (opened.error != kExitOk) return opened.error;
  IniText text = opened.Text();
  const Reading before = ReadKey(text, *key.row);
  if (!text.Set(Narrow(key.row->section), Narrow(key.row->key), encoded.text)) {
    return Fail(kExitUsage, KeyName(*key.row) +
                                ": the text has a character that is not in the code page of the "
                                "system, in which the file is written");
  }
  const int code = Save(opened, text.Bytes());
  if (code != kExitOk) return code;
  Print(KeyName(*key.row), before.value + (before.held ? "" : " (not in the file)") + " -> " +
                               ReadKey(text, *key.row).value);
  return kExitOk;
}

int Diff(const SettingsArguments& arguments) {
  const Opened first = Open(arguments.which, "", "", false);
  if (first.error != kExitOk) return first.error;
  const Opened second = Open(arguments.other, "", "", false);
  if (second.error != kExitOk) return second.error;
  const std::vector<std::string> lines = DiffLines(first.Text(), second.Text());
  if (lines.empty()) PrintLine("same");
  for (const std::string& line : lines) PrintLine(line);
  return kExitOk;
}

int Export(const SettingsArguments& arguments) {
  const Opened opened = Open("", arguments.id, arguments.file, false);
  if (opened.error != kExitOk) return opened.error;
  std::string json = ExportSettings(opened.Text());
  if (arguments.path == "-") {
    json.pop_back();
    PrintLine(json);
    return kExitOk;
  }
  const std::string error = ReplaceFileInOneStep(WideText(arguments.path), json);
  if (!error.empty()) return Fail(kExitMachine, error);
  Print("exported", NarrowText(opened.path) + " to " + arguments.path);
  return kExitOk;
}

int Import(const SettingsArguments& arguments) {
  const FileBytes json = ReadWholeFile(WideText(arguments.path));
  if (!json.error.empty()) return Fail(kExitUsage, json.error);
  if (!json.exists) return Fail(kExitUsage, "cannot open " + arguments.path + ": no such file");
  const Opened opened = Open("", arguments.id, arguments.file, true);
  if (opened.error != kExitOk) return opened.error;
  IniText text = opened.Text();
  const IniText before = text;
  const std::string error = ImportSettings(json.bytes, text);
  if (!error.empty()) return Fail(kExitUsage, arguments.path + ": " + error);
  const std::vector<std::string> changes = DiffLines(before, text);
  if (text.Bytes() != opened.bytes) {
    const int code = Save(opened, text.Bytes());
    if (code != kExitOk) return code;
  }
  for (const std::string& line : changes) PrintLine(line);
  Print("imported", arguments.path + " into " + NarrowText(opened.path));
  return kExitOk;
}

// A controller's identity, as an option or as the only one that has settings.
std::optional<std::string> ChooseId(const std::string& id) {
  const ChosenFile chosen = ChooseSettingsFile("", id, "");
  if (chosen.error.empty()) return chosen.id;
  Fail(kExitUsage, chosen.error);
  return std::nullopt;
}

int Backup(const SettingsArguments& arguments) {
  const std::optional<std::string> id = ChooseId(arguments.id);
  if (!id) return kExitUsage;
  const BackupResult result = BackUpController(*id, WideText(arguments.path));
  if (!result.error.empty()) return Fail(kExitUsage, result.error);
  for (const std::string& file : result.files) PrintLine(file);
  Print("backup", *id + " to " + arguments.path);
  return kExitOk;
}

int Restore(const SettingsArguments& arguments) {
  std::string id = arguments.id;
  const BackupResult result = RestoreController(WideText(arguments.path), id);
  for (const std::string& file : result.files) PrintLine(file);
  if (!result.error.empty()) return Fail(kExitUsage, result.error);
  Print("restored", arguments.path + " to " + id);
  return kExitOk;
}

bool MovesTheMachine(Command command) {
  switch (command) {
    case Command::Engrave:
    case Command::Estimate:
    case Command::Home:
    case Command::Jog:
    case Command::GoTo:
      return true;
    default:
      return false;
  }
}

}  // namespace

int RunSettingsFile(const SettingsArguments& arguments) {
  switch (arguments.action) {
    case SettingsAction::Show:
      return Show(arguments);
    case SettingsAction::Get:
      return Get(arguments);
    case SettingsAction::Set:
      return Set(arguments);
    case SettingsAction::Diff:
      return Diff(arguments);
    case SettingsAction::Export:
      return Export(arguments);
    case SettingsAction::Import:
      return Import(arguments);
    case SettingsAction::Backup:
      return Backup(arguments);
    case SettingsAction::Restore:
      return Restore(arguments);
  }
  return kExitUsage;
}

NoSettings FindNoSettings() {
  NoSettings none;
  for (const std::string& id : ControllersWithSettings()) {
    for (const SettingsFault& fault : CheckSettingsFile(SettingsPath(id))) {
      // Of the file itself, and not of one of its keys.
      if (fault.severity == Severity::Wrong && fault.key.empty()) none[id] = FaultText(fault);
    }
  }
  return none;
}

int CheckSettingsBefore(Command command, const std::string& id, const NoSettings& before) {
  if (!MovesTheMachine(command)) return kExitOk;
  const std::wstring path = SettingsPath(id);
  const std::string file = NarrowText(path) + ": ";
  if (const auto none = before.find(id); none != before.end()) {
    return Fail(kExitUsage, file + none->second);
  }
  const std::vector<SettingsFault> faults = CheckSettingsFile(path);
  const std::size_t wrong = CountWrong(faults);
  for (const SettingsFault& fault : faults) {
    if (fault.severity != Severity::Wrong) continue;
    // One that cannot be read is named in the fault.
    const bool named = fault.problem.find(NarrowText(path)) != std::string::npos;
    return Fail(kExitUsage, (named ? "" : file) + FaultText(fault) +
                                (wrong > 1 ? " (and " + std::to_string(wrong - 1) +
                                                 " more: k7host doctor --id " + id + ")"
                                           : ""));
  }
  return kExitOk;
}

}  // namespace k7host
