#include "module/connection.h"

#include "device/polling.h"
#include "device/worker.h"
#include "link/commands.h"
#include "link/serial.h"
#include "link/tcp.h"
#include "motion/move.h"

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

void StartUp(Smoothieboard& device) noexcept {
  device.QueryControllerId(nullptr, 0);
  device.EnableMotors(1);
  device.SendLine(commands::kMillimetres);
  device.SendLine(commands::kAbsolutePositions);
  device.SendLine(commands::kFinishMotion);
  SetMaxSpeeds(device.Record()->link, kMostInchesPerSecond, kMostInchesPerSecond,
               kMostInchesPerSecond);
  device.SendLine(commands::kAskTableHomed);
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
  device->AttachLink(link, entry.linkType, entry.address);
  device->CheckAlive();
  Pause(kAnswerMs);
  if (device->IsConnected() == 0) {
    Disconnect(device);
    return nullptr;
  }
  StartUp(*device);
  return device;
}

void Disconnect(Smoothieboard* device) noexcept {
  if (device->Record() != nullptr) EndWorkers(*device->Record());
  device->EnableMotors(0);
  const std::uint32_t linkType = device->GetLinkType();
  const LinkHandle link = device->GetLinkHandle();
  device->AttachLink(nullptr, kLinkNone, nullptr);
  CloseLink(linkType, link);
  device->DeleteSelf(1);
}

}  // namespace k7
