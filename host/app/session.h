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

  // The link to the machine is gone for good: the driver has stopped reading from it, or the port
  // has refused to tell its state for two seconds. [host]
  bool IsLinkLost();

  // kExitOk, or the exit code of settings with which the machine cannot be moved, explained. [host]
  int CheckSettings();

  // kExitOk, or the exit code of a link that was lost while the program was `doing` something,
  // explained. [host]
  int CheckLink(const std::string& doing);

 private:
  bool PortRefuses();
  void SettleIdentity();
  int Connect();
  int GoOverToTcp(const std::string& address);
  int ChooseId(const Arguments& arguments);

  // Destroyed in reverse order: the driver is unloaded last.
  DriverLibrary driver_;
  HostWindow window_;
  k7::IEngraver* device_ = nullptr;  // the driver's; released here
  std::string id_;
  std::uint64_t askedPortMs_ = 0;
  std::uint64_t refusedSinceMs_ = 0;  // 0: the port tells its state
};

// Controllers that the driver finds. The user may end the program meanwhile. [host]
std::int32_t Search(const DriverLibrary& driver);

// Identity and name of entry `index` of the driver's table, as UTF-8. [host]
struct ControllerEntry {
  std::string id;
  std::string name;
};
ControllerEntry ReadEntry(const DriverLibrary& driver, std::int32_t index);

}  // namespace k7host
