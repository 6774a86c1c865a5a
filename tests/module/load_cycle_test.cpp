// The module leaves nothing behind in the host: it is loaded and unloaded again and again.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, whose types it needs.
#include <psapi.h>

#include <cstdint>

namespace {

using Enumerate = std::int32_t (*)();

DWORD Handles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

SIZE_T PrivateBytes() {
  PROCESS_MEMORY_COUNTERS_EX counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                       sizeof counters);
  return counters.PrivateUsage;
}

// The next index that the system would give out: it grows with every one that is not given back.
DWORD NextThreadLocalIndex() {
  const DWORD index = TlsAlloc();
  TlsFree(index);
  return index;
}

void Cycle(bool search) {
  const HMODULE module = LoadLibraryW(L"k7driver.dll");
  ASSERT_NE(module, nullptr);
  if (search) {
    const auto enumerate = reinterpret_cast<Enumerate>(
        reinterpret_cast<void*>(GetProcAddress(module, "EnumerateControllers")));
    EXPECT_EQ(enumerate(), 0);
  }
  ASSERT_TRUE(FreeLibrary(module));
  ASSERT_EQ(GetModuleHandleW(L"k7driver.dll"), nullptr);
}

class LoadCycle : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(, LoadCycle, testing::Bool(), [](const auto& search) {
  return std::string{search.param ? "WithASearch" : "Alone"};
});

TEST_P(LoadCycle, LeavesNoIndexNoHandleAndNoMemoryBehind) {
  const int cycles = GetParam() ? 100 : 500;       // a search opens fifty ports
  for (int i = 0; i < 20; ++i) Cycle(GetParam());  // what the system keeps for itself
  const DWORD handles = Handles();
  const DWORD index = NextThreadLocalIndex();
  const SIZE_T bytes = PrivateBytes();
  for (int i = 0; i < cycles; ++i) Cycle(GetParam());
  EXPECT_EQ(Handles(), handles);
  EXPECT_EQ(NextThreadLocalIndex(), index);
  EXPECT_LT(PrivateBytes(), bytes + static_cast<SIZE_T>(cycles) * 1024) << "a kilobyte a cycle";
}

}  // namespace
