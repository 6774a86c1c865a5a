// The host's helper library, which writes lengths in the units that the host shows.
#pragma once

#include <cstdint>

namespace k7 {

// One object of the host's library "TSL_000.dll", made for one prompt and given back to the library
// at the end of the scope. False when the library is not there or makes no object; test it before
// use. The library is loaded from the host's cache folder and stays loaded for the life of the
// process; after a failure the next HostHelper tries to load it again. [host]
class HostHelper {
 public:
  HostHelper() noexcept;
  ~HostHelper();
  HostHelper(const HostHelper&) = delete;
  HostHelper& operator=(const HostHelper&) = delete;

  explicit operator bool() const noexcept { return object_ != nullptr; }

  // The text of a length as the library writes it; the library is told the size and cuts it.
  struct LengthText {
    wchar_t text[16];
  };
  // The text of a length in thousandths of an inch. Only when the object tests true.
  LengthText FormatLength(std::int32_t thousandths) const noexcept;

 private:
  void* object_;
};

}  // namespace k7
