// The serial ports that the driver searches.
#pragma once

#include <string>
#include <vector>

namespace k7host {

struct SerialPorts {
  std::vector<std::string> free;   // "COM7": can be opened
  std::vector<std::string> taken;  // exists and cannot be opened
};

// Looks at the ports COM0 to COM49, as the driver does. A port that this program holds open itself
// counts as taken. [host]
SerialPorts LookAtPorts();

// "looked at COM3, COM7; COM5 is in use by another program", or that there is no port. [any]
std::string PortsText(const SerialPorts& ports);

}  // namespace k7host
