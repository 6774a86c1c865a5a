// Any bytes from a host, over each kind of link, in the driver's words and in the general dialect:
// the simulated board neither crashes nor hangs, and each of its replies is a line that fits into
// the 256 bytes that the driver has for it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/simulator.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  using namespace k7sim;
  constexpr WireKind kKinds[] = {WireKind::Usb, WireKind::Uart, WireKind::Tcp};
  SimulatorSetup setup;
  setup.speed = 0;
  setup.machine.homed = (data[0] & 0x80) != 0;
  setup.machine.hardLimits = (data[0] & 0x40) != 0;
  Transcript transcript;
  Simulator simulator(setup, transcript);
  const int port = simulator.AddLink(kKinds[data[0] % 3], "port");
  TimeUs now = 0;
  simulator.HostOpened(port, now);
  const auto drain = [&] {
    const std::string_view ready = simulator.Ready(port, now);
    std::size_t length = 0;
    for (const char c : ready) {
      length = c == '\n' ? 0 : length + 1;
      if (length >= 255) std::abort();
    }
    simulator.Sent(port, ready.size(), now);
  };
  // The second byte cuts the input into pieces; the machine moves on a little between them.
  const std::size_t piece = 1 + data[1];
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
  for (std::size_t at = 0; at < bytes.size(); at += piece) {
    simulator.Receive(port, bytes.substr(at, piece), now += 1000);
    simulator.JumpAhead(now);
    drain();
  }
  for (int i = 0; i < 5000 && simulator.JumpAhead(now); ++i) drain();
  return 0;
}
