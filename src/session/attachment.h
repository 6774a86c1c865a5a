// Changing the link of a device, and ending a device.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 76: attaches an open link, or with a null `link` detaches the present one and stores
// `linkType`. Ends a jog or ramp first, because both use the link's guarded values. [host]
void ExchangeLink(DeviceState& record, LinkHandle link, std::uint32_t linkType,
                  const wchar_t* portName) noexcept;

// What has to happen before a record goes: ends a jog or ramp, detaches a link that is still
// attached (its reader uses the record), and keeps the position in the settings file. [host]
void EndSession(DeviceState& record) noexcept;

}  // namespace k7
