// Opening a serial port as the controllers need it.
#pragma once

#include "base/handles.h"

namespace k7 {

// Opens `path` ("\\.\COM7") without sharing, for overlapped reads and writes, at 115200 baud, no
// parity, one stop bit; reads return at once with what has arrived, writes have no time-out. Empty
// when the port does not open (not there, or in use); a port that refuses a setting is returned all
// the same. [host]
UniqueFile OpenSerialPort(const wchar_t* path) noexcept;

}  // namespace k7
