#include "app/output_paths.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace k7sim {

namespace fs = std::filesystem;

bool CheckOutput(const std::string& what, const std::string& path, std::string& error) {
  if (path.empty() || path == kStandardOutput) return true;
  const std::string cannot = "cannot write the " + what + " to " + path + ": ";
  std::error_code ignored;
  if (fs::is_directory(path, ignored)) {
    error = cannot + "that is a folder; name a file in it";
    return false;
  }
  // A device or a pipe is written as it is; a file is made beside the old one and then replaces it.
  const bool asItIs = fs::exists(path, ignored) && !fs::is_regular_file(path, ignored);
  const fs::path parent = fs::path(path).parent_path();
  const std::string folder = parent.empty() ? "." : parent.string();
  if (!fs::is_directory(folder, ignored)) {
    error = cannot + "there is no folder " + folder + "; make it first, or name another";
    return false;
  }
  if (access(asItIs ? path.c_str() : folder.c_str(), asItIs ? W_OK : W_OK | X_OK) != 0) {
    error = cannot + (asItIs ? path : "the folder " + folder) + " cannot be written (" +
            std::strerror(errno) + "); name another";
    return false;
  }
  return true;
}

}  // namespace k7sim
