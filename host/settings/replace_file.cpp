#include "settings/replace_file.h"

#include <windows.h>

#include <vector>

#include "core/text.h"
#include "settings/system_error.h"

namespace k7host {
namespace {

bool WriteAll(HANDLE file, std::string_view bytes) {
  DWORD written = 0;
  return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
         written == bytes.size();
}

// The list of who may do what with a file; empty where it cannot be read.
std::vector<char> RightsOf(const std::wstring& path) {
  DWORD size = 0;
  GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<char> rights(size);
  if (size != 0 &&
      GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) == 0) {
    rights.clear();
  }
  return rights;
}

// Who may read and write the old file may do so with the new one: programs of other accounts write
// their settings there, too. Where the rights cannot be read those of the folder hold.
void CopyRights(const std::wstring& from, const std::wstring& to) {
  std::vector<char> rights = RightsOf(from);
  if (rights.empty() || rights == RightsOf(to)) return;
  SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
}

}  // namespace

std::string ReplaceFileInOneStep(const std::wstring& path, std::string_view bytes,
                                 void (*onStep)(ReplaceStep)) {
  const auto reached = [&](ReplaceStep step) {
    if (onStep != nullptr) onStep(step);
  };
  const std::wstring fresh = path + L".new";
  const HANDLE file = CreateFileW(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return "cannot write " + NarrowText(fresh) + ": " + LastError();
  reached(ReplaceStep::Started);
  const std::size_t half = bytes.size() / 2;
  bool good = WriteAll(file, bytes.substr(0, half));
  if (good) reached(ReplaceStep::Written);
  good = good && WriteAll(file, bytes.substr(half)) && FlushFileBuffers(file) != 0;
  std::string error = good ? "" : "cannot write " + NarrowText(fresh) + ": " + LastError();
  CloseHandle(file);
  if (good) {
    reached(ReplaceStep::Flushed);
    CopyRights(path, fresh);
    // Not ReplaceFileW: it renames twice, and a failure in between leaves neither name in place.
    if (MoveFileExW(fresh.c_str(), path.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
      error = "cannot replace " + NarrowText(path) + ": " + LastError();
    }
  }
  if (!error.empty()) {
    DeleteFileW(fresh.c_str());
    return error;
  }
  reached(ReplaceStep::Replaced);
  return "";
}

}  // namespace k7host
