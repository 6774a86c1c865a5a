// An identity of its own for each test that touches a settings file.
#pragma once

#include <string>

namespace k7test {

// Sixteen characters, different at each call in this process and from those of other processes that
// run beside it: the settings file of that name is the caller's alone. The file is removed if it
// exists, with the controller's folder beside it.
std::wstring FreshControllerId();

// Path of the settings file of that identity, without creating anything.
std::wstring SettingsFileOf(const std::wstring& controllerId);

}  // namespace k7test
