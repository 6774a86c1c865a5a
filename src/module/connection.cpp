#include "module/connection.h"

#include "device/polling.h"
#include "device/worker.h"
#include "link/commands.h"
#include "link/link.h"
#include "link/serial.h"
#include "link/tcp.h"
#include "motion/move.h"
#include "session/identity.h"

namespace k7 {

namespace {

constexpr std::uint32_t kAnswerMs = 500;
constexpr std::uint32_t kStartUpMs = 500;  // the table-home answer arrives within it
constexpr float kMostInchesPerSecond = 20.0f;

// Null when it does not open or the type is unknown.
LinkHandle OpenLink(const ControllerEntry& entry, const wchar_t* service) noexcept {
  if (entry.linkType == kLinkSerial) {
    UniqueFile port = OpenSerialPort(entry.address);
    return port ? port.Release() : nullptr;
  }
  if (entry.linkType == kLinkTcp) {
    const SOCKET socket = OpenTcp(entry.address, service);
    return socket == INVALID_SOCKET ? nullptr : AsLink(socket);
  }
  return nullptr;
}

void StartUp(DeviceState& record) noexcept {
  SettleIdentity(record, nullptr, 0);
  SetMotorPower(record.link, 1);
  SendLine(record.link, commands::kMillimetres);
  SendLine(record.link, commands::kAbsolutePositions);
  SendLine(record.link, commands::kFinishMotion);
  SetMaxSpeeds(record.link, kMostInchesPerSecond, kMostInchesPerSecond, kMostInchesPerSecond);
  SendLine(record.link, commands::kAskTableHomed);
  Pause(kStartUpMs);
}

}  // namespace

Smoothieboard* ConnectTo(const ControllerEntry& entry, const wchar_t* service) noexcept {
  const LinkHandle link = OpenLink(entry, service);
  if (link == nullptr) return nullptr;
  Smoothieboard* const device = Smoothieboard::Create();
  if (device == nullptr) {
    CloseLink(entry.linkType, link);
    return nullptr;
  }
  DeviceState& record = *device->Record();
  AttachLink(record, link, entry.linkType, entry.address);
  CheckAlive(record.link);  // asks; the answer sets `connected`
  Pause(kAnswerMs);
  if (record.link.connected == 0) {
    Disconnect(device);
    return nullptr;
  }
  StartUp(record);
  return device;
}

void Disconnect(Smoothieboard* device) noexcept {
  if (DeviceState* const record = device->Record()) {
    EndWorkers(*record);
    SetMotorPower(record->link, 0);
    const std::uint32_t linkType = record->link.linkType;
    const LinkHandle link = record->link.linkHandle;
    DetachLink(*record, kLinkNone);
    CloseLink(linkType, link);
  }
  delete device;
}

}  // namespace k7
