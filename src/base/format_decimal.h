// FormatDecimal: the number text of the dialogs and of the pass status. Not the number text of the
// wire, which follows a rule of its own (base/number_text.h).
#pragma once

namespace k7 {

// Writes `value` with `decimals` places (below 0 counts as 0) into `buffer` of `capacity`
// characters, cut and always terminated; nothing when there is no buffer. The exact value of the
// single is rounded, ties away from zero: 0.03125 with 4 decimals is "0.0313". A value that is not
// finite is written as zero. A number whose whole part has 32 digits or more ends the process.
//
// KEEP: "0." stands in front of every value below one, also when it rounds up to one: 0.99996 with
// 4 decimals is "0.1.0000", and 0.7 with none is "0.1". Zero with no decimals is "0.". [any]
void FormatDecimal(float value, wchar_t* buffer, int capacity, int decimals) noexcept;

}  // namespace k7
