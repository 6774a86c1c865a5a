// The ends of a link, in process: a named pipe or a loopback TCP connection.
#pragma once

#include <windows.h>
#include <winsock2.h>

#include <cstdint>

#include "k7/driver.h"

namespace k7test {

// Both ends are made for overlapped I/O; a socket stands as a HANDLE. Ends the test process when
// the system refuses one.
class LinkEnds {
 public:
  // kLinkSerial: a duplex byte pipe; its driver end stands in for a serial handle. kLinkTcp: a
  // connected socket pair. `bufferBytes` is what either direction holds before a write has to wait:
  // a wish that a socket takes as a hint.
  LinkEnds(std::uint32_t linkType, int bufferBytes);

  // A controller on the network: listens on a free port of the loopback, and the driver makes its
  // own end by connecting there.
  struct Listens {};
  explicit LinkEnds(Listens);
  ~LinkEnds();
  LinkEnds(const LinkEnds&) = delete;
  LinkEnds& operator=(const LinkEnds&) = delete;

  std::uint32_t LinkType() const { return linkType_; }
  HANDLE DriverEnd() const { return driver_; }
  HANDLE ControllerEnd() const { return controller_; }

  // Gives an end away: it is no longer closed with the rest.
  HANDLE ReleaseDriverEnd();
  // Closes an end now, as a pulled cable does; a listener with it.
  void CloseControllerEnd();

  // Of one that listens: its port, and taking the connection in, which is waited for; false when
  // `stop` is signalled first. Of others: 0, and true at once.
  unsigned Port() const { return port_; }
  bool Accept(HANDLE stop);

 private:
  void MakePipe(int bufferBytes);
  void MakeSockets(int bufferBytes);
  void Close(HANDLE& end) const;

  std::uint32_t linkType_;
  unsigned port_ = 0;
  HANDLE listener_ = INVALID_HANDLE_VALUE;
  HANDLE driver_ = INVALID_HANDLE_VALUE;
  HANDLE controller_ = INVALID_HANDLE_VALUE;
};

}  // namespace k7test
