// A pseudo terminal (pty), which a host opens as it opens a serial port.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wire/port.h"
#include "wire/unique_fd.h"

namespace k7sim {

// The host's end is kept open here too. Otherwise each read would fail while no host has it open,
// and hosts that look for boards open and close a port many times. Openings and closings are
// therefore watched by inotify.
class PtyPort final : public Port {
 public:
  // `path`: where to make a symbolic link to the pty; empty: none is made.
  explicit PtyPort(std::string path) : symlink_(std::move(path)) {}
  ~PtyPort() override;

  std::vector<int> EventFds() const override { return {watch_.Get()}; }
  int DataFd() const override { return master_.Get(); }
  std::vector<bool> TakeEvents() override;
  std::string Read(std::size_t limit) override;
  std::size_t Write(std::string_view bytes) override;
  void DropUnread() override;
  void Close() override;
  bool Open(std::string& error) override;
  std::string Where() const override { return "pty " + (symlink_.empty() ? path_ : symlink_); }

 private:
  bool MakeSymlink(std::string& error);

  std::string symlink_;
  std::string path_;
  UniqueFd master_;
  UniqueFd kept_;   // the host's end, kept open
  UniqueFd watch_;  // inotify
  int opened_ = 0;  // how many hosts have their end open
};

}  // namespace k7sim
