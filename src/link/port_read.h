// Starting a read on a serial port. In an object of its own, so that the tests can link a driver
// whose port ends an idle read as the serial drivers of Windows do.
#pragma once

#include <windows.h>

namespace k7 {

// As ReadFile for overlapped use: false with ERROR_IO_PENDING while the read is outstanding.
// With the time-outs that OpenSerialPort sets, a read of a port that has nothing ends at once with
// no byte, or stays outstanding and ends with none, or stays until a byte comes: which of the three
// is the port's driver's own. [reader]
bool StartPortRead(HANDLE port, char* bytes, DWORD size, OVERLAPPED& block) noexcept;

}  // namespace k7
