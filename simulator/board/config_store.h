// The board's own settings, lines of "key value", kept in a file across restarts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

class ConfigStore {
 public:
  // Reads the file at `path`; one that does not exist counts as empty. With an empty path the
  // settings are kept in memory only.
  explicit ConfigStore(std::string path = {});

  std::optional<std::string> Get(std::string_view key) const;

  // Stores the value and writes the file; all other lines stay as they are. False when the file
  // could not be written; `Get` then gives the new value all the same.
  bool Set(std::string_view key, std::string_view value);

 private:
  bool Save() const;

  std::string path_;
  std::vector<std::string> lines_;
};

}  // namespace k7sim
