// Choice of the controller, connection and release.
#include "app/session.h"

#include "app/console.h"
#include "app/settings_file_command.h"
#include "core/text.h"

namespace k7host {

Session::~Session() {
  if (device_ == nullptr) return;
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
  if (code == kExitOk) code = ChooseId(arguments.id);
  if (code == kExitOk) code = CheckSettingsBefore(arguments.command, id_);
  if (code != kExitOk) return code;
  device_ = driver_.connect(WideText(id_).c_str());
  if (device_ == nullptr) {
    return Fail(kExitMachine, "controller " + id_ + " was not found or does not answer");
  }
  window_.Attach(*device_, false);
  return kExitOk;
}

int Session::ChooseId(const std::string& wanted) {
  id_ = wanted;
  if (!id_.empty()) return kExitOk;
  const std::int32_t count = driver_.enumerate();
  if (count < 1) return Fail(kExitMachine, "no controller found");
  std::string all;
  for (std::int32_t i = 0; i < count; ++i) {
    const ControllerEntry entry = ReadEntry(driver_, i);
    if (i == 0) id_ = entry.id;
    all += (i == 0 ? "" : ", ") + entry.id + " (" + entry.name + ")";
  }
  if (count == 1) return kExitOk;
  return Fail(kExitUsage, "several controllers found, choose one with --id: " + all);
}

Table Session::MachineTable() {
  return {device_->GetXStepsPerUnit(), device_->GetYStepsPerUnit(), device_->GetTableWidthSteps(),
          device_->GetTableHeightSteps()};
}

ControllerEntry ReadEntry(const DriverLibrary& driver, std::int32_t index) {
  wchar_t id[k7::kNameCapacity] = {};
  wchar_t name[k7::kNameCapacity] = {};
  driver.getInfo(index, id, name, k7::kNameCapacity);
  return {NarrowText(id), NarrowText(name)};
}

}  // namespace k7host
