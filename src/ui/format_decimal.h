// FormatDecimal: the number text of the dialogs and of the pass status.
#pragma once

namespace k7 {

// Writes `value` with `decimals` places into `buffer` of `capacity` characters. Ends the process
// for numbers of 32 or more digits before the point. [any]
void FormatDecimal(float value, wchar_t* buffer, int capacity, int decimals) noexcept;

}  // namespace k7
