// Discovery: finding the controllers behind the serial ports.
#pragma once

#include "base/handles.h"
#include "device/device_state.h"
#include "module/controller_table.h"

namespace k7 {

// Opens and configures a port; gives none for a port that does not open. It is an argument so that
// a test can put its own controllers behind the names.
using PortOpener = UniqueFile (*)(const wchar_t* path) noexcept;

// Empties the table, asks the controller behind each port from "\\.\COM0" to "\\.\COM49" for a sign
// of life and its identity, and enters those that give both, in the order of the ports, at most
// ten. It works with a temporary device. The end of that device writes a position to the settings
// file of the last identity met (sixteen zeros when no controller answered). Result: entries
// filled. Takes about a quarter of a second for each port that opens, and 600 ms more for one that
// does not tell its identity. [host]
int DiscoverControllers(ControllerTable& table, PortOpener open) noexcept;

// The same with the ports of this machine. [host]
int DiscoverControllers(ControllerTable& table) noexcept;

// Asks the controller behind one open port. Fills `entry` and returns true when it has answered
// with its identity; otherwise leaves an empty identity there. The port stays the caller's to
// close. [host]
bool ProbePort(DeviceState& record, LinkHandle port, const wchar_t* path,
               ControllerEntry& entry) noexcept;

}  // namespace k7
