// The serial ports that the driver searches.
#pragma once

#include <string>
#include <vector>

namespace k7host {

struct SerialPorts {
  std::vector<std::string> free;   // "COM7": can be opened
  std::vector<std::string> taken;  // exists and cannot be opened
  // Others that have the driver, and with it perhaps a port. Wine opens a port twice, so that one
  // in use does not show as taken there.
  std::vector<std::string> programs;
};

// Looks at the ports COM0 to COM49, as the driver does. A port that this program holds open itself
// counts as taken. [host]
SerialPorts LookAtPorts();

// "looked at COM3, COM7; COM5 is in use by another program; host.exe (process 32) has the driver
// loaded and may have the port: end it first", or that there is no port. [any]
std::string PortsText(const SerialPorts& ports);

}  // namespace k7host
