// Error messages that end with the reason that the operating system gives.
#pragma once

#include <cerrno>
#include <cstring>
#include <string>

namespace k7sim {

// Sets `error` to "WHAT: REASON", where REASON is why the last system call failed. The result is
// always false, so that the caller can return it.
inline bool FailBySystem(std::string& error, const std::string& what) {
  error = what + ": " + std::strerror(errno);
  return false;
}

}  // namespace k7sim
