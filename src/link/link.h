// The link of a device: attaching, detaching, sending lines, liveness.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// The network port of a controller that is reached by TCP.
inline constexpr wchar_t kControllerService[] = L"23";

// A kLink number as a trace names it. [any]
constexpr const char* NameOfLink(std::uint32_t linkType) noexcept {
  return linkType == kLinkSerial ? "serial" : linkType == kLinkTcp ? "tcp" : "none";
}

// Attaches an open serial handle or socket: opens the record's guarded values, makes the write
// queue, and starts the reader thread; returns once that has announced itself or could not be
// started. A link that is still attached is detached first. [host]
void AttachLink(DeviceState& record, LinkHandle link, std::uint32_t linkType,
                const wchar_t* portName) noexcept;

// Asks the reader to stop, waits for it (without bound), and closes what attach made; writes that
// are still outstanding are cancelled. The link itself stays the caller's to close. linkType
// becomes `linkType` at the end. Never on the reader thread, which it waits for: not in a
// notification callback. [host]
void DetachLink(DeviceState& record, std::uint32_t linkType) noexcept;

// Sends the bytes of one zero-terminated line, its line feed included; null ignored. Waits up to
// 100 ms; a write that is still outstanding then keeps its own bytes and goes out in order. A write
// that fails stops the reader. `tag` is for the trace. Without a link: nothing. [any]
void SendLine(LinkState& state, const char* line, CommandTag tag = CommandTag::None) noexcept;

// Goes on with writes whose senders no longer wait for them. Cheap when there are none. [reader]
void PumpWrites(LinkState& state) noexcept;

// Sends "SmoothieIsConnected\n"; 1 when the last answer is at most 2000 ms old, else 0. The first
// check after an attach counts as an answer. 0 on a lost link. 1 and nothing else on a detached
// record. [host]
std::int32_t CheckAlive(LinkState& state) noexcept;

// The rule of CheckAlive: whether an answer at `answerMs` still counts at `nowMs`. The clock wraps.
constexpr bool IsRecentAnswer(std::uint32_t nowMs, std::uint32_t answerMs) noexcept {
  const std::uint32_t distance = nowMs - answerMs;
  return (distance < 0x80000000u ? distance : 0u - distance) < 2001;
}

}  // namespace k7
