#include "common/whole_file.h"

#include <cstdio>
#include <fstream>

namespace k7sim {

bool WriteWholeFile(const std::string& path, std::string_view content) {
  const std::string fresh = path + ".new";
  std::ofstream file(fresh, std::ios::trunc | std::ios::binary);
  file << content;
  file.close();
  return file && std::rename(fresh.c_str(), path.c_str()) == 0;
}

}  // namespace k7sim
