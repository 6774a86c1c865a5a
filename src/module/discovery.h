// Discovery: which serial ports have a controller behind them.
#pragma once

#include "device/device_state.h"
#include "base/handles.h"
#include "module/controller_table.h"

namespace k7 {

// How a port is opened and configured: gives none for a port that does not open. An argument, so
// that a test can put its own controllers behind the names.
using PortOpener = UniqueFile (*)(const wchar_t* path) noexcept;

// Empties the table, asks every port from "\\.\COM0" to "\\.\COM49" that opens for a sign of life
// and an identity, and records those that give both, in the order of the ports, at most ten. As its
// temporary device ends, "Current Location" is written to the settings file of the last identity
// met (sixteen zeros when nobody answered). Result: entries filled. About a quarter of a second for
// each port that opens, 600 ms more for one that does not tell its identity. [host]
int DiscoverControllers(ControllerTable& table, PortOpener open) noexcept;

// The same with the ports of this machine. [host]
int DiscoverControllers(ControllerTable& table) noexcept;

// Asks the controller behind one open port; fills `entry` and returns true when it has answered
// with its identity, else leaves an empty identity there. The port stays the caller's. [host]
bool ProbePort(DeviceState& record, LinkHandle port, const wchar_t* path,
               ControllerEntry& entry) noexcept;

}  // namespace k7
