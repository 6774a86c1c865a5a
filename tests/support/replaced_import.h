// A function of the system, replaced in this program for a test: what it is called with, or a
// failure that no test can bring about.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace k7test {

// For its life `replacement` stands where this program looks the function up: at `import`, which
// the linker names "__imp_" and the function's name.
template <typename Function>
class ReplacedImport {
 public:
  ReplacedImport(Function& import, Function replacement) : import_(import), real_(import) {
    Put(replacement);
  }
  ~ReplacedImport() { Put(real_); }
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

 private:
  void Put(Function function) {
    DWORD before = 0;
    EXPECT_TRUE(VirtualProtect(&import_, sizeof import_, PAGE_READWRITE, &before));
    import_ = function;
    VirtualProtect(&import_, sizeof import_, before, &before);
  }

  Function& import_;
  Function real_;
};

}  // namespace k7test
