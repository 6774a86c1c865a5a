#include "ui/format_decimal.h"

namespace k7 {

void FormatDecimal(float, wchar_t*, int, int) noexcept {}

}  // namespace k7
