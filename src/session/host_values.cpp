#include "session/host_values.h"

#include "base/bounded_copy.h"

namespace k7 {

namespace {

// Copies a text into a buffer that has room for one; `size` when it has none, else 0.
std::int32_t CopyIntoRoom(wchar_t* buffer, std::int32_t size, const wchar_t* text) noexcept {
  if (buffer == nullptr || size < 1) return size;
  CopyText(buffer, size, text);
  return 0;
}

}  // namespace

std::int32_t CopyFriendlyName(const LinkState& link, wchar_t* buffer, std::int32_t size) noexcept {
  CopyText(buffer, size, link.friendlyName);
  return 0;
}

void RenameController(LinkState& link, const wchar_t* name) noexcept {
  if (name != nullptr) CopyText(link.friendlyName, name);
}

void KeepHostText(HostValues& host, const wchar_t* text) noexcept {
  if (text != nullptr) CopyText(host.hostText, text);
}

std::int32_t CopyHostText(const HostValues& host, wchar_t* buffer, std::int32_t size) noexcept {
  return CopyIntoRoom(buffer, size, host.hostText);
}

std::int32_t CopyPortName(const LinkState& link, wchar_t* buffer, std::int32_t size) noexcept {
  return CopyIntoRoom(buffer, size, link.portName);
}

void NotifyOfConnection(NotifyState& notify, WindowHandle window, std::uint32_t message) noexcept {
  notify.connectNotifyMessage = message;
  notify.connectNotifyWindow = window;
}

// The window is stored last, because the reader sends to it as soon as it is there.
void NotifyByWindow(NotifyState& notify, WindowHandle window,
                    const WindowMessages& messages) noexcept {
  notify.msgQueued = messages.queued;
  notify.msgStarted = messages.started;
  notify.msgFinished = messages.finished;
  notify.msgExtra1 = messages.position;
  notify.msgExtra2 = messages.surface;
  notify.msgExtra3 = messages.jogZ;
  notify.ownerWindow = window;
}

// The callback is stored last, for the same reason.
void NotifyByCallback(NotifyState& notify, NotifyCallback callback,
                      const CallbackMessages& messages) noexcept {
  notify.notifyContext = messages.context;
  notify.msgQueued = messages.queued;
  notify.msgStarted = messages.started;
  notify.msgFinished = messages.finished;
  notify.notifyCallback = callback;
}

}  // namespace k7
