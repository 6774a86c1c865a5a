#include "module/discovery.h"

#include <memory>
#include <new>

#include "base/bounded_copy.h"
#include "device/polling.h"
#include "link/link.h"
#include "link/serial.h"
#include "module/smoothieboard.h"
#include "session/identity.h"

namespace k7 {

namespace {

constexpr int kPortCount = 50;
constexpr std::uint32_t kAnswerMs = 200;

void PortPath(wchar_t (&path)[kAddressCapacity], int number) noexcept {
  CopyText(path, L"\\\\.\\COM");
  const wchar_t digits[] = {static_cast<wchar_t>(L'0' + number / 10),
                            static_cast<wchar_t>(L'0' + number % 10), L'\0'};
  AppendText(path, number < 10 ? digits + 1 : digits);
}

}  // namespace

bool ProbePort(DeviceState& record, LinkHandle port, const wchar_t* path,
               ControllerEntry& entry) noexcept {
  // One record serves every port, so the answer of the controller before has to be forgotten.
  record.link.connected = 0;
  AttachLink(record, port, kLinkSerial, path);
  CheckAlive(record.link);  // asks; the answer sets `connected`
  Pause(kAnswerMs);

  bool found = false;
  if (record.link.connected != 0) {
    ForgetIdentity(record.link);
    found = SettleIdentity(record, entry.id, kIdCapacity) == kIdCapacity;
    if (found) {
      CopyText(entry.name, record.link.friendlyName);
      CopyText(entry.address, path);
      entry.linkType = kLinkSerial;
    } else {
      entry.id[0] = L'\0';
    }
  }
  DetachLink(record, kLinkNone);
  return found;
}

int DiscoverControllers(ControllerTable& table, PortOpener open) noexcept {
  Smoothieboard temporary{std::unique_ptr<DeviceState>{new (std::nothrow) DeviceState}};
  table.Clear();
  if (temporary.Record() == nullptr) return 0;
  int count = 0;
  for (int number = 0; number < kPortCount && count < kMostControllers; ++number) {
    wchar_t path[kAddressCapacity];
    PortPath(path, number);
    const UniqueFile port = open(path);
    if (port && ProbePort(*temporary.Record(), port.Get(), path, table.entries[count])) ++count;
    if (port) TraceEvent(port.Get(), "close");
  }
  return count;
}

int DiscoverControllers(ControllerTable& table) noexcept {
  return DiscoverControllers(table, &OpenSerialPort);
}

}  // namespace k7
