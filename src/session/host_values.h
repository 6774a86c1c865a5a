// What a host stores in the driver and reads back: its texts, and the windows, messages and
// callback by which it wants to be told.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 37: copies the friendly name of the controller, cut to `size`; 0. [any]
std::int32_t CopyFriendlyName(const LinkState& link, wchar_t* buffer, std::int32_t size) noexcept;
// Slot 38: replaces it in the record, cut to 63 characters; null ignored. [host]
void RenameController(LinkState& link, const wchar_t* name) noexcept;

// Slot 115: keeps a text for the host, cut to 63 characters; null ignored. [any]
void KeepHostText(HostValues& host, const wchar_t* text) noexcept;
// Slot 116: copies that text, cut to `size`; 0. Without a buffer or with a size below 1: `size`.
// [any]
std::int32_t CopyHostText(const HostValues& host, wchar_t* buffer, std::int32_t size) noexcept;

// Slot 123: copies the serial path or network address of the link, by the same rule. [any]
std::int32_t CopyPortName(const LinkState& link, wchar_t* buffer, std::int32_t size) noexcept;

// Slot 41: the window that is told of every sign of life; null: none. [host]
void NotifyOfConnection(NotifyState& notify, WindowHandle window, std::uint32_t message) noexcept;

// The six message numbers of the window of slot 48.
struct WindowMessages {
  std::uint32_t queued, started, finished;
  std::uint32_t position, surface, jogZ;
};

// Slot 48: the window that is told of progress and owns the message boxes. [host]
void NotifyByWindow(NotifyState& notify, WindowHandle window,
                    const WindowMessages& messages) noexcept;

// The context and the three message numbers of the callback of slot 49.
struct CallbackMessages {
  std::uint64_t context;
  std::uint32_t queued, started, finished;
};

// Slot 49: the callback that is told of progress instead of the window; null: the window again.
// [host]
void NotifyByCallback(NotifyState& notify, NotifyCallback callback,
                      const CallbackMessages& messages) noexcept;

}  // namespace k7
