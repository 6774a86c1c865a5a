// The controller's own settings ("key value" lines of its card), kept in a file across restarts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

class ConfigStore {
 public:
  // Reads `path`; a file that does not exist yet is an empty one. An empty path keeps the settings
  // in memory only.
  explicit ConfigStore(std::string path = {});

  std::optional<std::string> Get(std::string_view key) const;

  // Stores the value and writes the file, all other lines as they were. False when the file could
  // not be written; the value holds in memory all the same.
  bool Set(std::string_view key, std::string_view value);

 private:
  bool Save() const;

  std::string path_;
  std::vector<std::string> lines_;
};

}  // namespace k7sim
