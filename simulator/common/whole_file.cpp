#include "common/whole_file.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace k7sim {

bool WriteWholeFile(const std::string& path, std::string_view content) {
  // A device or a pipe stays what it is.
  std::error_code ignored;
  if (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored)) {
    std::ofstream device(path, std::ios::binary);
    device << content;
    device.close();
    return !device.fail();
  }
  const std::string fresh = path + ".new";
  std::ofstream file(fresh, std::ios::trunc | std::ios::binary);
  file << content;
  file.close();
  return file && std::rename(fresh.c_str(), path.c_str()) == 0;
}

}  // namespace k7sim
