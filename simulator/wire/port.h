// What the server needs of a port: descriptors to wait on, and who is there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

class Port {
 public:
  virtual ~Port() = default;

  // Descriptors that wake the server, apart from the one that carries data.
  virtual std::vector<int> EventFds() const = 0;
  // The descriptor that carries data; -1 while there is none.
  virtual int DataFd() const = 0;

  // Looks at what has happened. How often the host has opened and closed the port since the last
  // call, in order: true for an opening.
  virtual std::vector<bool> TakeEvents() = 0;

  // Bytes from the host, up to `limit`; empty when there are none now. A host that has gone shows
  // in the next `TakeEvents`.
  virtual std::string Read(std::size_t limit) = 0;
  // How many of the bytes went; 0 while the host does not read.
  virtual std::size_t Write(std::string_view bytes) = 0;

  // What lies unread on the host's side is taken back: nobody is there to read it.
  virtual void DropUnread() {}

  // Closes the port as a pulled cable does, and puts it back. False when that failed.
  virtual void Close() = 0;
  virtual bool Open(std::string& error) = 0;

  // One line that tells the user where the port is.
  virtual std::string Where() const = 0;
};

}  // namespace k7sim
