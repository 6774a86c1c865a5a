// A pseudo terminal that behaves as the computer's end of a serial cable.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wire/port.h"
#include "wire/unique_fd.h"

namespace k7sim {

// The far end is kept open here too: a pty whose last host closes it would otherwise answer every
// read with an error, and discovery opens and closes a port many times. Openings and closings are
// watched from outside instead.
class PtyPort final : public Port {
 public:
  // `link`: symbolic link to make to the pty; empty for none.
  explicit PtyPort(std::string link) : link_(std::move(link)) {}
  ~PtyPort() override;

  std::vector<int> EventFds() const override { return {watch_.Get()}; }
  int DataFd() const override { return master_.Get(); }
  std::vector<bool> TakeEvents() override;
  std::string Read(std::size_t limit) override;
  std::size_t Write(std::string_view bytes) override;
  void DropUnread() override;
  void Close() override;
  bool Open(std::string& error) override;
  std::string Where() const override { return "pty " + (link_.empty() ? path_ : link_); }

 private:
  bool MakeLink(std::string& error);

  std::string link_;
  std::string path_;
  UniqueFd master_;
  UniqueFd kept_;   // our own hold on the far end
  UniqueFd watch_;  // inotify
  int opened_ = 0;  // hosts that have the far end open
};

}  // namespace k7sim
