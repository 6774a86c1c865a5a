// Reads files whole.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace k7test {

// What the file holds; empty when there is none.
inline std::string Content(const std::string& path) {
  std::stringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

}  // namespace k7test
