// A host's helper library: objects made by TSLibrarian, used through slot 9 of their table, handed
// back to TSDestroy. Counts its objects and writes what it was called with.
#include <cstdint>
#include <cstdlib>
#include <cwchar>

namespace {

int made = 0;
int destroyed = 0;

// Only the place of the formatter in the table matters; the nine before it must not be called.
class Helper final {
 public:
  virtual void Slot0() noexcept { Wrong(); }
  virtual void Slot1() noexcept { Wrong(); }
  virtual void Slot2() noexcept { Wrong(); }
  virtual void Slot3() noexcept { Wrong(); }
  virtual void Slot4() noexcept { Wrong(); }
  virtual void Slot5() noexcept { Wrong(); }
  virtual void Slot6() noexcept { Wrong(); }
  virtual void Slot7() noexcept { Wrong(); }
  virtual void Slot8() noexcept { Wrong(); }
  virtual void Format(std::int32_t thousandths, wchar_t* buffer, std::int32_t size,
                      std::int32_t one, std::int32_t decimals) noexcept {
    const bool asAgreed = this == self_ && size == 16 && one == 1 && decimals == 3;
    if (!asAgreed) {
      buffer[0] = L'?';
      buffer[1] = L'\0';
      return;
    }
    const bool negative = thousandths < 0;
    const std::int32_t whole = negative ? -thousandths : thousandths;
    std::swprintf(buffer, 16, L"%ls%d.%03d in", negative ? L"-" : L"",
                  static_cast<int>(whole / 1000), static_cast<int>(whole % 1000));
  }
  virtual void Slot10() noexcept { Wrong(); }

 private:
  static void Wrong() { std::abort(); }
  const Helper* self_ = this;
};

}  // namespace

extern "C" {

#ifndef K7_HELPER_NO_LIBRARIAN
__declspec(dllexport) void* TSLibrarian(std::int32_t kind) {
  if (kind != 7) return nullptr;
  ++made;
#ifdef K7_HELPER_NO_OBJECT
  return nullptr;
#else
  return new Helper;
#endif
}
#endif

#ifndef K7_HELPER_NO_DESTROY
__declspec(dllexport) void TSDestroy(void* object) {
  ++destroyed;
  delete static_cast<Helper*>(object);
}
#endif

__declspec(dllexport) int ObjectsMade() {
  return made;
}

__declspec(dllexport) int ObjectsDestroyed() {
  return destroyed;
}

}  // extern "C"
