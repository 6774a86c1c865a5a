// Error messages that end with the reason the system gives.
#pragma once

#include <cerrno>
#include <cstring>
#include <string>

namespace k7sim {

// Sets `error` to "WHAT: REASON", the reason that of the last system call. Always false, for the
// caller to return.
inline bool FailBySystem(std::string& error, const std::string& what) {
  error = what + ": " + std::strerror(errno);
  return false;
}

}  // namespace k7sim
