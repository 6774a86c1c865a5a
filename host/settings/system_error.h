// What Windows says of a failure.
#pragma once

#include <windows.h>

#include <string>

namespace k7host {

// "Access is denied (error 5)". [any]
std::string ErrorText(DWORD code);
// The same of GetLastError.
std::string LastError();

}  // namespace k7host
