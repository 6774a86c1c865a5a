// The identity handshake: finding out which controller is at the other end of the link.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Stands in controllerId while the controller has been asked and has not answered.
inline constexpr wchar_t kPendingControllerId[] = L"Monkey Magic";

// Slot 36: finds out the identity and loads the settings of that controller. Asks the controller
// unless the identity is known; gives a fresh one to a controller that has none. Result: 24, with
// the identity copied into `buffer` (null allowed; `size` in characters). After three polls of
// 200 ms without an answer: 0, the settings are not loaded and the pending mark stays in
// controllerId. Without a link: 24 with the identity as the record holds it. [host]
std::int32_t SettleIdentity(DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept;

// Slot 78: the identity becomes sixteen zeros, so that the next query asks the controller. [host]
void ForgetIdentity(LinkState& link) noexcept;

}  // namespace k7
