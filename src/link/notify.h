// Telling the host: how far its commands are, where the machine is, that something has ended.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Whether anybody hears of the progress of moves: a callback or a window is registered. [any]
bool HasListener(const NotifyState& notify) noexcept;

// Whether the host is not to be told of moves at present: quiet moves, or a jog. [any]
bool IsSilent(const DeviceState& record) noexcept;

// Tells the host `message`, the progress of a move: by the callback when one is stored, else by a
// message sent to the owner window (returns when its procedure has), else nothing. [reader]
void NotifyHost(const NotifyState& notify, std::uint32_t message) noexcept;

// What the owner window is told of positions, in the order of the message numbers that the host
// registers.
enum class HostReport : std::uint8_t {
  Position,  // wParam, lParam: X, Y in host steps from the table home
  Surface,   // wParam, lParam: tableSurface, lastZ in machine steps
  JogZ,      // wParam: lastZ in machine steps
};

struct HostReportRow {
  HostReport report;
  Polled<std::uint32_t> NotifyState::*message;
};

inline constexpr HostReportRow kHostReports[] = {
    {HostReport::Position, &NotifyState::msgExtra1},
    {HostReport::Surface, &NotifyState::msgExtra2},
    {HostReport::JogZ, &NotifyState::msgExtra3},
};

// A window and a message number for this report are registered. [any]
bool CanReport(const NotifyState& notify, HostReport report) noexcept;

// Sends the report to the owner window and waits for the window's procedure; values are
// sign-extended. Without a window or a message number: nothing. [host], [jog]
void SendReport(const NotifyState& notify, HostReport report, std::int32_t wParam,
                std::int32_t lParam) noexcept;

// Sends one message to a window of the host and waits; null window or message 0: nothing. [any]
void SendToHost(WindowHandle window, std::uint32_t message, std::int32_t wParam,
                std::int32_t lParam) noexcept;

}  // namespace k7
