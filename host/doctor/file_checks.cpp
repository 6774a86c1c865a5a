#include "doctor/file_checks.h"

#include <windows.h>
// After windows.h, whose types they need.
#include <aclapi.h>
#include <shlobj.h>

#include <filesystem>
#include <optional>
#include <vector>

#include "core/text.h"
#include "settings/settings_files.h"
#include "settings/system_error.h"

namespace k7host {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t kLittleDisk = std::uint64_t{100} << 20;
constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;

std::wstring FolderOfProgram() {
  wchar_t path[2048] = L"";
  GetModuleFileNameW(nullptr, path, 2048);
  return fs::path(path).parent_path().wstring();
}

bool IsThere(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::wstring Variable(const wchar_t* name) {
  wchar_t text[2048] = L"";
  GetEnvironmentVariableW(name, text, 2048);
  return text;
}

// The machine for which a library is made, from its headers; 0: it is none.
WORD MachineOf(const std::wstring& path) {
  const FileBytes file = ReadWholeFile(path);
  const std::string& bytes = file.bytes;
  IMAGE_DOS_HEADER dos{};
  if (bytes.size() < sizeof dos) return 0;
  memcpy(&dos, bytes.data(), sizeof dos);
  const auto at = static_cast<std::size_t>(dos.e_lfanew);
  IMAGE_FILE_HEADER header{};
  if (dos.e_magic != IMAGE_DOS_SIGNATURE || at + 4 + sizeof header > bytes.size()) return 0;
  memcpy(&header, bytes.data() + at + 4, sizeof header);
  return header.Machine;
}

// Whether everybody who may log on may write the file; none where Windows does not tell.
std::optional<bool> UsersMayWrite(const std::wstring& path) {
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                            nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::optional<bool> may = list == nullptr;  // without a list everybody may do everything
  for (DWORD i = 0; list != nullptr && i < list->AceCount && !*may; ++i) {
    void* entry = nullptr;
    if (GetAce(list, i, &entry) == 0) break;
    const auto* ace = static_cast<const ACCESS_ALLOWED_ACE*>(entry);
    if ((ace->Header.AceFlags & INHERIT_ONLY_ACE) != 0) continue;
    const bool allows = ace->Header.AceType == ACCESS_ALLOWED_ACE_TYPE;
    if (!allows && ace->Header.AceType != ACCESS_DENIED_ACE_TYPE) continue;
    if ((ace->Mask & (FILE_WRITE_DATA | GENERIC_WRITE | GENERIC_ALL)) == 0) continue;
    const PSID who = const_cast<DWORD*>(&ace->SidStart);
    const bool everybody = IsWellKnownSid(who, WinWorldSid) != 0 ||
                           IsWellKnownSid(who, WinBuiltinUsersSid) != 0 ||
                           IsWellKnownSid(who, WinAuthenticatedUserSid) != 0 ||
                           IsWellKnownSid(who, WinInteractiveSid) != 0;
    if (!everybody) continue;
    if (!allows) break;
    may = true;
  }
  LocalFree(descriptor);
  return may;
}

// A system error; 0: it opens for writing. Writes nothing.
DWORD OpensForWriting(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  CloseHandle(file);
  return 0;
}

std::string GrantLine() {
  return "as administrator: icacls \"" + NarrowText(ControllersFolder()) +
         "\" /grant *S-1-5-32-545:(OI)(CI)M /T";
}

void CheckDriver(const Tell& tell) {
  const std::wstring path = FolderOfProgram() + L"\\k7driver.dll";
  if (IsThere(path)) {
    tell({Level::Ok, About::Computer, "driver", NarrowText(path), ""});
  } else {
    tell({Level::Fail, About::Computer, "driver",
          "k7driver.dll is missing from " + NarrowText(FolderOfProgram()),
          "copy it there; if it was there, see what antivirus software has done with it"});
  }
}

void CheckHelperLibrary(const Tell& tell) {
  wchar_t programs[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_PROGRAM_FILES, nullptr, SHGFP_TYPE_DEFAULT, programs);
  const std::wstring path = std::wstring(programs) + L"\\Penfold Hatch\\Cache\\TSL_000.dll";
  Finding finding{Level::Ok, About::Computer, "helper library", NarrowText(path), ""};
  if (!IsThere(path)) {
    finding.text = "not installed; messages about the table surface do without lengths";
  } else if (MachineOf(path) != IMAGE_FILE_MACHINE_AMD64) {
    finding.level = Level::Warn;
    finding.text += " is no 64-bit library and cannot be loaded";
    finding.todo = "install the 64-bit host again";
  }
  tell(finding);
}

void CheckDisk(const Tell& tell) {
  // The nearest folder above the settings that is there.
  fs::path folder = ControllersFolder();
  while (folder.has_relative_path() && !IsThere(folder.wstring())) folder = folder.parent_path();
  ULARGE_INTEGER free{};
  if (GetDiskFreeSpaceExW(folder.c_str(), &free, nullptr, nullptr) == 0) return;
  const bool little = free.QuadPart < kLittleDisk;
  tell({little ? Level::Warn : Level::Ok, About::Computer, "disk",
        std::to_string(free.QuadPart / kMegabyte) + " MB free for settings",
        little ? "make room: settings are lost when the disk is full" : ""});
}

void CheckTrace(const Tell& tell) {
  const std::wstring trace = Variable(L"K7_TRACE");
  if (trace.empty()) {
    return tell({Level::Ok, About::Computer, "trace", "none is written (K7_TRACE is not set)", ""});
  }
  const fs::path path = trace;
  const std::wstring folder = path.has_parent_path() ? path.parent_path().wstring() : L".";
  if (IsThere(trace)) {
    tell({Level::Ok, About::Computer, "trace", "K7_TRACE writes to " + NarrowText(trace), ""});
  } else if (IsThere(folder)) {
    tell({Level::Ok, About::Computer, "trace",
          "K7_TRACE will write to " + NarrowText(trace) + ", which is not there yet", ""});
  } else {
    tell({Level::Warn, About::Computer, "trace",
          "K7_TRACE names " + NarrowText(trace) + ", whose folder is not there", "create it"});
  }
}

void CheckValues(const std::wstring& path, const std::string& check, SettingsKind kind,
                 const Tell& tell) {
  const FileBytes read = ReadWholeFile(path);
  if (!read.error.empty()) {
    return tell(
        {Level::Fail, About::Settings, check, read.error, "see who may read it: " + GrantLine()});
  }
  const IniText text(read.bytes, SystemCodePage());
  const std::vector<SettingsFault> faults = CheckSettings(text, kind);
  for (const SettingsFault& fault : faults) {
    const bool wrong = fault.severity == Severity::Wrong && kind == SettingsKind::Controller;
    tell({wrong ? Level::Fail : Level::Warn, About::Settings, check,
          (fault.key.empty() ? "" : fault.key + ": ") + fault.problem, fault.todo});
  }
  if (faults.empty() && kind == SettingsKind::Controller) {
    tell({Level::Ok, About::Settings, check,
          std::to_string(text.Entries().size()) + " keys, each makes sense", ""});
  }
}

}  // namespace

void CheckComputer(const Tell& tell) {
  CheckDriver(tell);
  CheckHelperLibrary(tell);
  CheckDisk(tell);
  CheckTrace(tell);
}

void CheckSettingsAt(const std::wstring& path, const std::string& name, const Tell& tell) {
  const std::string check = "settings" + (name.empty() ? "" : " of " + name);
  if (!IsThere(path)) {
    return tell({Level::Warn, About::Settings, check,
                 NarrowText(path) + " is not there: every value is the default",
                 "set the machine up in the table setup dialog: k7host setup"});
  }
  const DWORD error = OpensForWriting(path);
  if (error != 0) {
    tell({Level::Fail, About::Settings, check,
          NarrowText(path) + " cannot be written: " + ErrorText(error),
          "what is saved is lost without a word; " + GrantLine()});
  } else if (UsersMayWrite(path) == false) {
    tell({Level::Warn, About::Settings, check,
          NarrowText(path) + " can be written by some accounts only",
          "another user's changes are lost without a word; " + GrantLine()});
  } else {
    tell({Level::Ok, About::Settings, check,
          NarrowText(path) + " can be read and written by every user", ""});
  }
  CheckValues(path, check, SettingsKind::Controller, tell);
}

void CheckLibraries(const std::string& id, const Tell& tell) {
  const std::wstring folder = ControllersFolder() + L"\\" + WideText(id) + L"\\Material Library";
  const std::string check = "library of " + id;
  if (!IsThere(folder)) {
    return tell({Level::Ok, About::Settings, check, "no material has been saved yet", ""});
  }
  if (UsersMayWrite(folder) == false) {
    tell({Level::Warn, About::Settings, check,
          NarrowText(folder) + " can be written by some accounts only",
          "another user cannot save a material; " + GrantLine()});
  }
  int profiles = 0;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    std::string extension = NarrowText(entry.path().extension().wstring());
    if (!SameName(extension, ".ini") || !entry.is_regular_file(ignored)) continue;
    ++profiles;
    const std::string name = NarrowText(entry.path().stem().wstring());
    if (!SystemCodePage().FromUtf8(name)) {
      tell({Level::Warn, About::Settings, check,
            "the name of material " + name + " has characters outside the system's code page",
            "the settings file cannot keep it as the chosen one: rename it"});
    }
    CheckValues(entry.path().wstring(), "material " + name, SettingsKind::MaterialProfile, tell);
  }
  tell({Level::Ok, About::Settings, check,
        std::to_string(profiles) + (profiles == 1 ? " material" : " materials"), ""});
}

}  // namespace k7host
