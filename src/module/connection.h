// Making a device of a table entry, and ending one.
#pragma once

#include "module/smoothieboard.h"
#include "link/link.h"
#include "module/controller_table.h"

namespace k7 {

// Opens the entry's link, makes a device on it and, when the controller answers, settles its
// identity, switches the motors on and sends the start-up lines: about a second. Null when the link
// does not open, memory is short or nobody answers; everything made is undone then. `service` is
// the network port of an entry of link type kLinkTcp. [host]
Smoothieboard* ConnectTo(const ControllerEntry& entry,
                         const wchar_t* service = kControllerService) noexcept;

// Ends a jog or ramp, switches the motors off, detaches and closes the link, destroys the device.
// [host]
void Disconnect(Smoothieboard* device) noexcept;

}  // namespace k7
