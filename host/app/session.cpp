// Choice of the controller, connection and release.
#include "app/session.h"

#include "app/console.h"
#include "app/ports.h"
#include "app/settings_file_command.h"
#include "app/stop_request.h"
#include "app/tcp_link.h"
#include "app/watchdog.h"
#include "core/machine_check.h"
#include "core/text.h"

namespace k7host {
namespace {

constexpr std::uint64_t kAskPortMs = 200;
constexpr std::uint64_t kLostMs = 2000;  // as the driver counts it
constexpr int kIdentityTries = 3;
constexpr std::int32_t kPathCapacity = 520;

}  // namespace

Session::~Session() {
  if (device_ == nullptr) return;
  TheWatch().SetDevice(nullptr);
  window_.Detach(*device_);
  driver_.release(device_);
}

int Session::Load() {
  const std::string error = driver_.Load();
  if (!error.empty()) return Fail(kExitMachine, error);
  if (!window_.Create()) return Fail(kExitMachine, "cannot create a window");
  return kExitOk;
}

int Session::Open(const Arguments& arguments) {
  int code = Load();
  const NoSettings noSettings = FindNoSettings();
  if (code == kExitOk) code = ChooseId(arguments);
  if (code == kExitOk) code = CheckSettingsBefore(arguments.command, id_, noSettings);
  if (code == kExitOk) code = Connect();
  if (code == kExitOk && !arguments.tcp.empty()) code = GoOverToTcp(arguments.tcp);
  if (code != kExitOk) return code;
  window_.Attach(*device_, false);
  TheWatch().SetDevice(device_);
  // Only here, because the motors are on by now and the release switches them off.
  return StopRequested() ? Fail(kExitMachine, "stopped by the user") : kExitOk;
}

int Session::Connect() {
  const WaitingFor waiting(Waiting::Connection);
  device_ = driver_.connect(WideText(id_).c_str());
  if (device_ == nullptr) {
    return Fail(kExitMachine, "controller " + id_ + " was not found or does not answer; " +
                                  PortsText(LookAtPorts()));
  }
  SettleIdentity();
  return kExitOk;
}

// The recipe of AttachLink. A device exists only once a controller has answered on a serial port;
// its link is exchanged for the socket, and what a connect tells a controller is told this one.
int Session::GoOverToTcp(const std::string& address) {
  const WaitingFor waiting(Waiting::Connection);
  const TcpLink tcp = ConnectTcp(address);
  if (tcp.link == nullptr) return Fail(kExitMachine, "--tcp " + address + ": " + tcp.error);
  const HANDLE serial = device_->GetLinkHandle();
  device_->AttachLink(nullptr, k7::kLinkNone, nullptr);
  if (serial != nullptr) CloseHandle(serial);
  // From here on the socket is the device's: the release closes it.
  device_->AttachLink(tcp.link, k7::kLinkTcp, WideText(tcp.host).c_str());
  device_->ResetControllerId();
  wchar_t id[k7::kIdCapacity] = {};
  if (device_->QueryControllerId(id, k7::kIdCapacity) != k7::kIdCapacity) {
    return Fail(kExitMachine, "--tcp " + address + ": what is there is no controller");
  }
  id_ = NarrowText(id);
  device_->EnableMotors(1);
  for (const char* line : {"G21\n", "G90\n", "M400\n"}) device_->SendLine(line);
  return kExitOk;
}

// A controller that took more than 600 ms to tell its identity is connected all the same, but the
// driver has not loaded its settings: every one of them is zero. The question is put once more.
void Session::SettleIdentity() {
  for (int i = 0; i < kIdentityTries && !(device_->GetXStepsPerUnit() > 0.0f); ++i) {
    device_->ResetControllerId();
    device_->QueryControllerId(nullptr, 0);
  }
}

int Session::CheckSettings() {
  const std::string problem = TableProblem(MachineTable());
  if (problem.empty()) return kExitOk;
  wchar_t path[kPathCapacity] = {};
  device_->GetSettingsFilePath(path, kPathCapacity);
  return Fail(kExitUsage, NarrowText(path) + ": " + problem);
}

// IsConnected stays 1, and CheckAlive cannot tell a link that is gone from a machine that is
// silent: the port itself is asked. One that is no serial port does not know the question.
bool Session::PortRefuses() {
  const HANDLE port = device_->GetLinkHandle();
  if (port == nullptr || device_->GetLinkType() != k7::kLinkSerial) return false;
  DWORD errors = 0;
  if (ClearCommError(port, &errors, nullptr) != FALSE) return false;
  const DWORD error = GetLastError();
  return error != ERROR_INVALID_FUNCTION && error != ERROR_NOT_SUPPORTED;
}

bool Session::IsLinkLost() {
  if (device_->GetReaderAlive() == 0) return true;
  const std::uint64_t now = GetTickCount64();
  if (now - askedPortMs_ >= kAskPortMs) {
    askedPortMs_ = now;
    if (!PortRefuses()) {
      refusedSinceMs_ = 0;
    } else if (refusedSinceMs_ == 0) {
      refusedSinceMs_ = now;
    }
  }
  return refusedSinceMs_ != 0 && now - refusedSinceMs_ >= kLostMs;
}

int Session::CheckLink(const std::string& doing) {
  if (!IsLinkLost()) return kExitOk;
  return Fail(kExitUnknown, "link lost while " + doing +
                                ": where the head stands is unknown until the machine is homed");
}

int Session::ChooseId(const Arguments& arguments) {
  id_ = arguments.id;
  if (!id_.empty()) return kExitOk;
  const std::int32_t count = Search(driver_);
  if (count < 1) {
    return Fail(kExitMachine, "no controller found: " + PortsText(LookAtPorts()) +
                                  "; k7host doctor says what is wrong");
  }
  std::string all;
  for (std::int32_t i = 0; i < count; ++i) {
    const ControllerEntry entry = ReadEntry(driver_, i);
    if (i == 0) id_ = entry.id;
    all += (i == 0 ? "" : ", ") + entry.id + " (" + entry.name + ")";
  }
  // Over TCP any of them will do to begin with.
  if (count == 1 || !arguments.tcp.empty()) return kExitOk;
  return Fail(kExitUsage, "several controllers found, choose one with --id: " + all);
}

Table Session::MachineTable() {
  return {device_->GetXStepsPerUnit(), device_->GetYStepsPerUnit(), device_->GetTableWidthSteps(),
          device_->GetTableHeightSteps()};
}

std::int32_t Search(const DriverLibrary& driver) {
  const WaitingFor waiting(Waiting::Search);
  return driver.enumerate();
}

ControllerEntry ReadEntry(const DriverLibrary& driver, std::int32_t index) {
  wchar_t id[k7::kNameCapacity] = {};
  wchar_t name[k7::kNameCapacity] = {};
  driver.getInfo(index, id, name, k7::kNameCapacity);
  return {NarrowText(id), NarrowText(name)};
}

}  // namespace k7host
