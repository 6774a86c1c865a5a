// The files that the program writes: whether it will be able to, before anything runs.
#pragma once

#include <string>

namespace k7sim {

// In place of a file name: standard output.
inline constexpr const char* kStandardOutput = "-";

// True when a file can be made or replaced at `path`. Otherwise `error` says in one line what
// cannot be written where, and what to do. `what` names the file to the user, as "picture".
bool CheckOutput(const std::string& what, const std::string& path, std::string& error);

}  // namespace k7sim
