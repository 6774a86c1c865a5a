#include "settings/system_error.h"

#include "core/text.h"

namespace k7host {

std::string ErrorText(DWORD code) {
  wchar_t text[512] = L"";
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                code, 0, text, 512, nullptr);
  while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) --length;
  const std::string number = "error " + std::to_string(code);
  return length == 0 ? number : NarrowText({text, length}) + " (" + number + ")";
}

std::string LastError() {
  return ErrorText(GetLastError());
}

}  // namespace k7host
