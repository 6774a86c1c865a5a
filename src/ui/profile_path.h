// The name of a material profile, from the path of its file.
#pragma once

#include <cstddef>

namespace k7 {

// The part of `path` after its last backslash, without the last four characters ("C:\x\Oak.ini" is
// "Oak"), into `name` of `capacity` characters, cut. KEEP: cut off before the part is looked for; a
// path of fewer than four characters ends the process. [any]
void ProfileNameOfPath(const wchar_t* path, wchar_t* name, std::ptrdiff_t capacity) noexcept;

}  // namespace k7
