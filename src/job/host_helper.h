// The host's helper library, which writes lengths in the units that the host shows.
#pragma once

#include <cstdint>

namespace k7 {

// Loads "TSL_000.dll" from the host's cache folder at the first use that succeeds; it stays loaded
// for the life of the process. A failed load is tried again by the next object. [host]
//
// One helper object of that library, for one prompt; handed back to the library at the end of the
// scope. Test it: false when there is no library, or it makes no objects.
class HostHelper {
 public:
  HostHelper() noexcept;
  ~HostHelper();
  HostHelper(const HostHelper&) = delete;
  HostHelper& operator=(const HostHelper&) = delete;

  explicit operator bool() const noexcept { return object_ != nullptr; }

  // Display text of a length, as the library writes it; cut to what the library is told it may use.
  struct LengthText {
    wchar_t text[16];
  };
  // Of thousandths of an inch. Only with an object.
  LengthText FormatLength(std::int32_t thousandths) const noexcept;

 private:
  void* object_;
};

}  // namespace k7
