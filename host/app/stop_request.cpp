// The console control handler; it runs on a thread that the system starts for it.
#include "app/stop_request.h"

#include <atomic>

namespace k7host {
namespace {

std::atomic<int> g_requests{0};
std::atomic<void (*)()> g_onDeadline{nullptr};
HANDLE g_event = nullptr;
HANDLE g_second = nullptr;
HANDLE g_handled = nullptr;

BOOL WINAPI OnControl(DWORD kind) {
  const bool closing =
      kind == CTRL_CLOSE_EVENT || kind == CTRL_LOGOFF_EVENT || kind == CTRL_SHUTDOWN_EVENT;
  if (closing) {
    RequestStop();
    if (WaitForSingleObject(g_handled, kCloseWaitMs) == WAIT_OBJECT_0) return TRUE;
    if (const auto onDeadline = g_onDeadline.load()) onDeadline();
    return TRUE;
  }
  const int before = g_requests++;
  SetEvent(before == 0 ? g_event : g_second);
  return before < 2 ? TRUE : FALSE;
}

}  // namespace

void InstallStopHandler() {
  g_event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  g_second = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  g_handled = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  SetConsoleCtrlHandler(nullptr, FALSE);  // a parent may have switched Ctrl-C off
  SetConsoleCtrlHandler(&OnControl, TRUE);
}

void RequestStop() {
  int none = 0;
  g_requests.compare_exchange_strong(none, 1);
  SetEvent(g_event);
}

bool StopRequested() {
  return g_requests > 0;
}

HANDLE StopEvent() {
  return g_event;
}

HANDLE SecondStopEvent() {
  return g_second;
}

void SetStopDeadline(void (*onDeadline)()) {
  g_onDeadline = onDeadline;
}

void StopHandled() {
  SetEvent(g_handled);
}

}  // namespace k7host
