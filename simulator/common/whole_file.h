// Files that are replaced as a whole.
#pragma once

#include <string>
#include <string_view>

namespace k7sim {

// Puts a file with this content in the place of the one at `path`. Whoever reads meanwhile, and
// whatever is left when the program is killed meanwhile, is the old file or the new one, never a
// part. False when the file could not be written.
bool WriteWholeFile(const std::string& path, std::string_view content);

}  // namespace k7sim
