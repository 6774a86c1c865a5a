// The settings files of this computer: where they are, and reading them. Nothing here creates a
// file or a folder.
#pragma once

#include <string>
#include <vector>

#include "settings/ini_text.h"
#include "settings/settings_check.h"

namespace k7host {

// The system's code page. Lives as long as the program. [any]
const CodePage& SystemCodePage();

// The folder in which the driver keeps the settings of all controllers, without a backslash at its
// end. [any]
std::wstring ControllersFolder();
// The settings file of a controller. [any]
std::wstring SettingsPath(const std::string& id);
// The identities whose settings files are there, in the order of their names. That of a controller
// without an identity, sixteen zeros, is none: a search leaves a file of it behind. [host]
std::vector<std::string> ControllersWithSettings();

// A whole file. [host]
struct FileBytes {
  bool exists = false;
  std::string bytes;
  std::string error;  // with the path; empty: read, or not there
};
FileBytes ReadWholeFile(const std::wstring& path);

// The file that is meant: by `file`, by `id`, or by `which`, which is a path when it looks like
// one; by none of them the only one there is. [host]
struct ChosenFile {
  std::wstring path;
  std::string id;     // of a controller's file in the folder of all; else empty
  std::string error;  // no choice could be made
};
ChosenFile ChooseSettingsFile(const std::string& which, const std::string& id,
                              const std::string& file);

// Everything that is odd or wrong in a settings file (CheckSettings); a file that is not there is
// good, one that cannot be read is wrong. [host]
std::vector<SettingsFault> CheckSettingsFile(const std::wstring& path);

}  // namespace k7host
