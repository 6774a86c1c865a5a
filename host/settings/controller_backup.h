// A controller's settings file with its folder (material library, temporary homes), copied out and
// back.
#pragma once

#include <string>
#include <vector>

namespace k7host {

struct BackupResult {
  std::string error;               // empty: done
  std::vector<std::string> files;  // copied, by their paths within the backup
};

// Copies the controller's files into `folder`, which must not be there yet or be empty, and then a
// list of them with sizes and sums, so that a backup that was cut short is known for one. [host]
BackupResult BackUpController(const std::string& id, const std::wstring& folder);

// Looks the whole backup through, then puts its files into their places under `id` (empty: the
// identity that it was made of), each in one step. A file that is there already is kept beside the
// new one with ".bak" added; one that is not in the backup stays. `id` returns the identity. [host]
BackupResult RestoreController(const std::wstring& folder, std::string& id);

}  // namespace k7host
