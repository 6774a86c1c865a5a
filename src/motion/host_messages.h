// Which registered message tells the host's window what. The messages of moves are the reader's.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// What the window is told, in the order of the message numbers that the host registers.
enum class HostReport : std::uint8_t {
  Position,  // wParam, lParam: X, Y in host steps from the table home
  Surface,   // wParam, lParam: tableSurface, lastZ in machine steps
  JogZ,      // wParam: lastZ in machine steps
};

struct HostMessageRow {
  HostReport report;
  Polled<std::uint32_t> DeviceState::*message;
};

// The one place that says so.
inline constexpr HostMessageRow kHostMessages[] = {
    {HostReport::Position, &DeviceState::msgExtra1},
    {HostReport::Surface, &DeviceState::msgExtra2},
    {HostReport::JogZ, &DeviceState::msgExtra3},
};

// A window and a message number for this report are registered. [any]
bool CanReport(const DeviceState& record, HostReport report) noexcept;

// Sends the report to ownerWindow and waits for the window's procedure; values are sign-extended.
// Without a window or a message number: nothing. [host], [jog]
void SendReport(const DeviceState& record, HostReport report, std::int32_t wParam,
                std::int32_t lParam) noexcept;

// Sends one message to a window of the host and waits; null window or message 0: nothing. [any]
void SendToHost(WindowHandle window, std::uint32_t message, std::int32_t wParam,
                std::int32_t lParam) noexcept;

}  // namespace k7
