// Replacing a file in one step: whatever happens in between, a power cut too, the file is the old
// one or the new one, whole.
#pragma once

#include <string>
#include <string_view>

namespace k7host {

// The points between which a test ends the process.
enum class ReplaceStep {
  Started,   // the new file is there, empty, under another name
  Written,   // half of it is written
  Flushed,   // all of it is on the disk
  Replaced,  // it has the name of the old one
};

// Writes `bytes` beside the file, under its name with ".new" added, sees them onto the disk, gives
// that file the access rights of the old one, and renames it over the old one. A file left over by
// a process that died is overwritten. An error text with the path; empty: done. [host]
std::string ReplaceFileInOneStep(const std::wstring& path, std::string_view bytes,
                                 void (*onStep)(ReplaceStep) = nullptr);

}  // namespace k7host
