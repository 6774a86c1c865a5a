// A port: the end of a link on this side, as the operating system has it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

class Port {
 public:
  virtual ~Port() = default;

  // Descriptors that become readable when `TakeEvents` has something, apart from `DataFd`.
  virtual std::vector<int> EventFds() const = 0;
  // The descriptor that carries the bytes; -1 while there is none.
  virtual int DataFd() const = 0;

  // What hosts have done since the last call, in order: true for each opening of the port, false
  // for each closing.
  virtual std::vector<bool> TakeEvents() = 0;

  // Bytes from the host, up to `limit`; empty when there are none now. That a host has gone is told
  // by the next `TakeEvents`.
  virtual std::string Read(std::size_t limit) = 0;
  // Sends bytes to the host. The result is how many were taken; 0 while the host does not read.
  virtual std::size_t Write(std::string_view bytes) = 0;

  // Throws away what the last host has left unread, so that the next one does not read it.
  virtual void DropUnread() {}

  // Closes the port, as pulling the cable does.
  virtual void Close() = 0;
  // Opens the port, for the first time or again. False with one line in `error`.
  virtual bool Open(std::string& error) = 0;

  // Tells the user where the port is: "pty PATH" or "tcp PORT".
  virtual std::string Where() const = 0;
};

}  // namespace k7sim
