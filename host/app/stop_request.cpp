// The console control handler; it runs on a thread that the system starts for it.
#include "app/stop_request.h"

#include <atomic>

namespace k7host {
namespace {

std::atomic<bool> g_requested{false};
HANDLE g_event = nullptr;
HANDLE g_handled = nullptr;

// How long a closing console waits for StopHandled. Windows ends the process after 5 s.
constexpr DWORD kCloseWaitMs = 4500;

BOOL WINAPI OnControl(DWORD kind) {
  if (g_requested.exchange(true)) return FALSE;
  SetEvent(g_event);
  const bool closing =
      kind == CTRL_CLOSE_EVENT || kind == CTRL_LOGOFF_EVENT || kind == CTRL_SHUTDOWN_EVENT;
  if (closing) WaitForSingleObject(g_handled, kCloseWaitMs);
  return TRUE;
}

}  // namespace

void InstallStopHandler() {
  g_event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  g_handled = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  SetConsoleCtrlHandler(nullptr, FALSE);  // a parent may have switched Ctrl-C off
  SetConsoleCtrlHandler(&OnControl, TRUE);
}

bool StopRequested() {
  return g_requested;
}

HANDLE StopEvent() {
  return g_event;
}

void StopHandled() {
  SetEvent(g_handled);
}

}  // namespace k7host
