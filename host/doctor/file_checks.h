// The doctor's look at files: settings, material libraries, and what else the driver uses.
#pragma once

#include <string>

#include "doctor/port_checks.h"

namespace k7host {

// The driver beside this program, the host's helper library, free disk, the trace. [host]
void CheckComputer(const Tell& tell);

// A settings file: there, readable, writable for everybody, values that make sense. [host]
void CheckSettingsAt(const std::wstring& path, const std::string& name, const Tell& tell);

// The folders of a controller and the profiles of its material library. [host]
void CheckLibraries(const std::string& id, const Tell& tell);

}  // namespace k7host
