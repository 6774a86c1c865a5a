// The named pipe through which commands come to a running simulator.
#pragma once

#include <string>

#include "wire/unique_fd.h"

namespace k7sim {

// Writers may open, write and close it any number of times.
class ControlPipe {
 public:
  ~ControlPipe();
  bool Open(const std::string& path, std::string& error);
  int Fd() const { return fd_.Get(); }
  // The next complete line; false when there is none yet.
  bool TakeLine(std::string& line);

 private:
  std::string path_;
  UniqueFd fd_;
  std::string pending_;
};

}  // namespace k7sim
