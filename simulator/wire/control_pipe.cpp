#include "wire/control_pipe.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>

#include "wire/system_error.h"

namespace k7sim {

ControlPipe::~ControlPipe() {
  if (fd_) unlink(path_.c_str());
}

bool ControlPipe::Open(const std::string& path, std::string& error) {
  struct stat there {};
  if (lstat(path.c_str(), &there) == 0 && S_ISFIFO(there.st_mode)) unlink(path.c_str());
  if (mkfifo(path.c_str(), 0600) != 0) return FailBySystem(error, "cannot make the pipe " + path);
  path_ = path;
  // The pipe is open for writing here too, so that it does not end when a writer closes it.
  fd_.Reset(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  return fd_ || FailBySystem(error, "cannot open the pipe " + path);
}

bool ControlPipe::TakeLine(std::string& line) {
  std::array<char, 1024> bytes{};
  const ssize_t got = fd_ ? read(fd_.Get(), bytes.data(), bytes.size()) : 0;
  if (got > 0) pending_.append(bytes.data(), static_cast<std::size_t>(got));
  const std::size_t end = pending_.find('\n');
  if (end == pending_.npos) return false;
  line = pending_.substr(0, end);
  pending_.erase(0, end + 1);
  return true;
}

}  // namespace k7sim
