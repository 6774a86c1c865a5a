// Connecting to a controller of the table, and disconnecting from one.
#pragma once

#include "link/link.h"
#include "module/controller_table.h"
#include "module/smoothieboard.h"

namespace k7 {

// Opens the link of the entry and makes a device on it. When the controller answers, settles its
// identity, switches the motors on and sends the start-up lines; takes about a second. Null, with
// everything undone, when the link does not open, memory is short or no controller answers.
// `service` is the network port of an entry of link type kLinkTcp. [host]
Smoothieboard* ConnectTo(const ControllerEntry& entry,
                         const wchar_t* service = kControllerService) noexcept;

// Ends a jog or ramp, switches the motors off, detaches and closes the link and destroys the
// device, which keeps its position. [host]
void Disconnect(Smoothieboard* device) noexcept;

}  // namespace k7
