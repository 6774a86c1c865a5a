// Which files of a material library are profiles, and what they are called.
#pragma once

namespace k7 {

// Whether a file of this name is listed: longer than four characters, ending in ".ini" in any case.
// Null is not. [any]
bool IsProfileFileName(const wchar_t* fileName) noexcept;
// Cuts the last four characters off a name for which IsProfileFileName holds; others stay. [any]
void CutProfileExtension(wchar_t* fileName) noexcept;

}  // namespace k7
