// One connection to one controller, from finding it to releasing it.
#pragma once

#include <string>

#include "app/driver_library.h"
#include "app/host_window.h"
#include "args/arguments.h"
#include "core/scaling.h"

namespace k7host {

// [host]
class Session {
 public:
  Session() = default;
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Loads the driver and makes the window. An exit code; anything but kExitOk has been explained
  // on the error output.
  int Load();

  // Loads, then connects to the controller asked for, or to the only one there is.
  int Open(const Arguments& arguments);

  const DriverLibrary& Driver() const { return driver_; }
  HostWindow& Window() { return window_; }
  const std::string& Id() const { return id_; }

  // Only after Open.
  k7::IEngraver& Device() { return *device_; }

  // The machine's table and resolution. [host]
  Table MachineTable();

 private:
  int ChooseId(const std::string& wanted);

  // Destroyed in reverse order: the driver is unloaded last.
  DriverLibrary driver_;
  HostWindow window_;
  k7::IEngraver* device_ = nullptr;  // the driver's; released here
  std::string id_;
};

// Identity and name of entry `index` of the driver's table, as UTF-8. [host]
struct ControllerEntry {
  std::string id;
  std::string name;
};
ControllerEntry ReadEntry(const DriverLibrary& driver, std::int32_t index);

}  // namespace k7host
