// Which files of a material library are profiles, and what they are called.
#pragma once

#include <cstddef>

namespace k7 {

// Whether a file of this name is listed: longer than four characters, ending in ".ini" in any case.
// Null is not. [any]
bool IsProfileFileName(const wchar_t* fileName) noexcept;
// Cuts the last four characters off a name for which IsProfileFileName holds; others stay. [any]
void CutProfileExtension(wchar_t* fileName) noexcept;

// The part of `path` after its last backslash, without the last four characters ("C:\x\Oak.ini" is
// "Oak"), into `name` of `capacity` characters, cut. KEEP: cut off before the part is looked for; a
// path of fewer than four characters ends the process. [any]
void ProfileNameOfPath(const wchar_t* path, wchar_t* name, std::ptrdiff_t capacity) noexcept;

}  // namespace k7
