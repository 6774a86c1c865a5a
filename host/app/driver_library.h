// k7driver.dll, loaded from the program's own folder.
#pragma once

#include <windows.h>

#include <string>

#include "k7/driver.h"

namespace k7host {

// Holds the loaded driver and its four functions for the life of the program. [host]
class DriverLibrary {
 public:
  DriverLibrary() = default;
  ~DriverLibrary();
  DriverLibrary(const DriverLibrary&) = delete;
  DriverLibrary& operator=(const DriverLibrary&) = delete;

  // Loads the driver; empty when it is there with all it must have, else one line that says what
  // is missing.
  std::string Load();

  // The driver's exports; null until Load has succeeded.
  decltype(&::EnumerateControllers) enumerate = nullptr;
  decltype(&::GetControllerInfo) getInfo = nullptr;
  decltype(&::ConnectToController) connect = nullptr;
  decltype(&::ReleaseController) release = nullptr;

 private:
  HMODULE module_ = nullptr;
};

}  // namespace k7host
