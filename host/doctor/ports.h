// The serial ports of this computer, as Windows knows them.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace k7host {

// "COM7" of 7. [any]
std::string PortName(int number);
// The number of "COM7", "com7" or "\\.\COM7"; -1: it is no port. [any]
int PortNumber(const std::string& name);

// What the device manager calls them, by number: "USB Serial Port (COM7)". Empty where Windows
// does not tell. [host]
std::map<int, std::string> FriendlyPortNames();

// The numbers of the ports that Windows lists, sorted. Ports of a Wine prefix may be missing.
// [host]
std::vector<int> ListedPorts();

// Whether a port that a program has open may open for others, too, as it does under Wine for root:
// whoever reads then takes answers away from the other. [any]
bool PortsAreShared();

// Programs, other than this one, that have loaded the driver: "host.exe (process 4711)". Windows
// does not tell who has a port open, but who has the driver may. [host]
std::vector<std::string> ProgramsWithDriver();

}  // namespace k7host
