// Files that are replaced as a whole.
#pragma once

#include <string>
#include <string_view>

namespace k7sim {

// Replaces the file at `path`, or makes it. A reader at any moment sees the old file or the new one
// in full, and so does one after the program has been killed. False when it could not be written.
bool WriteWholeFile(const std::string& path, std::string_view content);

}  // namespace k7sim
