// The window that the driver reports to. It is never shown; it owns the driver's message boxes.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "core/progress.h"
#include "k7/driver.h"

namespace k7host {

// The message numbers that the host gives the driver.
enum HostMessage : UINT {
  kMsgQueued = WM_APP + 1,
  kMsgStarted,
  kMsgFinished,
  kMsgPosition,
  kMsgSurface,
  kMsgJogZ,
  kMsgJogEnd,
  kMsgRampEnd,
};

struct HostPosition {
  std::int32_t xSteps = 0;  // host steps from the table home
  std::int32_t ySteps = 0;
};

// What has arrived since Clear.
struct HostReports {
  std::optional<HostPosition> position;
  std::optional<std::int32_t> zSteps;        // machine steps
  std::optional<std::int32_t> surfaceSteps;  // the deepest that Z may go, machine steps
  bool jogEnded = false;
  std::optional<std::uint32_t> rampRpm;  // speed that a ramp reached
};

// [host]
class HostWindow {
 public:
  HostWindow() = default;
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  bool Create();
  HWND Handle() const { return window_; }

  // Registers the window (unless `batch`: then no message box can appear about the table surface)
  // and the progress callback with the device; Detach takes both back.
  void Attach(k7::IEngraver& device, bool batch);
  void Detach(k7::IEngraver& device);

  // Serves messages until one has come, a move was reported, the user asked to stop or the time
  // is over.
  void Wait(DWORD timeoutMs);

  void Clear() { reports_ = {}; }
  const HostReports& Reports() const { return reports_; }
  const MoveCounters& Counters() const { return counters_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static void OnMove(uint32_t message, uint64_t context);  // [reader]
  bool Receive(UINT message, WPARAM first, LPARAM second);

  HWND window_ = nullptr;
  HANDLE moved_ = nullptr;  // a move was reported; set by [reader]
  MoveCounters counters_;
  HostReports reports_;
};

}  // namespace k7host
